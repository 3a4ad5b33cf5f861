#include "tools/readings.h"

#include <gtest/gtest.h>

#include "base/numbers.h"

namespace tarvo::tools {
namespace {

constexpr double kNoon = 45000.5;  // 15 March 2023

const std::vector<Field> kFields{{"RECNO", "Number", ""},          {"DATEANDTIME", "Date", ""},
                                 {"STATUS", "Status", ""},         {"REMARK", "Remark", ""},
                                 {"SUPPLYVOLTAGE", "", "V"},       {"BATTERYVOLTAGE", "", "V"},
                                 {"WATERLEVEL", "Water Level", ""}};

TEST(AMoment, IsWrittenAsDateAndTime) {
  EXPECT_EQ(DateText(kNoon), "2023-03-15");
  EXPECT_EQ(TimeText(kNoon), "12:00");
}

TEST(AMoment, KeepsItsMinuteHoweverItWasComputed) {
  for (int minute = 0; minute < 1440; ++minute) {
    char expected[32];
    std::snprintf(expected, sizeof expected, "%02d:%02d", minute / 60, minute % 60);
    EXPECT_EQ(TimeText(45001 - (1440 - minute) / 1440.0), expected);
  }
}

TEST(AMoment, JustBeforeMidnightBelongsToTheOldDay) {
  EXPECT_EQ(DateText(45001 - 1.0 / 86400), "2023-03-15");
  EXPECT_EQ(TimeText(45001 - 1.0 / 86400), "23:59");
}

TEST(AReading, HasAValueForEachField) {
  const Reading reading = Measure(kFields, kNoon, 7);
  ASSERT_EQ(reading.values.size(), kFields.size());
  EXPECT_EQ(reading.values[0], "7");
  EXPECT_EQ(reading.values[1], "2023-03-15 12:00");
  EXPECT_EQ(reading.values[2], "OK");
  EXPECT_EQ(reading.values[3], "");
}

TEST(AReading, StaysNearTheQuantitysUsualValues) {
  for (int hour = 0; hour < 100; ++hour) {
    const Reading reading = Measure(kFields, kNoon + hour / 24.0, 1);
    EXPECT_NEAR(LeadingNumber(reading.values[4]), 230, 3);
    EXPECT_NEAR(LeadingNumber(reading.values[5]), 9.1, 0.2);
    EXPECT_NEAR(LeadingNumber(reading.values[6]), 3.1, 2.5);
  }
}

TEST(AReading, IsTheSameForTheSameMomentAndChangesWithTime) {
  EXPECT_EQ(Measure(kFields, kNoon, 1).values, Measure(kFields, kNoon, 1).values);
  EXPECT_NE(Measure(kFields, kNoon, 1).values[6], Measure(kFields, kNoon + 0.1, 1).values[6]);
}

}  // namespace
}  // namespace tarvo::tools
