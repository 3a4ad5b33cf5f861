#pragma once

#include <cstddef>

#include "forms/front_end.h"

namespace tarvo {

// What a walk through a driver's folders bears: the subfolders of one folder, and the levels below
// the first, so that it always returns.
inline constexpr std::size_t kMostSubfolders = 101;
inline constexpr int kDeepestLevel = 2000;

// The hourglass from the start of work on a folder, the default pointer at its end: the innermost
// folder's end shows the default though the outer ones are still being worked on. Work that fails
// ends so too, or the hourglass would stay for the rest of the run.
class HourglassForFolder {
 public:
  explicit HourglassForFolder(FrontEnd& frontEnd) : frontEnd_(frontEnd) {
    frontEnd_.SetMousePointer(kHourglassPointer);
  }
  ~HourglassForFolder() { frontEnd_.SetMousePointer(kDefaultPointer); }
  HourglassForFolder(const HourglassForFolder&) = delete;
  HourglassForFolder& operator=(const HourglassForFolder&) = delete;

 private:
  FrontEnd& frontEnd_;
};

}  // namespace tarvo
