#include "frontends/qt/qt_front_end.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "frontends/qt/help_window.h"
#include "frontends/qt/text.h"
#include "frontends/qt/twips.h"
#include "frontends/qt/window_kinds.h"

namespace tarvo::qt {

QtFrontEnd::QtFrontEnd() : seam_{*this, dispatcher_, 0, {}} {
  dispatcher_.AfterHandler = [this] { SyncAll(); };
}

QtFrontEnd::~QtFrontEnd() { DiscardWindows(); }

void QtFrontEnd::RunEventLoop() {
  SyncAll();
  dispatcher_.Wait([this] { return LoadedForms().empty(); });
}

void QtFrontEnd::DiscardWindows() {
  help_.reset();
  for (const auto& window : windows_) window->Close();
  // Windows that others own come after these.
  while (!windows_.empty()) windows_.pop_back();
}

FormWindow* QtFrontEnd::Find(const Form& form) const {
  for (const auto& window : windows_) {
    if (&window->State() == &form) return window.get();
  }
  return nullptr;
}

// Windows are made when they are first asked for. The form is changed by its own handlers only.
FormWindow& QtFrontEnd::WindowOf(const Form& form) {
  if (FormWindow* const window = Find(form)) return *window;
  windows_.push_back(MakeWindow(const_cast<Form&>(form), seam_, Owner()));
  return *windows_.back();
}

QWidget* QtFrontEnd::WidgetOf(const Form& form) const {
  FormWindow* const window = Find(form);
  return window ? &window->Widget() : nullptr;
}

// The window that a dialog belongs to: the one on top of which it must stay.
QWidget* QtFrontEnd::Owner() const {
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  for (const auto& window : windows_) {
    if (window->Widget().isVisible() && !IsSplash(window->State())) return &window->Widget();
  }
  return nullptr;
}

void QtFrontEnd::SyncAll() {
  SyncPointer();
  for (std::size_t i = 0; i < windows_.size(); ++i) {
    if (IsLoaded(windows_[i]->State())) windows_[i]->Sync();
  }
}

void QtFrontEnd::ShowWindow(Form& form) { WindowOf(form).Show(); }

void QtFrontEnd::RunModally(Form& form, Form&) {
  SyncAll();
  ++seam_.dialogs;
  dispatcher_.Wait([this, &form] { return !IsLoaded(form); });
  --seam_.dialogs;
  dispatcher_.ThrowIfEnding();
}

void QtFrontEnd::CloseWindow(Form& form) {
  CloseHelpOf(form);
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& window) { return &window->State() == &form; });
  if (found == windows_.end()) return;
  // The call may come from one of the window's own events.
  FormWindow* const window = found->release();
  windows_.erase(found);
  window->Close();
  window->deleteLater();
}

// The hourglass is shown at once, the default pointer with the next synchronisation: a handler that
// changes between them a thousand times must not tell the display each time.
void QtFrontEnd::PointerChanged(int pointer) {
  if (pointer != kDefaultPointer) SyncPointer();
}

void QtFrontEnd::SyncPointer() {
  const bool wanted = MousePointer() != kDefaultPointer;
  const bool shown = QApplication::overrideCursor() != nullptr;
  if (wanted && !shown) QApplication::setOverrideCursor(Qt::WaitCursor);
  if (!wanted && shown) QApplication::restoreOverrideCursor();
}

void QtFrontEnd::Repaint(Form& form) {
  SyncPointer();
  FormWindow* const window = Find(form);
  if (!window) return;
  window->Sync();
  window->Repaint();
}

void QtFrontEnd::Yield() {
  dispatcher_.ThrowIfEnding();
  if (LoadedForms().empty()) return;
  SyncAll();
  QCoreApplication::processEvents();
  dispatcher_.ThrowIfEnding();
}

void QtFrontEnd::YieldUntilEvent(double seconds) {
  dispatcher_.ThrowIfEnding();
  if (LoadedForms().empty()) return;
  SyncAll();
  QTimer timer;
  timer.setSingleShot(true);
  timer.setTimerType(Qt::PreciseTimer);
  timer.start(static_cast<int>(std::ceil(std::clamp(seconds, 0.0, 3600.0) * 1000)));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  dispatcher_.ThrowIfEnding();
}

float QtFrontEnd::TextWidth(std::string_view text) { return TextWidth(text, Font()); }

float QtFrontEnd::TextWidth(std::string_view text, const Font& font) {
  return ToTwips(QFontMetricsF(ToFont(font)).horizontalAdvance(ToText(text)));
}

float QtFrontEnd::ScaleWidth(const Form& form) {
  return ToTwips(WindowOf(form).InnerSize().width());
}

float QtFrontEnd::ScaleHeight(const Form& form) {
  return ToTwips(WindowOf(form).InnerSize().height());
}

float QtFrontEnd::ToolbarHeight(const Form& form) {
  return ToTwips(WindowOf(form).ToolbarHeight());
}

float QtFrontEnd::StatusBarHeight(const Form& form) {
  return ToTwips(WindowOf(form).StatusBarHeight());
}

}  // namespace tarvo::qt
