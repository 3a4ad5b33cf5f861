#include "frontends/win32/toolbar_pane.h"

#include <algorithm>

#include "frontends/win32/child_window.h"
#include "frontends/win32/pictures.h"
#include "frontends/win32/text.h"
#include "frontends/win32/tool_tips.h"

namespace tarvo::win32 {
namespace {

constexpr int kToolIcon = 24;  // pixels at the standard resolution, as all of these
constexpr int kButtonPadding = 10;
constexpr int kBarMargin = 3;  // around the buttons
constexpr int kFirstCommand = 500;

constexpr DWORD kStyle = WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST |
                         TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER;

int At(unsigned dotsPerInch, int pixels) {
  return MulDiv(pixels, static_cast<int>(dotsPerInch), USER_DEFAULT_SCREEN_DPI);
}

}  // namespace

// The buttons have texts, which only screen readers see: none is of the kind that shows its text.
ToolbarPane::ToolbarPane(Toolbar& toolbar, EventLoop& loop, HWND parent, int identifier)
    : toolbar_(toolbar),
      loop_(loop),
      window_(MakeChild(parent, TOOLBARCLASSNAMEW, kStyle, identifier)),
      hook_(window_, loop, [this](const Message& message) { return HandleKey(message); }),
      texts_(toolbar.Buttons.size()) {
  Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
  SetDotsPerInch(GetDpiForWindow(parent));
  for (std::size_t i = 0; i < toolbar.Buttons.size(); ++i) Add(i);
  SetWidths(LOWORD(Send(TB_GETBUTTONSIZE)));
  ShowPlainText(FromNumber<HWND>(Send(TB_GETTOOLTIPS)));
}

void ToolbarPane::SetDotsPerInch(unsigned dotsPerInch) {
  if (dotsPerInch == dotsPerInch_) return;
  dotsPerInch_ = dotsPerInch;
  const int side = At(dotsPerInch, kToolIcon);
  const int count = static_cast<int>(toolbar_.Buttons.size());
  ImagesHandle images(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, count, 1));
  ImagesHandle disabled(ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, count, 1));
  for (const ToolbarButton& button : toolbar_.Buttons) {
    const PicturePointer own = OwnIcon(button.Image);
    const Pixels drawn = Drawn(own.get(), side, dotsPerInch);
    ImageList_ReplaceIcon(images.Get(), -1, MakeIcon(drawn).Get());
    ImageList_ReplaceIcon(disabled.Get(), -1, MakeIcon(Greyed(drawn)).Get());
  }
  Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.Get()));
  Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled.Get()));
  const int size = side + At(dotsPerInch, kButtonPadding);
  Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(size, size));
  SetWidths(size);
  images_ = std::move(images);
  disabledImages_ = std::move(disabled);
}

// The texts that are not shown must not make a button wider.
void ToolbarPane::SetWidths(int width) {
  for (std::size_t i = 0; i < toolbar_.Buttons.size(); ++i) {
    if (toolbar_.Buttons[i].IsSeparator) continue;
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    info.cx = static_cast<WORD>(width);
    Send(TB_SETBUTTONINFOW, kFirstCommand + i, reinterpret_cast<LPARAM>(&info));
  }
}

void ToolbarPane::Add(std::size_t number) {
  const ToolbarButton& button = toolbar_.Buttons[number];
  TBBUTTON added{};
  added.idCommand = kFirstCommand + static_cast<int>(number);
  if (button.IsSeparator) {
    added.fsStyle = BTNS_SEP;
  } else {
    added.iBitmap = static_cast<int>(number);
    added.fsStyle = button.Group > 0 ? BTNS_CHECK : BTNS_BUTTON;
    added.fsState = TBSTATE_ENABLED;
  }
  Send(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&added));
}

int ToolbarPane::Height() const {
  return HIWORD(Send(TB_GETBUTTONSIZE)) + 2 * At(dotsPerInch_, kBarMargin);
}

PixelBounds ToolbarPane::PlaceIn(int width) const {
  const int margin = At(dotsPerInch_, kBarMargin);
  return {margin, margin, std::max(0, width - 2 * margin), Height() - 2 * margin};
}

