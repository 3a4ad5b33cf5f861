#pragma once

#include <QMargins>
#include <QRect>
#include <QTimer>
#include <QWidget>

#include "forms/form.h"
#include "frontends/common/kept_place.h"
#include "frontends/qt/twips.h"

namespace tarvo::qt {

// Keeps a window's outer bounds on the screen and its Place, in twips, in line.
//
// What the program assigns is kept as KeptPlace says. The frame of a window is known only some time
// after it is shown; until then its size is corrected and nothing is taken for the user's doing. A
// size that the program assigns to a window on the screen is insisted on.
class WindowPlace : public QObject {
 public:
  WindowPlace(QWidget& window, Form& form);

  // Whether Place has been assigned since it was last applied or taken from the screen.
  bool IsAssigned() const { return kept_.IsAssigned(); }

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
  void FinishSettling();
  void Settle();
  QRect Outer() const;
  QMargins Margins() const;

  QWidget& window_;
  Form& form_;
  KeptPlace kept_;
  bool wasApplied_ = false;
  QMargins margins_;
  bool settling_ = false;
  int repeats_ = 0;  // how often a size will be insisted on
  QTimer timer_;
};

}  // namespace tarvo::qt
