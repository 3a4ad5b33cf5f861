#include "frontends/win32/drivers_window.h"

#include <algorithm>

#include "frontends/common/captions.h"
#include "frontends/win32/child_window.h"
#include "frontends/win32/fonts.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr const wchar_t* kWindowClass = L"TarvoMainWindow";
constexpr int kToolbarIdentifier = 1;
constexpr int kListIdentifier = 2;
constexpr int kStatusBarIdentifier = 3;
constexpr UINT_PTR kTimer = 1;

// The handlers see the messages before the class does.
HWND MakeMainWindow() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = &DefWindowProcW;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = kWindowClass;
  RegisterClassExW(&description);
  return CreateWindowExW(0, kWindowClass, L"", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                         CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                         description.hInstance, nullptr);
}

}  // namespace

DriversWindow::DriversWindow(MainWindow& form, Seam& seam)
    : FormWindow(form, seam, MakeMainWindow()),
      state_(form),
      menus_(seam.loop),
      toolbar_(form.tbToolBar, seam.loop, Window(), kToolbarIdentifier),
      list_(form.lvListView, seam, Window(), kListIdentifier),
      statusBar_(form.sbStatusBar, Window(), kStatusBarIdentifier),
      place_(form.Place) {
  SetMenu(Window(), menus_.MakeBar({form.MenuBar.begin(), form.MenuBar.end()}));
  TakeResolution();
  ApplyPlace();
}

// The panes go before their window, which would send them its last messages.
DriversWindow::~DriversWindow() { Close(); }

void DriversWindow::TakeResolution() {
  const unsigned dots = DotsPerInch();
  FontHandle font = MakeFont(Font(), dots);
  list_.SetDotsPerInch(dots, font.Get());
  toolbar_.SetDotsPerInch(dots);
  statusBar_.SetTextFont(font.Get());
  font_ = std::move(font);
  TakeIcons();
}

void DriversWindow::Sync() {
  FormWindow::Sync();
  if (menus_.Sync()) DrawMenuBar(Window());
  toolbar_.Sync(WithoutAccessKey(state_.mnuViewToolbar.Caption));
  statusBar_.Sync();
  list_.Sync(state_.Caption);
  toolTips_.Set(list_.Window(), state_.lvListView.ToolTipText);
  toolTips_.Set(statusBar_.Window(), state_.sbStatusBar.ToolTipText);
  SyncTimer();
  if (place_.IsAssigned()) ApplyPlace();
  PlaceControls();
}

// The first show heeds how the user wants the program's window to appear (a link's property).
void DriversWindow::Show() {
  Sync();
  if (!shown_) AwaitFirstActivation();
  const bool isFirst = !shown_;
  shown_ = true;
  ShowWindow(Window(), isFirst ? SW_SHOWDEFAULT : SW_SHOW);
  SetFocus(list_.Window());
}

void DriversWindow::Close() {
  if (!IsOpen()) return;
  KillTimer(Window(), kTimer);
  list_.Detach();
  FormWindow::Close();
}

