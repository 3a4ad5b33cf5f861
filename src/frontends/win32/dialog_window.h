#pragma once

#include <memory>
#include <vector>

#include "frontends/win32/dialog_controls.h"
#include "frontends/win32/form_window.h"

namespace tarvo::win32 {

// A small window of fixed size: its controls stand at their places, Place's size is the inner size,
// and it appears in the middle of its owner or, without one, of the screen.
class DialogWindow : public FormWindow {
 public:
  enum class Kind {
    kDialog,
    kSplash,  // without a title bar; takes no focus
  };

  DialogWindow(Form& form, Seam& seam, Kind kind, HWND owner);

  void Sync() override;
  void Show() override;

 protected:
  std::optional<LRESULT> HandleMessage(const Message& message) override;
  bool Navigates(MSG& message) override;

 private:
  void SyncSize();
  void Centre();
  void ChooseFocus();
  void Command(int identifier, int code);

  Kind kind_;
  HWND owner_;
  std::vector<std::unique_ptr<DialogControl>> controls_;
  FontHandle font_;
  bool shown_ = false;
};

}  // namespace tarvo::win32
