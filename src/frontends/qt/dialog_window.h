#pragma once

#include <functional>
#include <vector>

#include "frontends/qt/form_window.h"

namespace tarvo::qt {

// A small window of fixed size: its controls stand at their places, Place's size is the inner size,
// and it appears in the middle of its owner or, without one, of the screen.
class DialogWindow : public FormWindow {
 public:
  enum class Kind {
    kDialog,  // takes all input while it is on the screen
    kSplash,  // without a title bar; seen as soon as it has been repainted
  };

  DialogWindow(Form& form, Seam& seam, Kind kind, QWidget* owner);

  void Sync() override;
  void Show() override;
  void Repaint() override;
  void Close() override;

 private:
  void Add(Control& control);
  template <class Kept, class Drawn>
  void Keep(Kept& state, Drawn* drawn);
  void Centre();
  void WaitUntilSeen();

  Kind kind_;
  std::vector<std::function<void()>> syncs_;  // one for each control
};

}  // namespace tarvo::qt
