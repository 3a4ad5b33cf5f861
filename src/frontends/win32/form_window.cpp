#include "frontends/win32/form_window.h"

#include <utility>

#include "frontends/win32/child_window.h"
#include "frontends/win32/pictures.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {

FormWindow::FormWindow(Form& form, Seam& seam, HWND window)
    : form_(form),
      seam_(seam),
      toolTips_(window),
      window_(window),
      hook_(window, seam.loop, [this](const Message& message) -> std::optional<LRESULT> {
        if (closed_) return std::nullopt;
        return HandleMessage(message);
      }) {}

void FormWindow::Sync() { SetText(Window(), Wide(form_.Caption)); }

void FormWindow::Repaint() {
  const HandlerGuard::Hold hold(seam_.loop);
  Sync();
  RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void FormWindow::Close() {
  closed_ = true;
  ShowWindow(Window(), SW_HIDE);
}

SIZE FormWindow::InnerSize() {
  RECT inner = {};
  GetClientRect(Window(), &inner);
  return {inner.right, inner.bottom};
}

void FormWindow::TakeIcons() {
  IconHandle icon = ProgramIcon(SM_CXICON, DotsPerInch());
  IconHandle smallIcon = ProgramIcon(SM_CXSMICON, DotsPerInch());
  SendMessageW(Window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon.Get()));
  SendMessageW(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon.Get()));
  icon_ = std::move(icon);
  smallIcon_ = std::move(smallIcon);
}

bool FormWindow::TakesKey(MSG& message) {
  if (closed_) return false;
  const bool isDown = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  if (isDown && SwallowsKey(static_cast<int>(message.wParam))) return true;
  return !closed_ && Navigates(message);
}

// The system's codes of keys are the classic ones.
bool FormWindow::SwallowsKey(int key) {
  int keyCode = key;
  seam_.loop.Run([this, &keyCode] { form_.Form_KeyDown(keyCode); });
  return keyCode == 0;
}

std::optional<LRESULT> FormWindow::HandleMessage(const Message& message) {
  switch (message.id) {
    case WM_CLOSE:
      seam_.loop.Run([this] { seam_.frontEnd.Unload(form_); });
      return 0;
    case WM_ENDSESSION:
      // The process ends when this returns: what a window saves is saved now.
      if (message.wParam) seam_.loop.Run([this] { seam_.frontEnd.Unload(form_); });
      return 0;
    case WM_ACTIVATE:
      ActivationChanged(LOWORD(message.wParam) != WA_INACTIVE);
      return std::nullopt;
    case WM_SETCURSOR:
      if (LOWORD(message.lParam) != HTCLIENT || seam_.frontEnd.MousePointer() == kDefaultPointer)
        return std::nullopt;
      SetCursor(LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    default:
      return std::nullopt;
  }
}

// The first activation has been delivered with the show, and coming back from one of the program's
// own dialogs is none.
void FormWindow::ActivationChanged(bool active) {
  if (active == active_) return;
  active_ = active;
  if (!active) {
    lostToOwnDialog_ = seam_.dialogs > 0;
    return;
  }
  const bool isOwn = std::exchange(awaitsFirstActivation_, false) || lostToOwnDialog_;
  lostToOwnDialog_ = false;
  if (!isOwn) seam_.loop.Run([this] { form_.Form_Activate(); });
}

}  // namespace tarvo::win32
