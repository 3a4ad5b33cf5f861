#include "frontends/win32/file_list.h"

#include <algorithm>

#include "frontends/win32/child_window.h"
#include "frontends/win32/fonts.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr DWORD kStyle = WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_EXTENDEDSEL |
                         LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS;
constexpr WPARAM kTextMargins = 8;  // left and right of a name together, in pixels

bool IsForMoving(WPARAM key) { return key >= VK_PRIOR && key <= VK_DOWN; }

}  // namespace

FileList::FileList(FileListBox& list, HandlerGuard& guard, HWND parent, int identifier)
    : DialogControl(MakeChild(parent, WC_LISTBOXW, kStyle, identifier, WS_EX_CLIENTEDGE), list),
      list_(list),
      guard_(guard),
      hook_(window_, guard, [this](const Message& message) { return HandleMessage(message); }) {}

void FileList::Sync(unsigned dotsPerInch, HFONT font) {
  SetFont(window_, font);
  DialogControl::Sync(dotsPerInch, font);
  TakeOver(font);
}

// Nothing is done for entries that are shown already: a handler that yields at each of them comes
// by here as often.
void FileList::TakeOver(HFONT font) {
  const std::vector<FileListBox::Entry>& entries = list_.Entries;
  if (entries == shown_) return;
  const auto sameName = [](const auto& a, const auto& b) { return a.Name == b.Name; };
  if (!std::equal(entries.begin(), entries.end(), shown_.begin(), shown_.end(), sameName)) {
    Send(LB_RESETCONTENT);
    WPARAM widest = 0;
    for (const FileListBox::Entry& entry : entries) {
      const std::wstring name = Wide(entry.Name);
      Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
      widest = std::max(widest, static_cast<WPARAM>(TextWidth(font, name)));
    }
    Send(LB_SETHORIZONTALEXTENT, widest + kTextMargins);
  }
  for (std::size_t i = 0; i < entries.size(); ++i)
    Send(LB_SETSEL, entries[i].Selected, static_cast<LPARAM>(i));
  if (list_.ListIndex >= 0) Send(LB_SETCARETINDEX, static_cast<WPARAM>(list_.ListIndex));
  shown_ = entries;
}

void FileList::Notified(int code) {
  if (code == LBN_SELCHANGE || code == LBN_SELCANCEL) TellState();
  if (code == LBN_DBLCLK) guard_.Run(list_.DblClick);
}

void FileList::TellState() {
  const auto count = static_cast<std::size_t>(std::max<LRESULT>(0, Send(LB_GETCOUNT)));
  if (count != list_.Entries.size()) return;
  for (std::size_t i = 0; i < count; ++i) list_.Entries[i].Selected = Send(LB_GETSEL, i) > 0;
  list_.ListIndex = static_cast<int>(Send(LB_GETCARETINDEX));
  shown_ = list_.Entries;
}

// The focus alone makes no entry current. Without one every key leads to the first entry, save the
// one that leads to the last.
std::optional<LRESULT> FileList::HandleMessage(const Message& message) {
  const bool isFirstKey = message.id == WM_KEYDOWN && IsForMoving(message.wParam) &&
                          list_.ListIndex < 0 && !list_.Entries.empty();
  if (!isFirstKey) return std::nullopt;
  const std::size_t first = message.wParam == VK_END ? list_.Entries.size() - 1 : 0;
  Send(LB_SETSEL, TRUE, static_cast<LPARAM>(first));
  Send(LB_SETANCHORINDEX, first);
  Send(LB_SETCARETINDEX, first);
  TellState();
  return 0;
}

}  // namespace tarvo::win32
