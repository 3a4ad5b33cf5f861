#include "frontends/common/handler_guard.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/runtime_error.h"

namespace tarvo {
namespace {

TEST(HandlerGuardTest, AnErrorOfAHandlerIsRememberedAsTheStandardMessage) {
  HandlerGuard guard;
  guard.Run([] { throw RuntimeError(kPathNotFound); });
  EXPECT_EQ(guard.Failure(), RuntimeError(kPathNotFound).StandardMessage());
}

TEST(HandlerGuardTest, AnyOtherExceptionEndsTheProgramToo) {
  HandlerGuard guard;
  guard.Run([] { throw std::length_error("too long"); });
  EXPECT_EQ(guard.Failure(), RuntimeError(kInternalError, "too long").StandardMessage());
}

TEST(HandlerGuardTest, NoHandlerRunsAfterAnError) {
  HandlerGuard guard;
  bool ran = false;
  guard.Run([] { throw RuntimeError(kOverflow); });
  guard.Run([&] { ran = true; });
  EXPECT_FALSE(ran);
}

TEST(HandlerGuardTest, AHandlerThatAbsorbsErrorsDoesNotAbsorbTheEnd) {
  HandlerGuard guard;
  bool wentOn = false;
  guard.Run([&] {
    guard.Run([] { throw RuntimeError(kOverflow); });
    try {
      guard.ThrowIfEnding();
    } catch (const std::exception&) {
    }
    wentOn = true;
  });
  EXPECT_FALSE(wentOn);
}

TEST(HandlerGuardTest, TheStateIsDrawnAfterEachHandler) {
  HandlerGuard guard;
  int drawn = 0;
  guard.AfterHandler = [&] { ++drawn; };
  guard.Run([] {});
  guard.Run([] {});
  EXPECT_EQ(drawn, 2);
}

TEST(HandlerGuardTest, NoHandlerRunsWhileDrawing) {
  HandlerGuard guard;
  bool ran = false;
  {
    const HandlerGuard::Hold hold(guard);
    guard.Run([&] { ran = true; });
  }
  EXPECT_FALSE(ran);
  guard.Run([&] { ran = true; });
  EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace tarvo
