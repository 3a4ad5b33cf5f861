#include "actions/field_definitions.h"

#include "base/runtime_error.h"
#include "support/program_run.h"

namespace tarvo::test {
namespace {

struct Definition {
  std::string fieldName;
  std::string csvName;
  std::string line;
};

class TheDefinitionOf : public ::testing::TestWithParam<Definition> {};

TEST_P(TheDefinitionOf, AFieldIs) {
  EXPECT_EQ(FieldDefinition(GetParam().fieldName, GetParam().csvName), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, TheDefinitionOf,
    ::testing::Values(
        Definition{"Supply Voltage (V)", "", R"x("SUPPLYVOLTAGE","Supply Voltage","TEXT","V")x"},
        // The unit is what stands behind the last "(", unless that is the first character of all.
        Definition{"(V)", "", R"x("","","TEXT","(V")x"},
        Definition{"A (B) (C)", "", R"x("A","A","TEXT","C")x"},
        Definition{"Temp (C) x", "", R"x("TEMPCX","Temp (C) x","TEXT","C) x")x"},
        Definition{"V()", "", R"x("V","V()","TEXT","")x"},
        Definition{"((x)", "", R"x("","","TEXT","x")x"},
        Definition{"open (", "", R"x("OPEN","open (","TEXT","")x"},
        Definition{"Level", "", R"x("LEVEL","Level","TEXT","")x"},
        Definition{"Level  ", "", R"x("LEVEL","Level  ","TEXT","")x"},
        Definition{"a_b-1", "", R"x("A_B1","a_b-1","TEXT","")x"},
        // A name for CSV files is taken as it stands but for the letter case.
        Definition{"Depth (m)", "depth in m", R"x("DEPTH IN M","Depth","TEXT","m")x"},
        Definition{"", "", R"x("","","TEXT","")x"}));

class FieldDefinitionsOfASample : public ProgramRun {
 protected:
  std::string Of(std::string_view sample) { return FieldDefinitions(platform, sample); }
};

TEST_F(FieldDefinitionsOfASample, PassOverTheTitleCommentsAndEmptyLines) {
  EXPECT_EQ(Of("# comment\r\n\r\nTitle\r\n#x\r\nVISIBLE|FieldName|CSVNAME|DATATYPE\r\n"
               "1|Level (m)||NUMBER\r\n#|no\r\n\r\n0|Time|t|DATE\r\n"),
            "\"LEVEL\",\"Level\",\"TEXT\",\"m\"\r\n\"T\",\"Time\",\"TEXT\",\"\"\r\n");
}

TEST_F(FieldDefinitionsOfASample, CountALineOfBlanks) {
  EXPECT_EQ(Of("Title\nFIELDNAME\n  \n"), "\"\",\"  \",\"TEXT\",\"\"\r\n");
}

TEST_F(FieldDefinitionsOfASample, TakeEveryKindOfLineEndAndALastLineWithoutOne) {
  EXPECT_EQ(Of("Title\rFIELDNAME\nA\r\nB"),
            "\"A\",\"A\",\"TEXT\",\"\"\r\n\"B\",\"B\",\"TEXT\",\"\"\r\n");
}

TEST_F(FieldDefinitionsOfASample, PassBytesOfTheCodePageThrough) {
  EXPECT_EQ(Of("T\nFIELDNAME\nTemperature (\xB0"
               "C)\n"),
            "\"TEMPERATURE\",\"Temperature\",\"TEXT\",\"\xB0"
            "C\"\r\n");
}

TEST_F(FieldDefinitionsOfASample, LeaveAMissingColumnEmpty) {
  EXPECT_EQ(Of("T\nCSVNAME|VISIBLE\nlevel|1\n"), "\"LEVEL\",\"\",\"TEXT\",\"\"\r\n");
}

TEST_F(FieldDefinitionsOfASample, AreNoneWithoutAHeaderOrLines) {
  for (const char* sample : {"", "\n\n", "#only\n", "Title\n", "Title\nFIELDNAME\n"}) {
    EXPECT_EQ(Of(sample), "") << sample;
  }
}

TEST_F(FieldDefinitionsOfASample, TakeLongFieldsAndBinaryBytes) {
  const std::string longName(50000, 'x');
  EXPECT_EQ(
      Of("T\nFIELDNAME\n" + longName + "(" + longName + ")\n"),
      "\"" + std::string(50000, 'X') + "\",\"" + longName + "\",\"TEXT\",\"" + longName + "\"\r\n");
  std::string binary;
  for (int i = 0; i < 256; ++i) binary += static_cast<char>(i);
  EXPECT_NO_THROW(Of(binary + binary));
}

TEST_F(FieldDefinitionsOfASample, TakeAFieldOutOfMoreColumnsThanNeeded) {
  EXPECT_EQ(Of("T\na|FIELDNAME|b|CSVNAME|c\n1|Level|2|lv|3|4\n1|Level\n1\n"),
            "\"LV\",\"Level\",\"TEXT\",\"\"\r\n"
            "\"LEVEL\",\"Level\",\"TEXT\",\"\"\r\n"
            "\"\",\"\",\"TEXT\",\"\"\r\n");
}

TEST_F(FieldDefinitionsOfASample, AreRefusedWhenThereAreMoreThanAnyDeviceHas) {
  std::string sample = "T\nFIELDNAME\n";
  for (int i = 0; i < 200'000; ++i) sample += "x\n";
  try {
    Of(sample);
    FAIL() << "definitions of 4 MB";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kPathFileAccessError);
  }
}

class AppendingFieldDefinitions : public ProgramRun {
 protected:
  AppendingFieldDefinitions() { Driver("Meter"); }
  std::string Append() {
    AppendFieldDefinitions(platform, folder / InDrivers("Meter"));
    return folder.ReadFile(InDrivers("Meter/driver.inf"));
  }
  static constexpr const char* kSample = "T\nFIELDNAME\nA\n";
  static constexpr const char* kLine = "\"A\",\"A\",\"TEXT\",\"\"\r\n";
};

TEST_F(AppendingFieldDefinitions, KeepsWhatTheFileHoldsInAnyLetterCaseOfItsName) {
  DriverFile("Meter/driver.inf", "[Driver]\r\n");
  DriverFile("Meter/s.HVD", kSample);
  EXPECT_EQ(Append(), std::string("[Driver]\r\n") + kLine);
  EXPECT_FALSE(std::filesystem::exists(folder / InDrivers("Meter/Driver.inf")));
}

TEST_F(AppendingFieldDefinitions, BeginsALineOfItsOwn) {
  DriverFile("Meter/driver.inf", "no end");
  DriverFile("Meter/s.hvd", kSample);
  EXPECT_EQ(Append(), std::string("no end\r\n") + kLine);
}

TEST_F(AppendingFieldDefinitions, FindsThemAgainBehindEveryKindOfLineEnd) {
  for (const char* before : {"", "a\n", "a\r\n", "a\r", "no end", "\r\r"}) {
    DriverFile("Meter/driver.inf", before);
    DriverFile("Meter/s.hvd", kSample);
    const std::string once = Append();
    EXPECT_TRUE(HasFieldDefinitions(platform, folder / InDrivers("Meter"))) << before;
    EXPECT_EQ(Append(), once);
  }
}

TEST_F(AppendingFieldDefinitions, MakesTheFileWhenItIsMissing) {
  DriverFile("Meter/s.hvd", kSample);
  AppendFieldDefinitions(platform, folder / InDrivers("Meter"));
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/Driver.inf")), kLine);
}

TEST_F(AppendingFieldDefinitions, RefusesADescriptionThatIsALink) {
  const std::string outside = folder.WriteFile("outside", "untouched");
  std::filesystem::create_symlink(outside, folder / InDrivers("Meter/Driver.inf"));
  DriverFile("Meter/s.hvd", kSample);
  EXPECT_THROW(Append(), RuntimeError);
  EXPECT_EQ(folder.ReadFile("outside"), "untouched");
}

TEST_F(AppendingFieldDefinitions, RefusesASampleOfMoreThanAMegabyte) {
  DriverFile("Meter/driver.inf", "x");
  DriverFile("Meter/s.hvd", kSample + std::string(1024 * 1024, '\n'));
  EXPECT_THROW(Append(), RuntimeError);
  EXPECT_EQ(folder.ReadFile(InDrivers("Meter/driver.inf")), "x");
}

TEST_F(AppendingFieldDefinitions, DoesNothingWithoutASample) {
  DriverFile("Meter/driver.inf", "x");
  EXPECT_EQ(Append(), "x");
}

}  // namespace
}  // namespace tarvo::test