void ToolbarPane::Sync(std::string_view name) {
  SetText(window_, Wide(name));
  ShowChild(window_, toolbar_.Visible);
  for (std::size_t i = 0; i < texts_.size() && i < toolbar_.Buttons.size(); ++i) SyncButton(i);
}

void ToolbarPane::SyncButton(std::size_t number) {
  const ToolbarButton& button = toolbar_.Buttons[number];
  if (button.IsSeparator) return;
  const WPARAM command = kFirstCommand + number;
  const auto present = static_cast<BYTE>(Send(TB_GETSTATE, command));
  const bool enabled = button.Enabled && toolbar_.Enabled;
  const auto wanted =
      static_cast<BYTE>((present & ~(TBSTATE_ENABLED | TBSTATE_CHECKED)) |
                        (enabled ? TBSTATE_ENABLED : 0) | (button.Pressed ? TBSTATE_CHECKED : 0));
  if (wanted != present) Send(TB_SETSTATE, command, wanted);
  if (texts_[number] == button.ToolTipText) return;
  texts_[number] = button.ToolTipText;
  std::wstring text = Wide(button.ToolTipText);
  TBBUTTONINFOW info{};
  info.cbSize = sizeof info;
  info.dwMask = TBIF_TEXT;
  info.pszText = text.data();
  Send(TB_SETBUTTONINFOW, command, reinterpret_cast<LPARAM>(&info));
}

void ToolbarPane::Pressed(int command) {
  const int number = command - kFirstCommand;
  if (number < 0 || number >= static_cast<int>(toolbar_.Buttons.size())) return;
  loop_.Run([this, number] {
    if (toolbar_.ButtonClick)
      toolbar_.ButtonClick(toolbar_.Buttons[static_cast<std::size_t>(number)]);
  });
}

std::optional<LRESULT> ToolbarPane::Notified(NMHDR& notification) {
  if (notification.code != TBN_GETINFOTIPW) return std::nullopt;
  auto& asked = reinterpret_cast<NMTBGETINFOTIPW&>(notification);
  const int number = asked.iItem - kFirstCommand;
  if (number < 0 || number >= static_cast<int>(toolbar_.Buttons.size())) return std::nullopt;
  const std::wstring text = Wide(toolbar_.Buttons[static_cast<std::size_t>(number)].ToolTipText);
  lstrcpynW(asked.pszText, text.c_str(), asked.cchTextMax);
  return 0;
}

std::optional<LRESULT> ToolbarPane::HandleKey(const Message& message) {
  switch (message.id) {
    case WM_SETFOCUS:
      if (Send(TB_GETHOTITEM) < 0) MoveHotButton(1);
      return std::nullopt;
    case WM_KILLFOCUS:
      Send(TB_SETHOTITEM, static_cast<WPARAM>(-1));
      return std::nullopt;
    case WM_KEYDOWN:
      break;
    default:
      return std::nullopt;
  }
  switch (message.wParam) {
    case VK_LEFT:
      MoveHotButton(-1);
      return 0;
    case VK_RIGHT:
      MoveHotButton(1);
      return 0;
    case VK_RETURN:
    case VK_SPACE:
      if (CanBePressed(static_cast<int>(Send(TB_GETHOTITEM))))
        Pressed(kFirstCommand + static_cast<int>(Send(TB_GETHOTITEM)));
      return 0;
    default:
      return std::nullopt;
  }
}

bool ToolbarPane::CanBePressed(int number) const {
  if (number < 0 || number >= static_cast<int>(toolbar_.Buttons.size())) return false;
  const ToolbarButton& button = toolbar_.Buttons[static_cast<std::size_t>(number)];
  return !button.IsSeparator && button.Enabled && toolbar_.Enabled;
}

// To the next button in that direction that can be pressed, if there is one.
void ToolbarPane::MoveHotButton(int step) {
  const int count = static_cast<int>(toolbar_.Buttons.size());
  for (int i = static_cast<int>(Send(TB_GETHOTITEM)) + step; i >= 0 && i < count; i += step) {
    if (!CanBePressed(i)) continue;
    Send(TB_SETHOTITEM, static_cast<WPARAM>(i));
    return;
  }
}

}  // namespace tarvo::win32
