#pragma once

#include <QMargins>
#include <QRect>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "forms/form.h"
#include "frontends/qt/twips.h"

namespace tarvo::qt {

// Keeps a window's outer bounds on the screen and its Place, in twips, in line.
//
// What the program assigns is brought to the screen as whole pixels and stays in Place as it was
// assigned, until the user moves or sizes the window: then the changed values, and only they, are
// replaced by what is on the screen. The frame of a window is known only some time after it is
// shown; until then its size is corrected and nothing is taken for the user's doing. A size that
// the program assigns to a window on the screen is insisted on.
class WindowPlace : public QObject {
 public:
  WindowPlace(QWidget& window, Form& form);

  // Whether Place has been assigned since it was last applied or taken from the screen.
  bool IsAssigned() const { return !known_ || !(*known_ == form_.Place); }

  void Apply();

  // To be called whenever the window has been moved, sized, exposed or given another state.
  void Observe();

  // The inner size that belongs to Place, from the frame that is known or was last seen.
  QSize InnerSize() const;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void ApplySize();
  void ObserveFrame(const QMargins& margins);
  void ObserveBounds(const QRect& outer);
  void TakeOver(const QRect& outer);
  void TakeOver(int pixels, int& applied, int exact, float assigned, float& place);
  void FinishSettling();
  void Settle();
  QRect Outer() const;
  QMargins Margins() const;

  struct Pixels {
    int left = 0, top = 0, width = 0, height = 0;
  };
  static Pixels PixelsOf(const QRect& rect);

  QWidget& window_;
  Form& form_;
  std::optional<Bounds> known_;  // Place as last applied or taken over
  Bounds assigned_;              // Place as last assigned by the program ...
  Pixels exact_;                 // ... and what it is in pixels
  Pixels applied_;               // the outer bounds that the screen is expected to show
  QMargins margins_;
  bool settling_ = false;
  int repeats_ = 0;  // how often a size will be insisted on
  QTimer timer_;
};

}  // namespace tarvo::qt
