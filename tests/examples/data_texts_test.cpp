#include "tools/data_texts.h"

#include <gtest/gtest.h>

namespace tarvo::tools {
namespace {

DeviceLog TwoReadings() {
  DeviceLog log;
  log.driver = "Meter";
  log.description.model = "VT-40";
  log.description.serial = "004417";
  log.description.fields = {{"TEMPERATURE", "Temperature", "C"}, {"REMARK", "Remark", ""}};
  log.readings = {{"2023-03-14", "23:30", {"11.5", "fog, \"thick\""}},
                  {"2023-03-15", "00:00", {"11.4", ""}}};
  return log;
}

TEST(DataText, OfACsvFileHasAHeadingAndALineForEachReading) {
  EXPECT_EQ(DataText(FileKind::kCsv, TwoReadings()),
            "Date,Time,Temperature (C),Remark\r\n"
            "2023-03-14,23:30,11.5,\"fog, \"\"thick\"\"\"\r\n"
            "2023-03-15,00:00,11.4,\r\n");
}

TEST(DataText, OfAnAscFileIsWhatTheDevicePrints) {
  DeviceLog log = TwoReadings();
  log.description.fields.pop_back();
  for (Reading& reading : log.readings) reading.values.pop_back();
  EXPECT_EQ(DataText(FileKind::kAsc, log),
            "METER VT-40  SERIAL 004417\r\n"
            "LOG OF 2023-03-15\r\n"
            "\r\n"
            "  DATE        TIME      TEMPERATURE/C\r\n"
            "  2023-03-14  23:30              11.5\r\n"
            "  2023-03-15  00:00              11.4\r\n");
}

TEST(DataText, OfATxtFileNamesThePlaceWhenThereIsOne) {
  DeviceLog log = TwoReadings();
  EXPECT_TRUE(DataText(FileKind::kTxt, log).starts_with("Meter VT-40\r\n"));
  log.site = "Harbour East";
  EXPECT_TRUE(DataText(FileKind::kTxt, log)
                  .starts_with("Meter VT-40, Harbour East\r\n"
                               "Readings; Temperature (C); Remark\r\n\r\n  2023-03-14  23:30"));
}

TEST(DataText, OfAnHvdFileHasALineForEachFieldWithItsLastValue) {
  EXPECT_EQ(DataText(FileKind::kHvd, TwoReadings()),
            "# Last values of the device.\r\n"
            "Meter VT-40\r\n"
            "FIELDNAME|VISIBLE|CSVNAME|DATATYPE|VALUE\r\n"
            "Temperature (C)|1|TEMPERATURE|TEXT|11.4\r\n"
            "Remark|1|REMARK|TEXT|\r\n");
}

}  // namespace
}  // namespace tarvo::tools
