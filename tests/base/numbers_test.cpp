#include "base/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/runtime_error.h"

namespace tarvo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, HasUpTo15SignificantDigits) {
  EXPECT_EQ(NumberText(39496.6543287037, "."), "39496.6543287037");
  EXPECT_EQ(NumberText(45000.123456789012, "."), "45000.123456789");
  EXPECT_EQ(NumberText(1.0 / 3, "."), "0.333333333333333");
  EXPECT_EQ(NumberText(2.0 / 3, "."), "0.666666666666667");
  EXPECT_EQ(NumberText(0.1 + 0.2, "."), "0.3");
  EXPECT_EQ(NumberText(999999999999999.0, "."), "999999999999999");
}

TEST(NumberText, OfAWholeNumberHasNoDecimalSign) {
  EXPECT_EQ(NumberText(0, ","), "0");
  EXPECT_EQ(NumberText(45000, ","), "45000");
  EXPECT_EQ(NumberText(-7, ","), "-7");
  EXPECT_EQ(NumberText(-0.0, "."), "0");
}

TEST(NumberText, UsesTheLocalesDecimalSign) {
  EXPECT_EQ(NumberText(1.5, ","), "1,5");
  EXPECT_EQ(NumberText(-39496.25, ","), "-39496,25");
  EXPECT_EQ(NumberText(1.5, "٫"), "1٫5") << "one character, two bytes";
  EXPECT_EQ(NumberText(1.5e20, ","), "1,5E+20");
}

TEST(NumberText, TakesAnExponentForVeryLargeAndVerySmallMagnitudes) {
  EXPECT_EQ(NumberText(1e20, "."), "1E+20");
  EXPECT_EQ(NumberText(1e15, "."), "1E+15");
  EXPECT_EQ(NumberText(-1.25e-10, "."), "-1.25E-10");
  EXPECT_EQ(NumberText(0.001, "."), "0.001");
}

TEST(NumberText, IsReadBackAsTheSameNumberWhereItFits) {
  for (const double value : {0.0, 1.5, -2.25, 39496.6543287037, 1e20, 1.25e-10, 45000.5}) {
    double read = -1;
    EXPECT_TRUE(ReadNumber(NumberText(value, ","), ",", read));
    EXPECT_EQ(read, value);
  }
}

TEST(SingleText, HasUpTo7SignificantDigits) {
  EXPECT_EQ(SingleText(4534567.0F, "."), "4534567");
  EXPECT_EQ(SingleText(8639999.0F, "."), "8639999") << "the last hundredth of a day";
  EXPECT_EQ(SingleText(123.4F, "."), "123.4");
  EXPECT_EQ(SingleText(123.4F, ","), "123,4");
  EXPECT_EQ(SingleText(1.0F / 3, "."), "0.3333333");
  EXPECT_EQ(SingleText(4534567.5F, "."), "4534568") << "halves of the eighth digit to even";
  EXPECT_EQ(SingleText(0, "."), "0");
}

TEST(LeadingNumber, IsTheLongestNumericPrefix) {
  EXPECT_EQ(LeadingNumber("12abc"), 12);
  EXPECT_EQ(LeadingNumber("-3.5 m"), -3.5);
  EXPECT_EQ(LeadingNumber("+4"), 4);
  EXPECT_EQ(LeadingNumber(".5"), 0.5);
  EXPECT_EQ(LeadingNumber("5."), 5);
  EXPECT_EQ(LeadingNumber("1.2.3"), 1.2);
  EXPECT_EQ(LeadingNumber("1e3x"), 1000);
  EXPECT_EQ(LeadingNumber("1E-2"), 0.01);
}

TEST(LeadingNumber, ReadsThePointOnly) {
  EXPECT_EQ(LeadingNumber("39496,654"), 39496) << "whatever the locale";
  EXPECT_EQ(LeadingNumber("1,234.5"), 1);
}

TEST(LeadingNumber, LeavesAnUnfinishedExponentOut) {
  EXPECT_EQ(LeadingNumber("7e"), 7);
  EXPECT_EQ(LeadingNumber("7e+"), 7);
  EXPECT_EQ(LeadingNumber("7e-x"), 7);
  EXPECT_EQ(LeadingNumber("7em"), 7);
}

