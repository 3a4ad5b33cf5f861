#include "platform/windows/local_time.h"

#include <windows.h>

#include <cstdint>

namespace tarvo {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;  // ticks of 100 nanoseconds
constexpr double kSecondsPerDay = 86400;
constexpr std::int64_t kTicksPerDay = kTicksPerSecond * 86400;
constexpr std::int64_t kDaysFrom1601To1899 = 109205;  // 30 December 1899

std::int64_t TicksOf(const FILETIME& time) {
  ULARGE_INTEGER ticks{};
  ticks.LowPart = time.dwLowDateTime;
  ticks.HighPart = time.dwHighDateTime;
  return static_cast<std::int64_t>(ticks.QuadPart);
}

// Ticks since 1 January 1601, local time with daylight saving as it is at this moment.
std::int64_t LocalTicks() {
  FILETIME now;
  ::GetSystemTimePreciseAsFileTime(&now);
  SYSTEMTIME universal;
  SYSTEMTIME local;
  FILETIME localTime;
  const bool isConverted = ::FileTimeToSystemTime(&now, &universal) &&
                           ::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local) &&
                           ::SystemTimeToFileTime(&local, &localTime);
  if (!isConverted) return TicksOf(now);
  // A calendar time has whole milliseconds only; what is finer is the same in every time zone.
  constexpr std::int64_t kTicksPerMillisecond = 10'000;
  return TicksOf(localTime) + TicksOf(now) % kTicksPerMillisecond;
}

}  // namespace

double LocalDayAndTime() {
  const std::int64_t ticks = LocalTicks();
  const auto days = static_cast<double>(ticks / kTicksPerDay - kDaysFrom1601To1899);
  return days + static_cast<double>(ticks % kTicksPerDay) / kTicksPerSecond / kSecondsPerDay;
}

double LocalSecondsSinceMidnight() {
  return static_cast<double>(LocalTicks() % kTicksPerDay) / kTicksPerSecond;
}

}  // namespace tarvo
