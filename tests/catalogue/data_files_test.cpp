#include "catalogue/data_files.h"

#include "support/list_run.h"

namespace tarvo::test {
namespace {

class CountingDataFiles : public ListRun {
 protected:
  int Count(std::string_view driver, std::string_view extension = {}) {
    std::filesystem::current_path(folder / InData("Drivers"));
    return CSVCount(platform, frontEnd, driver, extension);
  }
};

TEST_F(CountingDataFiles, UsesTheCsvPatternByDefault) {
  DriverFile("Meter/a.csv");
  DriverFile("Meter/b.asc");
  DriverFile("Meter/deep/c.ASC");
  DriverFile("Meter/d.txt");
  EXPECT_EQ(Count("Meter"), 1);
  EXPECT_EQ(Count("Meter", "*.asc"), 2);
  EXPECT_EQ(Count("Meter", "*.txt"), 1);
}

TEST_F(CountingDataFiles, GivesZeroForAnEmptyDriver) {
  Driver("Empty");
  EXPECT_EQ(Count("Empty"), 0);
}

TEST_F(CountingDataFiles, FailsWithASubscriptErrorBeyond101SubfoldersAtAnyDepth) {
  for (int i = 0; i < 102; ++i) Driver("Wide/deep/" + std::to_string(i));
  try {
    Count("Wide");
    FAIL() << "no error was raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kSubscriptOutOfRange);
  }
}

TEST_F(CountingDataFiles, DoesNotCountHiddenSubfoldersAmongThe101) {
  for (int i = 0; i < 102; ++i) Driver("Meter/.hidden" + std::to_string(i));
  DriverFile("Meter/.hidden0/x.csv");
  DriverFile("Meter/.x.csv");
  EXPECT_EQ(Count("Meter"), 0);
}

TEST_F(CountingDataFiles, FailsForADriverThatIsGone) {
  Driver("Meter");
  EXPECT_THROW(Count("Missing"), RuntimeError);
}

TEST_F(CountingDataFiles, FailsWhenAskedForAPatternThatTheListDoesNotCount) {
  Driver("Meter");
  EXPECT_THROW(Count("Meter", "*.exe"), RuntimeError);
}

}  // namespace
}  // namespace tarvo::test