TEST(LeadingNumber, PassesLeadingBlanksOver) {
  EXPECT_EQ(LeadingNumber("  \t42"), 42);
  EXPECT_EQ(LeadingNumber("1 2"), 1);
}

TEST(LeadingNumber, IsZeroWithoutANumber) {
  for (const char* text : {"", " ", "abc", "-", "+", ".", "-.", "e5", "inf", "nan", "--1"}) {
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  }
  EXPECT_EQ(LeadingNumber("0x10"), 0);
}

TEST(LeadingNumber, OfMagnitudesOutOfRangeIsInfinityOrZero) {
  EXPECT_EQ(LeadingNumber("1e999"), kInfinity);
  EXPECT_EQ(LeadingNumber("-1e999"), -kInfinity);
  EXPECT_EQ(LeadingNumber("1e-999"), 0);
  EXPECT_EQ(LeadingNumber("1e99999999999999999999"), kInfinity);
  EXPECT_EQ(LeadingNumber("1e-99999999999999999999"), 0);
  EXPECT_EQ(LeadingNumber(std::string(400, '9')), kInfinity);
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(LeadingNumber(std::string(400, '9') + "e-10"), kInfinity);
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1e10"), 0);
  EXPECT_EQ(LeadingNumber("0e999"), 0);
}

TEST(ReadNumber, ReadsTheWholeText) {
  double value = -1;
  EXPECT_TRUE(ReadNumber("1.5", ".", value));
  EXPECT_EQ(value, 1.5);
  EXPECT_TRUE(ReadNumber(" -12 \r\n", ".", value));
  EXPECT_EQ(value, -12);
  EXPECT_TRUE(ReadNumber("2,5", ",", value));
  EXPECT_EQ(value, 2.5);
  EXPECT_TRUE(ReadNumber("1,5E+3", ",", value));
  EXPECT_EQ(value, 1500);
  EXPECT_TRUE(ReadNumber("1٫5", "٫", value));
  EXPECT_EQ(value, 1.5);
}

TEST(ReadNumber, RefusesWhatIsNoNumberAndKeepsTheValue) {
  double value = 77;
  for (const char* text : {"", "  ", "abc", "1.5x", "x1", "1.2.3", "1 2", "-", ".", "1,5", "1e"}) {
    EXPECT_FALSE(ReadNumber(text, ".", value)) << text;
  }
  for (const char* text : {"1.5", "1,5,5", ",", "1,5.5"}) {
    EXPECT_FALSE(ReadNumber(text, ",", value)) << text;
  }
  EXPECT_EQ(value, 77);
}

TEST(RoundHalfToEven, TakesHalvesToTheEvenNumber) {
  EXPECT_EQ(RoundHalfToEven(0.5), 0);
  EXPECT_EQ(RoundHalfToEven(1.5), 2);
  EXPECT_EQ(RoundHalfToEven(2.5), 2);
  EXPECT_EQ(RoundHalfToEven(3.5), 4);
  EXPECT_EQ(RoundHalfToEven(-1.5), -2);
  EXPECT_EQ(RoundHalfToEven(-2.5), -2);
  EXPECT_EQ(RoundHalfToEven(2.4999), 2);
  EXPECT_EQ(RoundHalfToEven(2.5001), 3);
}

TEST(ToInteger, RoundsHalvesToEven) {
  EXPECT_EQ(ToInteger(1.5), 2);
  EXPECT_EQ(ToInteger(2.5), 2);
  EXPECT_EQ(ToInteger(-0.5), 0);
}

TEST(ToInteger, HoldsExactlyThe16BitNumbers) {
  EXPECT_EQ(ToInteger(32767.4), 32767);
  EXPECT_EQ(ToInteger(-32768.5), -32768);
  for (const double value : {32767.5, -32769.0, 1e300, kInfinity, -kInfinity, std::nan("")}) {
    try {
      ToInteger(value);
      ADD_FAILURE() << value << " was taken";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), kOverflow);
    }
  }
}

}  // namespace
}  // namespace tarvo
