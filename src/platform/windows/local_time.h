#pragma once

namespace tarvo {

// See Platform::Now and Platform::SecondsSinceMidnight.
double LocalDayAndTime();
double LocalSecondsSinceMidnight();

}  // namespace tarvo
