#include "tools/transfer.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"

namespace tarvo::tools {
namespace {

using State = TransferCourse::State;

class FourBlocks : public Transfer {
 public:
  std::string Activity() const override { return "Moving"; }
  int BlockCount() const override { return 4; }
  void MoveBlock() override { ++moved; }
  std::string Finish() override {
    ++finished;
    if (failsAtTheEnd) throw RuntimeError(kDiskFull);
    return "Moved";
  }

  int moved = 0;
  int finished = 0;
  bool failsAtTheEnd = false;
};

TEST(ATransfer, IsDoneWithItsLastBlock) {
  FourBlocks transfer;
  TransferCourse course(transfer, false);
  EXPECT_EQ(course.Message(), "Moving");
  for (const int percent : {25, 50, 75}) {
    course.Step();
    EXPECT_EQ(course.Percent(), percent);
    EXPECT_EQ(course.Now(), State::kRunning);
  }
  course.Step();
  EXPECT_EQ(course.Percent(), 100);
  EXPECT_EQ(course.Now(), State::kDone);
  EXPECT_EQ(course.Message(), "Moved");
}

TEST(ATransfer, StaysAsItEnded) {
  FourBlocks transfer;
  TransferCourse course(transfer, false);
  for (int i = 0; i < 10; ++i) course.Step();
  EXPECT_EQ(transfer.moved, 4);
  EXPECT_EQ(transfer.finished, 1);
}

TEST(ATransfer, ThatBreaksStopsHalfwayAndIsNeverFinished) {
  FourBlocks transfer;
  TransferCourse course(transfer, true);
  for (int i = 0; i < 10; ++i) course.Step();
  EXPECT_EQ(course.Now(), State::kFailed);
  EXPECT_EQ(course.Message(), "The connection to the device was lost.");
  EXPECT_EQ(course.Percent(), 50);
  EXPECT_EQ(transfer.moved, 2);
  EXPECT_EQ(transfer.finished, 0);
}

TEST(ATransfer, ThatCannotBeFinishedHasFailed) {
  FourBlocks transfer;
  transfer.failsAtTheEnd = true;
  TransferCourse course(transfer, false);
  for (int i = 0; i < 10; ++i) course.Step();
  EXPECT_EQ(course.Now(), State::kFailed);
  EXPECT_EQ(course.Message(), RuntimeError(kDiskFull).Description());
  EXPECT_EQ(transfer.finished, 1);
}

}  // namespace
}  // namespace tarvo::tools
