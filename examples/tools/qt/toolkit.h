#pragma once

#include <QApplication>
#include <memory>
#include <string_view>

namespace tarvo::tools {

// The toolkit, from the moment when a window is wanted. It is asked for the X11 windowing system
// where there is one, so that a driver manager can bring the tool's window to the front.
class Toolkit {
 public:
  Toolkit();

  // Shows the window until it is closed.
  void Run(QWidget& window);

 private:
  int count_ = 1;
  char* arguments_[2];
  std::unique_ptr<QApplication> application_;
};

QString TextOf(std::string_view text);

}  // namespace tarvo::tools
