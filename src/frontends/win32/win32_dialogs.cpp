#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "frontends/win32/menus.h"
#include "frontends/win32/system_dialog.h"
#include "frontends/win32/text.h"
#include "frontends/win32/win32_front_end.h"

namespace tarvo::win32 {
namespace {

UINT ToIcon(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kQuestion:
      return MB_ICONQUESTION;
    case MessageIcon::kExclamation:
      return MB_ICONEXCLAMATION;
    case MessageIcon::kInformation:
      return MB_ICONINFORMATION;
    case MessageIcon::kNone:
      break;
  }
  return 0;
}

}  // namespace

// A dialog of the system's on the screen. It is closed when no window is left that its answer could
// matter to.
class Win32FrontEnd::DialogOnScreen {
 public:
  DialogOnScreen(Win32FrontEnd& frontEnd, std::function<void()> close)
      : frontEnd_(frontEnd),
        wait_(
            frontEnd.loop_,
            [&frontEnd, hasWindows = !frontEnd.LoadedForms().empty()] {
              return hasWindows && frontEnd.LoadedForms().empty();
            },
            std::move(close)) {
    frontEnd.SyncAll();
    ++frontEnd_.seam_.dialogs;
  }
  ~DialogOnScreen() { --frontEnd_.seam_.dialogs; }
  DialogOnScreen(const DialogOnScreen&) = delete;
  DialogOnScreen& operator=(const DialogOnScreen&) = delete;

 private:
  Win32FrontEnd& frontEnd_;
  EventLoop::SystemWait wait_;
};

Answer Win32FrontEnd::MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                             std::string_view title) {
  loop_.ThrowIfEnding();
  const bool asks = buttons == MessageButtons::kYesNo;
  const HWND owner = Owner();
  const UINT style = (asks ? MB_YESNO : MB_OK) | ToIcon(icon) | (owner ? 0U : MB_TASKMODAL);
  int answer = 0;
  {
    const SystemDialog dialog;
    const DialogOnScreen onScreen(*this, [&dialog, asks] {
      if (dialog.Window()) EndDialog(dialog.Window(), asks ? IDNO : IDOK);
    });
    answer = MessageBoxW(owner, WideLines(text).c_str(), Wide(title).c_str(), style);
  }
  loop_.ThrowIfEnding();
  if (!asks) return Answer::kOk;
  return answer == IDYES ? Answer::kYes : Answer::kNo;
}

namespace {

// "Description (pattern)" as the system takes it: description, NUL, pattern, NUL, NUL.
std::wstring FilterFor(const CommonDialog& dialog) {
  const std::size_t open = dialog.Filter.rfind('(');
  const std::size_t close = dialog.Filter.rfind(')');
  const bool hasPattern =
      open != std::string::npos && close != std::string::npos && open + 1 < close;
  const std::string pattern =
      hasPattern ? dialog.Filter.substr(open + 1, close - open - 1) : std::string("*.*");
  return Wide(dialog.Filter) + L'\0' + Wide(pattern) + L'\0' + L'\0';
}

}  // namespace

// A file name with a wildcard is what the filter says already, so the name starts empty. The
// present folder stays the process's own.
void Win32FrontEnd::ShowOpen(CommonDialog& dialog) {
  loop_.ThrowIfEnding();
  constexpr std::size_t kLongestPath = 32768;
  std::vector<wchar_t> path(kLongestPath);
  const std::wstring filter = FilterFor(dialog);
  const std::wstring folder = Wide(dialog.InitDir);
  const std::wstring title = Wide(dialog.DialogTitle);
  const std::wstring extension = Wide(dialog.DefaultExt);
  OPENFILENAMEW asked{};
  asked.lStructSize = sizeof asked;
  asked.hwndOwner = Owner();
  asked.lpstrFilter = filter.c_str();
  asked.lpstrFile = path.data();
  asked.nMaxFile = static_cast<DWORD>(path.size());
  asked.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  asked.lpstrTitle = title.c_str();
  asked.lpstrDefExt = extension.c_str();
  asked.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  bool chosen = false;
  {
    const SystemDialog shown;
    const DialogOnScreen onScreen(*this, [&shown] {
      if (shown.Window()) PostMessageW(shown.Window(), WM_COMMAND, IDCANCEL, 0);
    });
    chosen = GetOpenFileNameW(&asked) != FALSE;
  }
  loop_.ThrowIfEnding();
  if (!chosen) throw RuntimeError(kDialogCancelled);
  dialog.FileName = Narrow(path.data());
}

void Win32FrontEnd::PopupMenu(MenuItem& menu, const MenuItem* defaultEntry) {
  loop_.ThrowIfEnding();
  const HWND owner = Owner();
  if (!owner) return;
  Menus menus(loop_);
  const MenuHandle popup = menus.MakePopup(menu, defaultEntry);
  POINT place = {};
  GetCursorPos(&place);
  if (seam_.popupPlace) place = *seam_.popupPlace;
  BOOL chosen = 0;
  {
    const DialogOnScreen onScreen(*this, [] { EndMenu(); });
    chosen = TrackPopupMenuEx(popup.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, owner,
                              nullptr);
  }
  loop_.ThrowIfEnding();
  if (chosen != 0 && !LoadedForms().empty()) menus.Run(static_cast<UINT>(chosen));
  loop_.ThrowIfEnding();
}

}  // namespace tarvo::win32
