#include "frontends/win32/win32_front_end.h"

#include <algorithm>

#include "frontends/common/twips.h"
#include "frontends/win32/fonts.h"
#include "frontends/win32/text.h"
#include "frontends/win32/window_kinds.h"

namespace tarvo::win32 {

Win32FrontEnd::Win32FrontEnd() : seam_{*this, loop_, 0, {}} {
  INITCOMMONCONTROLSEX controls{};
  controls.dwSize = sizeof controls;
  controls.dwICC = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_STANDARD_CLASSES;
  InitCommonControlsEx(&controls);
  loop_.AfterHandler = [this] { SyncAll(); };
  loop_.WhenIdle = [this] { closed_.clear(); };
  loop_.Filter = [this](MSG& message) { return TakesKey(message); };
}

Win32FrontEnd::~Win32FrontEnd() { DiscardWindows(); }

void Win32FrontEnd::RunEventLoop() {
  SyncAll();
  loop_.Wait([this] { return LoadedForms().empty(); });
}

void Win32FrontEnd::DiscardWindows() {
  for (const auto& window : windows_) window->Close();
  closed_.clear();
  // Windows that others own come after these.
  while (!windows_.empty()) windows_.pop_back();
}

FormWindow* Win32FrontEnd::Find(const Form& form) const {
  for (const auto& window : windows_) {
    if (&window->State() == &form) return window.get();
  }
  return nullptr;
}

// Windows are made when they are first asked for. The form is changed by its own handlers only.
FormWindow& Win32FrontEnd::WindowOf(const Form& form) {
  if (FormWindow* const window = Find(form)) return *window;
  windows_.push_back(MakeWindow(const_cast<Form&>(form), seam_, Owner()));
  return *windows_.back();
}

HWND Win32FrontEnd::WindowShowing(const Form& form) const {
  FormWindow* const window = Find(form);
  return window ? window->Window() : nullptr;
}

// The window that a dialog belongs to: the one on top of which it must stay.
HWND Win32FrontEnd::Owner() const {
  if (!modal_.empty()) return WindowShowing(*modal_.back());
  for (const auto& window : windows_) {
    if (IsWindowVisible(window->Window()) && !IsSplash(window->State())) return window->Window();
  }
  return nullptr;
}

// Keys go to the window first that holds the control with the focus.
bool Win32FrontEnd::TakesKey(MSG& message) {
  const HWND top = GetAncestor(message.hwnd, GA_ROOT);
  for (std::size_t i = 0; i < windows_.size(); ++i) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (isKey && windows_[i]->Window() == top) return windows_[i]->TakesKey(message);
  }
  return false;
}

void Win32FrontEnd::SyncAll() {
  SyncPointer();
  for (std::size_t i = 0; i < windows_.size(); ++i) {
    if (IsLoaded(windows_[i]->State())) windows_[i]->Sync();
  }
}

void Win32FrontEnd::ShowWindow(Form& form) { WindowOf(form).Show(); }

void Win32FrontEnd::RunModally(Form& form, Form&) {
  SyncAll();
  FormWindow* const window = Find(form);
  modal_.push_back(&form);
  EnableOthers(window, false);
  ++seam_.dialogs;
  loop_.Wait([this, &form] { return !IsLoaded(form); });
  --seam_.dialogs;
  loop_.ThrowIfEnding();
}

void Win32FrontEnd::EnableOthers(const FormWindow* modal, bool enabled) {
  for (const auto& window : windows_) {
    if (window.get() != modal) EnableWindow(window->Window(), enabled);
  }
}

// The call may come from one of the window's own events. The window below takes input again before
// this one goes: otherwise another program's would come to the front.
void Win32FrontEnd::CloseWindow(Form& form) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& window) { return &window->State() == &form; });
  if (found == windows_.end()) return;
  const auto modal = std::find(modal_.begin(), modal_.end(), &form);
  if (modal != modal_.end()) {
    modal_.erase(modal);
    if (modal_.empty()) {
      EnableOthers(found->get(), true);
    } else {
      EnableWindow(WindowShowing(*modal_.back()), TRUE);
    }
  }
  closed_.push_back(std::move(*found));
  windows_.erase(found);
  closed_.back()->Close();
}

// The hourglass is shown at once, the default pointer with the next synchronisation: a handler that
// changes between them a thousand times must not tell the system each time.
void Win32FrontEnd::PointerChanged(int pointer) {
  if (pointer != kDefaultPointer) SyncPointer();
}

// A window chooses its pointer when the mouse moves over it; here it is asked at once.
void Win32FrontEnd::SyncPointer() {
  if (shownPointer_ == MousePointer()) return;
  shownPointer_ = MousePointer();
  POINT mouse = {};
  GetCursorPos(&mouse);
  const HWND below = WindowFromPoint(mouse);
  if (!below || GetWindowThreadProcessId(below, nullptr) != GetCurrentThreadId()) return;
  const LRESULT place = SendMessageW(below, WM_NCHITTEST, 0, MAKELPARAM(mouse.x, mouse.y));
  SendMessageW(below, WM_SETCURSOR, reinterpret_cast<WPARAM>(below),
               MAKELPARAM(place, WM_MOUSEMOVE));
}

void Win32FrontEnd::Repaint(Form& form) {
  SyncPointer();
  if (FormWindow* const window = Find(form)) window->Repaint();
}

void Win32FrontEnd::Yield() {
  loop_.ThrowIfEnding();
  if (LoadedForms().empty()) return;
  SyncAll();
  loop_.RunWaiting();
  loop_.ThrowIfEnding();
}

void Win32FrontEnd::YieldUntilEvent(double seconds) {
  loop_.ThrowIfEnding();
  if (LoadedForms().empty()) return;
  SyncAll();
  loop_.WaitForMessage(seconds);
  loop_.RunWaiting();
  loop_.ThrowIfEnding();
}

float Win32FrontEnd::TextWidth(std::string_view text) { return TextWidth(text, Font()); }

float Win32FrontEnd::TextWidth(std::string_view text, const Font& font) {
  const unsigned dots = GetDpiForSystem();
  return Scale(dots).ToTwips(win32::TextWidth(MakeFont(font, dots).Get(), Wide(text)));
}

float Win32FrontEnd::ScaleWidth(const Form& form) {
  FormWindow& window = WindowOf(form);
  return Scale(window.DotsPerInch()).ToTwips(window.InnerSize().cx);
}

float Win32FrontEnd::ScaleHeight(const Form& form) {
  FormWindow& window = WindowOf(form);
  return Scale(window.DotsPerInch()).ToTwips(window.InnerSize().cy);
}

float Win32FrontEnd::ToolbarHeight(const Form& form) {
  FormWindow& window = WindowOf(form);
  return Scale(window.DotsPerInch()).ToTwips(window.ToolbarHeight());
}

float Win32FrontEnd::StatusBarHeight(const Form& form) {
  FormWindow& window = WindowOf(form);
  return Scale(window.DotsPerInch()).ToTwips(window.StatusBarHeight());
}

}  // namespace tarvo::win32
