#include "frontends/qt/window_place.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <cstdlib>

namespace tarvo::qt {
namespace {

constexpr int kSettlingTime = 400;  // milliseconds
constexpr int kRepeats = 5;

// The frame of the last window that had one: the best guess for the next.
QMargins& LastFrame() {
  static QMargins frame;
  return frame;
}

// Whole pixels of a scaled screen may come back one off.
bool AreNear(int a, int b) { return std::abs(a - b) <= 1; }

}  // namespace

WindowPlace::WindowPlace(QWidget& window, Form& form)
    : window_(window), form_(form), kept_(form.Place) {
  margins_ = LastFrame();
  timer_.setSingleShot(true);
  timer_.setInterval(kSettlingTime);
  connect(&timer_, &QTimer::timeout, this, [this] { FinishSettling(); });
}

QMargins WindowPlace::Margins() const {
  const QWindow* const handle = window_.windowHandle();
  return handle && window_.isVisible() ? handle->frameMargins() : margins_;
}

QRect WindowPlace::Outer() const { return window_.windowHandle()->frameGeometry(); }

void WindowPlace::Apply() {
  wasApplied_ = true;
  if (form_.State == WindowState::kMaximised) return kept_.Applied(kept_.Expected());
  const QRect outer = OuterPixels(form_.Place, QGuiApplication::primaryScreen()->virtualGeometry());
  kept_.Applied(ToPixelBounds(outer));
  settling_ = true;
  repeats_ = window_.isVisible() ? kRepeats : 0;
  if (window_.isVisible()) timer_.start();
  window_.move(outer.topLeft());
  ApplySize();
}

void WindowPlace::ApplySize() { window_.resize(InnerSize()); }

QSize WindowPlace::InnerSize() const {
  QRect outer = ToRect(kept_.Expected());
  if (IsAssigned()) {
    outer = OuterPixels(form_.Place, QGuiApplication::primaryScreen()->virtualGeometry());
  }
  return outer.size().shrunkBy(Margins()).expandedTo({1, 1});
}

void WindowPlace::Observe() {
  QWindow* const handle = window_.windowHandle();
  if (!handle || !window_.isVisible() || !wasApplied_ || form_.State == WindowState::kMinimised)
    return;
  handle->installEventFilter(this);
  const QMargins margins = Margins();
  if (form_.State == WindowState::kMaximised) {
    TakeOver(Outer());
  } else if (margins != margins_) {
    ObserveFrame(margins);
  } else {
    ObserveBounds(Outer());
  }
}

bool WindowPlace::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Expose) Observe();
  return false;
}

void WindowPlace::ObserveFrame(const QMargins& margins) {
  margins_ = margins;
  if (!margins.isNull()) LastFrame() = margins;
  settling_ = true;
  timer_.start();
  ApplySize();
}

void WindowPlace::ObserveBounds(const QRect& outer) {
  if (!settling_) return TakeOver(outer);
  const PixelBounds now = ToPixelBounds(outer);
  const PixelBounds& applied = kept_.Expected();
  const bool asApplied = AreNear(now.left, applied.left) && AreNear(now.top, applied.top) &&
                         AreNear(now.width, applied.width) && AreNear(now.height, applied.height);
  if (asApplied && !margins_.isNull()) return Settle();
  if (!timer_.isActive()) timer_.start();
}

void WindowPlace::FinishSettling() {
  if (!settling_ || !window_.isVisible()) return;
  const PixelBounds now = ToPixelBounds(Outer());
  const PixelBounds& applied = kept_.Expected();
  const bool sized = AreNear(now.width, applied.width) && AreNear(now.height, applied.height);
  if (sized || repeats_ == 0) return Settle();
  --repeats_;
  timer_.start();
  ApplySize();
}

// Where the window manager put the window is accepted without a change of Place.
void WindowPlace::Settle() {
  settling_ = false;
  timer_.stop();
  kept_.Settled(ToPixelBounds(Outer()));
}

void WindowPlace::TakeOver(const QRect& outer) {
  kept_.Observed(ToPixelBounds(outer), kScale, kScale);
}

}  // namespace tarvo::qt
