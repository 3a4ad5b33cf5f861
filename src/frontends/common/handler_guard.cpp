#include "frontends/common/handler_guard.h"

#include <exception>
#include <utility>

#include "base/runtime_error.h"

namespace tarvo {

void HandlerGuard::Run(const std::function<void()>& handler) noexcept {
  if (ending_ || held_ > 0 || !handler) return;
  ++running_;
  Protect([&] {
    handler();
    if (AfterHandler) AfterHandler();
  });
  --running_;
  HandlerHasRun();
}

void HandlerGuard::Protect(const std::function<void()>& service) noexcept {
  try {
    service();
  } catch (const ProgramEnding&) {
    // The error has been remembered where it happened.
  } catch (const RuntimeError& error) {
    Fail(error.StandardMessage());
  } catch (const std::exception& error) {
    Fail(RuntimeError(kInternalError, error.what()).StandardMessage());
  } catch (...) {
    Fail(RuntimeError(kInternalError).StandardMessage());
  }
}

void HandlerGuard::Fail(std::string message) {
  if (!ending_) failure_ = std::move(message);
  ending_ = true;
}

void HandlerGuard::ThrowIfEnding() const {
  if (ending_) throw ProgramEnding();
}

}  // namespace tarvo
