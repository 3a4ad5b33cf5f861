#include <time.h>

#include <cmath>

#include "base/text.h"
#include "contract.h"
#include "environment.h"
#include "platform/forwarding_platform.h"
#include "support/hand_moved_platform.h"

namespace tarvo::test {
namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kDaysFrom1899To1970 = 25569;
// What a date-time number of our days leaves of a second.
constexpr double kPrecision = 1e-5;

// A time zone for this process, in the notation that needs no files: what is to be added to get the
// universal time.
class TimeZone {
 public:
  explicit TimeZone(const std::string& rule) : variable_("TZ", rule) { ::tzset(); }
  ~TimeZone() {
    variable_.Set(std::nullopt);
    ::tzset();
  }

 private:
  EnvironmentVariable variable_;
};

double UniversalSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

TEST_P(PlatformContract, TheTimeOfDayIsTheFractionOfTheDateAndTime) {
  double before = 0;
  double now = 0;
  double after = 0;
  do {
    before = platform.SecondsSinceMidnight();
    now = platform.Now();
    after = platform.SecondsSinceMidnight();
  } while (after < before);  // midnight has passed between them
  const double seconds = (now - std::floor(now)) * kSecondsPerDay;
  EXPECT_GE(seconds, before - kPrecision);
  EXPECT_LE(seconds, after + kPrecision);
}

TEST_P(PlatformContract, TheTimeOfDayLiesWithinTheDay) {
  for (int hours = -12; hours <= 12; ++hours) {
    const TimeZone zone("XXX" + std::to_string(hours) + ":30");
    const double seconds = platform.SecondsSinceMidnight();
    EXPECT_GE(seconds, 0);
    EXPECT_LT(seconds, kSecondsPerDay);
  }
}

TEST_P(PlatformContract, TheDecimalSignIsOneCharacter) {
  EXPECT_EQ(CharacterCount(platform.DecimalSeparator()), 1u);
}

TEST_P(PlatformContract, DatesThatDifferHaveDifferentTexts) {
  const std::string date = platform.ShortDate({2023, 2, 3});
  EXPECT_NE(date, platform.ShortDate({2023, 2, 4}));
  EXPECT_NE(date, platform.ShortDate({2023, 3, 3}));
  EXPECT_NE(date, platform.ShortDate({2024, 2, 3}));
  EXPECT_EQ(date, platform.ShortDate({2023, 2, 3}));
}

// The two that read the system's clock.
class SystemClock : public ::testing::Test {
 protected:
  void ExpectLocalTime(double secondsEastOfUniversalTime) {
    const auto local = [&](double seconds) {
      return (seconds + secondsEastOfUniversalTime) / kSecondsPerDay + kDaysFrom1899To1970;
    };
    for (Platform* platform : {&SystemPlatform(), static_cast<Platform*>(&forwarding)}) {
      const double before = UniversalSeconds();
      const double now = platform->Now();
      const double after = UniversalSeconds();
      EXPECT_GE(now, local(before) - kPrecision / kSecondsPerDay);
      EXPECT_LE(now, local(after) + kPrecision / kSecondsPerDay);
    }
  }

  ForwardingPlatform forwarding{SystemPlatform()};
};

TEST_F(SystemClock, CountsLocalDaysSince30December1899) {
  {
    const TimeZone kathmandu("XXX-5:45");
    ExpectLocalTime(5.75 * 3600);
  }
  {
    const TimeZone west("XXX11");
    ExpectLocalTime(-11.0 * 3600);
  }
  const TimeZone universal("XXX0");
  ExpectLocalTime(0);
}

TEST_F(SystemClock, HasAFractionOfASecond) {
  int fractions = 0;
  for (int i = 0; i < 10; ++i) {
    const double seconds = forwarding.SecondsSinceMidnight();
    if (seconds != std::floor(seconds)) ++fractions;
  }
  EXPECT_GT(fractions, 0);
}

TEST(HandMovedClock, PassesMidnightIntoTheNextDay) {
  HandMovedPlatform platform;
  platform.secondsOfDay = 86399.5;
  platform.PassSeconds(1);
  EXPECT_EQ(platform.SecondsSinceMidnight(), 0.5);
  EXPECT_EQ(std::floor(platform.Now()), 45001);
}

TEST(HandMovedClock, GoesOnWithEachReading) {
  HandMovedPlatform platform;
  platform.secondsPerReading = 2;
  const double first = platform.SecondsSinceMidnight();
  EXPECT_EQ(platform.SecondsSinceMidnight(), first + 2);
  platform.Now();
  EXPECT_EQ(platform.SecondsSinceMidnight(), first + 6);
}

}  // namespace
}  // namespace tarvo::test
