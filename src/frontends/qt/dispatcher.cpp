#include "frontends/qt/dispatcher.h"

#include <QEventLoop>

namespace tarvo::qt {

void Dispatcher::Wait(const std::function<bool()>& isOver) {
  if (IsEnding() || isOver()) return;
  QEventLoop loop;
  waits_.push_back({&loop, &isOver});
  loop.exec();
  waits_.pop_back();
}

void Dispatcher::EndWaitsThatAreOver() {
  for (const Waiting& waiting : waits_) {
    if (IsEnding() || (*waiting.isOver)()) waiting.loop->quit();
  }
}

}  // namespace tarvo::qt
