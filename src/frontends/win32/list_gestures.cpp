#include "frontends/win32/list_gestures.h"

#include <algorithm>

namespace tarvo::win32 {
namespace {

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;

bool IsForMoving(WPARAM key) { return key == VK_SPACE || (key >= VK_PRIOR && key <= VK_DOWN); }

}  // namespace

ListGestureHook::ListGestureHook(HWND list, HandlerGuard& guard, ListGestures& gestures)
    : list_(list),
      gestures_(gestures),
      hook_(list, guard, [this](const Message& message) { return HandleMessage(message); }) {}

// The mouse is not left to the control: it would begin to drag items or a frame around several,
// keep the button's release to itself and take the selection away at a click beside all items.
std::optional<LRESULT> ListGestureHook::HandleMessage(const Message& message) {
  switch (message.id) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
      MouseDown(message);
      return 0;
    case WM_LBUTTONDBLCLK:
      DoubleClick(message);
      return 0;
    case WM_LBUTTONUP:
      return MouseUp(kLeftButton);
    case WM_RBUTTONUP:
      return MouseUp(kRightButton);
    case WM_MBUTTONUP:
      return MouseUp(kMiddleButton);
    case WM_KEYDOWN:
    case WM_CHAR:
      return Key(message);
    case WM_CONTEXTMENU:
      MenuKey();
      return 0;
    default:
      return std::nullopt;
  }
}

void ListGestureHook::MouseDown(const Message& message) {
  if (GetFocus() != list_) SetFocus(list_);
  SetCapture(list_);
  const int row = RowAt(message.lParam);
  if (row >= 0) gestures_.ItemChosen(row);
}

std::optional<LRESULT> ListGestureHook::MouseUp(int button) {
  if (GetCapture() == list_) ReleaseCapture();
  gestures_.MouseReleased(button);
  return 0;
}

void ListGestureHook::DoubleClick(const Message& message) {
  const int row = RowAt(message.lParam);
  if (row >= 0) gestures_.ItemDoubleClicked(row);
}

std::optional<LRESULT> ListGestureHook::Key(const Message& message) {
  if (message.id == WM_CHAR && !gestures_.KeyTyped(static_cast<int>(message.wParam))) return 0;
  return Moving(message);
}

LRESULT ListGestureHook::Moving(const Message& message) {
  const int before = RowThatIs(LVNI_SELECTED);
  const LRESULT result = hook_.Default(message);
  int after = RowThatIs(LVNI_SELECTED);
  // With nothing selected a key that would move selects the item that has the focus, or the first.
  if (after < 0 && message.id == WM_KEYDOWN && IsForMoving(message.wParam))
    after = std::max(RowThatIs(LVNI_FOCUSED), 0);
  if (after >= 0 && after != before) gestures_.ItemChosen(after);
  return result;
}

// The mouse's part comes with the release of its button.
void ListGestureHook::MenuKey() {
  RECT item = {};
  item.left = LVIR_LABEL;
  const int row = RowThatIs(LVNI_FOCUSED);
  POINT place = {};
  if (row >= 0 && SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                               reinterpret_cast<LPARAM>(&item))) {
    place = {(item.left + item.right) / 2, (item.top + item.bottom) / 2};
  }
  ClientToScreen(list_, &place);
  gestures_.MenuKeyPressed(place);
}

int ListGestureHook::RowAt(LPARAM position) const {
  LVHITTESTINFO test{};
  test.pt = {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
  return static_cast<int>(SendMessageW(list_, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&test)));
}

int ListGestureHook::RowThatIs(UINT state) const {
  return static_cast<int>(
      SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), static_cast<LPARAM>(state)));
}

}  // namespace tarvo::win32
