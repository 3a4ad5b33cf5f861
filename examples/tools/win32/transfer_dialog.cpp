#include <algorithm>

#include "tools/tool_windows.h"
#include "tools/win32/dialog.h"
// After it: uses the system's types.
#include <commctrl.h>

#include "tools/win32/resource_ids.h"
#include "tools/window_texts.h"

namespace tarvo::tools {

namespace {

constexpr double kShortestTick = 10;  // milliseconds; the system's timers have no shorter one

class TransferDialog : public Dialog {
 public:
  TransferDialog(Transfer& transfer, const ToolOptions& options)
      : course_(transfer, options.fails),
        closes_(options.closes),
        blockTime_(options.seconds * 1000 / transfer.BlockCount()) {}

  bool Succeeded() const { return course_.Now() == TransferCourse::State::kDone; }

 protected:
  void Opened() override {
    SendMessageW(Item(TOOL_PROGRESS), PBM_SETRANGE32, 0, 100);
    SetText(IDCANCEL, texts::kCancel);
    ShowCourse();
    start_ = GetTickCount64();
    StartTimer(static_cast<unsigned>(std::max(blockTime_, kShortestTick)));
  }

  void Pressed(int button) override {
    if (button == IDCANCEL) Close();
  }

  void TimePassed() override {
    const auto passed = static_cast<double>(GetTickCount64() - start_);
    do {
      course_.Step();
      ++steps_;
    } while (course_.Now() == TransferCourse::State::kRunning && blockTime_ > 0 &&
             (steps_ + 1) * blockTime_ <= passed);
    ShowCourse();
    if (course_.Now() == TransferCourse::State::kRunning) return;
    StopTimer();
    SetText(IDCANCEL, texts::kClose);
    if (Succeeded() || closes_) Close();
  }

 private:
  void ShowCourse() const {
    SendMessageW(Item(TOOL_PROGRESS), PBM_SETPOS, static_cast<WPARAM>(course_.Percent()), 0);
    if (TextOf(TOOL_ACTIVITY) != course_.Message()) SetText(TOOL_ACTIVITY, course_.Message());
  }

  TransferCourse course_;
  bool closes_;
  double blockTime_;  // milliseconds
  ULONGLONG start_ = 0;
  int steps_ = 0;
};

}  // namespace

int ShowTransfer(Tool& tool, std::string_view toolTitle, const ToolOptions& options,
                 const std::function<std::unique_ptr<Transfer>()>& makeTransfer) {
  return ShownOrExplained(tool, options, [&] {
    const std::unique_ptr<Transfer> transfer = makeTransfer();
    TransferDialog dialog(*transfer, options);
    dialog.Show(TOOL_TRANSFER, texts::WindowTitle(tool, toolTitle));
    return dialog.Succeeded() ? 0 : 1;
  });
}

}  // namespace tarvo::tools
