#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/driver_description.h"

namespace tarvo::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Description, HasWhatTheSectionsSay) {
  const DriverDescription description = ReadDescription(
      "[Driver]\r\nName=Meter\r\nModel=VT-40\r\nVersion=1.0\r\n\r\n"
      "[Device]\r\nSerial=004417\r\nFiles=CSV,ASC,TXT,HVD\r\n\r\n"
      "[Fields]\r\n\"TEMPERATURE\",\"Temperature\",\"TEXT\",\"C\"\r\n");
  EXPECT_EQ(description.model, "VT-40");
  EXPECT_EQ(description.version, "1.0");
  EXPECT_EQ(description.serial, "004417");
  EXPECT_THAT(description.files,
              ElementsAre(FileKind::kCsv, FileKind::kAsc, FileKind::kTxt, FileKind::kHvd));
  EXPECT_THAT(description.fields, ElementsAre(Field{"TEMPERATURE", "Temperature", "C"}));
}

TEST(Description, IsReadInAnyLetterCaseWithAnyLineEndsAndBlanks) {
  const DriverDescription description = ReadDescription(
      "[DRIVER]\n version = 2.1 \n[device]\nFILES = txt , "
      "Hvd\n[fields]\n\"A\",\"b\",\"TEXT\",\"\"");
  EXPECT_EQ(description.version, "2.1");
  EXPECT_THAT(description.files, ElementsAre(FileKind::kTxt, FileKind::kHvd));
  EXPECT_THAT(description.fields, ElementsAre(Field{"A", "b", ""}));
}

TEST(Description, OfNothingWritesCsvFiles) {
  EXPECT_THAT(ReadDescription("").files, ElementsAre(FileKind::kCsv));
  EXPECT_THAT(ReadDescription("[Device]\nFiles=DOC\n").files, ElementsAre(FileKind::kCsv));
}

TEST(Description, TakesEntriesOnlyFromTheirOwnSection) {
  const DriverDescription description =
      ReadDescription("Version=9\n[Device]\nVersion=8\n[Driver]\nFiles=ASC\n");
  EXPECT_EQ(description.version, "");
  EXPECT_THAT(description.files, ElementsAre(FileKind::kCsv));
}

TEST(Description, PassesOverFieldLinesThatAreNone) {
  EXPECT_THAT(ReadDescription("[Fields]\n\"\n\"A\"\nA,B,C,D\n\"A\",\"B\",\"C\"\n\n").fields,
              IsEmpty());
}

TEST(Description, KeepsBytesThatAreNoUtf8) {
  EXPECT_THAT(ReadDescription("[Fields]\n\"T\",\"T\",\"TEXT\",\"\xB0"
                              "C\"\n")
                  .fields,
              ElementsAre(Field{"T", "T",
                                "\xB0"
                                "C"}));
}

}  // namespace
}  // namespace tarvo::tools
