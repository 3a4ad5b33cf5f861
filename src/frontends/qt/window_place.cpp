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

WindowPlace::WindowPlace(QWidget& window, Form& form) : window_(window), form_(form) {
  margins_ = LastFrame();
  timer_.setSingleShot(true);
  timer_.setInterval(kSettlingTime);
  connect(&timer_, &QTimer::timeout, this, [this] { FinishSettling(); });
}

WindowPlace::Pixels WindowPlace::PixelsOf(const QRect& rect) {
  return {rect.left(), rect.top(), rect.width(), rect.height()};
}

QMargins WindowPlace::Margins() const {
  const QWindow* const handle = window_.windowHandle();
  return handle && window_.isVisible() ? handle->frameMargins() : margins_;
}

QRect WindowPlace::Outer() const { return window_.windowHandle()->frameGeometry(); }

void WindowPlace::Apply() {
  known_ = assigned_ = form_.Place;
  if (form_.State == WindowState::kMaximised) return;
  const QRect outer = OuterPixels(form_.Place, QGuiApplication::primaryScreen()->virtualGeometry());
  applied_ = exact_ = PixelsOf(outer);
  settling_ = true;
  repeats_ = window_.isVisible() ? kRepeats : 0;
  if (window_.isVisible()) timer_.start();
  window_.move(outer.topLeft());
  ApplySize();
}

void WindowPlace::ApplySize() { window_.resize(InnerSize()); }

QSize WindowPlace::InnerSize() const {
  Pixels outer = applied_;
  if (IsAssigned()) {
    outer = PixelsOf(OuterPixels(form_.Place, QGuiApplication::primaryScreen()->virtualGeometry()));
  }
  return QSize(outer.width, outer.height).shrunkBy(Margins()).expandedTo({1, 1});
}

void WindowPlace::Observe() {
  QWindow* const handle = window_.windowHandle();
  if (!handle || !window_.isVisible() || !known_ || form_.State == WindowState::kMinimised) return;
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
  const Pixels now = PixelsOf(outer);
  const bool asApplied = AreNear(now.left, applied_.left) && AreNear(now.top, applied_.top) &&
                         AreNear(now.width, applied_.width) && AreNear(now.height, applied_.height);
  if (asApplied && !margins_.isNull()) return Settle();
  if (!timer_.isActive()) timer_.start();
}

void WindowPlace::FinishSettling() {
  if (!settling_ || !window_.isVisible()) return;
  const Pixels now = PixelsOf(Outer());
  const bool sized = AreNear(now.width, applied_.width) && AreNear(now.height, applied_.height);
  if (sized || repeats_ == 0) return Settle();
  --repeats_;
  timer_.start();
  ApplySize();
}

// Where the window manager put the window is accepted without a change of Place.
void WindowPlace::Settle() {
  settling_ = false;
  timer_.stop();
  applied_ = exact_ = PixelsOf(Outer());
}

void WindowPlace::TakeOver(const QRect& outer) {
  const Pixels now = PixelsOf(outer);
  TakeOver(now.left, applied_.left, exact_.left, assigned_.Left, form_.Place.Left);
  TakeOver(now.top, applied_.top, exact_.top, assigned_.Top, form_.Place.Top);
  TakeOver(now.width, applied_.width, exact_.width, assigned_.Width, form_.Place.Width);
  TakeOver(now.height, applied_.height, exact_.height, assigned_.Height, form_.Place.Height);
  known_ = form_.Place;
}

// A bound that has come back to the pixels of the assigned value gets exactly that value again, so
// that maximising and restoring a window changes nothing.
void WindowPlace::TakeOver(int pixels, int& applied, int exact, float assigned, float& place) {
  if (pixels == applied) return;
  applied = pixels;
  place = pixels == exact ? assigned : ToTwips(pixels);
}

}  // namespace tarvo::qt
