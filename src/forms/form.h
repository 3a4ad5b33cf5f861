#pragma once

#include <string>
#include <utility>
#include <vector>

#include "forms/control.h"

namespace tarvo {

enum class WindowState { kNormal, kMinimised, kMaximised };

// A window as plain state with its handlers. A front end shows the state, keeps Place and State
// true while the user moves and sizes the window, and calls the handlers; it never learns more.
class Form {
 public:
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  // The window's handlers. Load runs when the window is loaded, before it is seen; Unload before it
  // goes.
  virtual void Form_Load() {}
  virtual void Form_Unload() {}
  virtual void Form_Activate() {}
  virtual void Form_KeyDown(int& keyCode) { (void)keyCode; }  // 0 swallows the key
  virtual void Form_Resize() {}

  std::string Name;
  std::string Caption;
  // Outer bounds, frame included, in twips. What is assigned stays until the user moves or sizes
  // the window.
  Bounds Place;
  WindowState State = WindowState::kNormal;
  bool Visible = false;  // on the screen; kept by the front end seam

  // The controls in the order of their indexes, menu entries included.
  const std::vector<Control*>& Controls() const { return controls_; }

 protected:
  Form(std::string name, std::string caption)
      : Name(std::move(name)), Caption(std::move(caption)) {}

  // Gives a control its name and enters it among the window's controls.
  void Enter(Control& control, std::string name) {
    control.Name = std::move(name);
    controls_.push_back(&control);
  }

 private:
  std::vector<Control*> controls_;
};

}  // namespace tarvo
