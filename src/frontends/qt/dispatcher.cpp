#include "frontends/qt/dispatcher.h"

#include <QEventLoop>
#include <utility>

#include "base/runtime_error.h"

namespace tarvo::qt {

void Dispatcher::Run(const std::function<void()>& handler) noexcept {
  if (ending_ || held_ > 0 || !handler) return;
  try {
    handler();
    if (AfterHandler) AfterHandler();
  } catch (const ProgramEnding&) {
    // The error has been remembered where it happened.
  } catch (const RuntimeError& error) {
    Fail(error.StandardMessage());
  } catch (const std::exception& error) {
    Fail(RuntimeError(kInternalError, error.what()).StandardMessage());
  } catch (...) {
    Fail(RuntimeError(kInternalError).StandardMessage());
  }
  EndWaitsThatAreOver();
}

void Dispatcher::Fail(std::string message) {
  if (!ending_) failure_ = std::move(message);
  ending_ = true;
}

void Dispatcher::ThrowIfEnding() const {
  if (ending_) throw ProgramEnding();
}

void Dispatcher::Wait(const std::function<bool()>& isOver) {
  if (ending_ || isOver()) return;
  QEventLoop loop;
  waits_.push_back({&loop, &isOver});
  loop.exec();
  waits_.pop_back();
}

void Dispatcher::EndWaitsThatAreOver() {
  for (const Waiting& waiting : waits_) {
    if (ending_ || (*waiting.isOver)()) waiting.loop->quit();
  }
}

}  // namespace tarvo::qt