// The size follows the resolution of the screen that the position is on.
void DriversWindow::ApplyPlace() {
  const bool isNormal = !IsZoomed(Window()) && !IsIconic(Window());
  const Scale positions(GetDpiForSystem());
  PixelBounds wanted = positions.ToPixels(state_.Place);
  if (isNormal && !shown_) {
    SetWindowPos(Window(), nullptr, wanted.left, wanted.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  const PixelBounds size = Scale(DotsPerInch()).ToPixels(state_.Place);
  wanted = Reachable({wanted.left, wanted.top, size.width, size.height}, Desktop());
  place_.Applied(isNormal ? wanted : BoundsOf(Window()));
  if (!isNormal) return;
  SetWindowPos(Window(), nullptr, wanted.left, wanted.top, wanted.width, wanted.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void DriversWindow::ObservePlace() {
  if (!shown_ || IsIconic(Window())) return;
  place_.Observed(BoundsOf(Window()), Scale(GetDpiForSystem()), Scale(DotsPerInch()));
}

SIZE DriversWindow::InnerSize() {
  if (place_.IsAssigned()) ApplyPlace();
  return FormWindow::InnerSize();
}

void DriversWindow::PlaceControls() {
  if (IsIconic(Window())) return;
  const SIZE inner = InnerSize();
  PlaceChild(toolbar_.Window(), toolbar_.PlaceIn(inner.cx));
  const int height = statusBar_.Height();
  PlaceChild(statusBar_.Window(), {0, inner.cy - height, inner.cx, height});
  statusBar_.PlacePanels();
  PlaceChild(list_.Window(), Scale(DotsPerInch()).ToPixels(state_.lvListView.Place));
}

void DriversWindow::SyncTimer() {
  const int interval =
      state_.tmrStuff.Enabled && shown_ ? std::max(0, state_.tmrStuff.Interval) : 0;
  if (interval == timerInterval_) return;
  timerInterval_ = interval;
  if (interval == 0) {
    KillTimer(Window(), kTimer);
  } else {
    SetTimer(Window(), kTimer, static_cast<UINT>(interval), nullptr);
  }
}

std::optional<LRESULT> DriversWindow::HandleMessage(const Message& message) {
  switch (message.id) {
    case WM_COMMAND:
      return Command(message);
    case WM_NOTIFY:
      return Notified(*FromNumber<NMHDR*>(message.lParam));
    case WM_TIMER:
      if (message.wParam != kTimer) return std::nullopt;
      seam_.loop.Run(state_.tmrStuff.Tick);
      return 0;
    case WM_SIZE:
      StateChanged(message.wParam);
      return 0;
    case WM_MOVE:
      ObservePlace();
      return 0;
    case WM_SETFOCUS:
      SetFocus(list_.Window());
      return 0;
    case WM_DPICHANGED:
      ResolutionChanged(*FromNumber<const RECT*>(message.lParam));
      return 0;
    default:
      return FormWindow::HandleMessage(message);
  }
}

std::optional<LRESULT> DriversWindow::Command(const Message& message) {
  const auto sender = FromNumber<HWND>(message.lParam);
  if (!sender && HIWORD(message.wParam) == 0) {
    menus_.Run(LOWORD(message.wParam));
  } else if (sender == toolbar_.Window()) {
    toolbar_.Pressed(LOWORD(message.wParam));
  }
  return 0;
}

std::optional<LRESULT> DriversWindow::Notified(NMHDR& notification) {
  if (notification.hwndFrom == list_.Window()) return list_.Notified(notification);
  if (notification.hwndFrom == toolbar_.Window()) return toolbar_.Notified(notification);
  return std::nullopt;
}

void DriversWindow::StateChanged(WPARAM kind) {
  state_.State = kind == SIZE_MINIMIZED   ? WindowState::kMinimised
                 : kind == SIZE_MAXIMIZED ? WindowState::kMaximised
                                          : WindowState::kNormal;
  if (!shown_ || kind == SIZE_MINIMIZED) return;
  ObservePlace();
  seam_.loop.Run([this] { state_.Form_Resize(); });
}

void DriversWindow::ResolutionChanged(const RECT& place) {
  TakeResolution();
  if (!shown_) return;
  SetWindowPos(Window(), nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  seam_.loop.Run([this] { state_.Form_Resize(); });
}

// Tab leads from the list to the toolbar and back.
bool DriversWindow::Navigates(MSG& message) {
  if (message.message != WM_KEYDOWN || message.wParam != VK_TAB) return false;
  const bool leaves = GetFocus() != toolbar_.Window() && state_.tbToolBar.Visible;
  SetFocus(leaves ? toolbar_.Window() : list_.Window());
  return true;
}

}  // namespace tarvo::win32
