#include <string>

#include "child_process.h"
#include "support/temporary_folder.h"

namespace tarvo::test {
namespace {

// Locales of the test's own, made from the system's sources, because the system itself may have
// none but "C".
class Locale : public ::testing::Test {
 protected:
  void Compile(const std::string& name) const {
    OutputOf("localedef -i " + name + " -f UTF-8 " + locales.Path() + "/" + name + ".UTF-8 2>&1");
  }

  // The decimal sign and the short form of 4 March 2026 that a process started with these variables
  // sees.
  std::string SeenWith(const std::string& variables) const {
    // The C library never frees its copy of LOCPATH, which a sanitizer takes for a leak of ours.
    return OutputOf("env -i ASAN_OPTIONS=detect_leaks=0 LOCPATH=" + locales.Path() + " " +
                    variables + " " LOCALE_PROBE);
  }

  const TemporaryFolder locales;
};

TEST_F(Locale, GivesGermanDatesAndADecimalComma) {
  Compile("de_DE");
  EXPECT_EQ(SeenWith("LC_ALL=de_DE.UTF-8"), ", 04.03.2026");
  EXPECT_EQ(SeenWith("LANG=de_DE.UTF-8"), ", 04.03.2026");
}

TEST_F(Locale, GivesFrenchDatesAndADecimalComma) {
  Compile("fr_FR");
  EXPECT_EQ(SeenWith("LANG=fr_FR.UTF-8"), ", 04/03/2026");
}

TEST_F(Locale, MayBeMixedFromTwo) {
  Compile("de_DE");
  EXPECT_EQ(SeenWith("LC_TIME=de_DE.UTF-8"), ". 04.03.2026");
  EXPECT_EQ(SeenWith("LC_NUMERIC=de_DE.UTF-8"), ", 03/04/26");
}

TEST_F(Locale, IsNotDisturbedByAnUnknownLanguageOfMessages) {
  Compile("de_DE");
  EXPECT_EQ(SeenWith("LANG=de_DE.UTF-8 LC_MESSAGES=xx_XX.UTF-8"), ", 04.03.2026");
}

TEST_F(Locale, IsThePlainOneWhereTheUsersIsNotInstalled) {
  EXPECT_EQ(SeenWith("LC_ALL=xx_XX.UTF-8"), ". 03/04/26");
  EXPECT_EQ(SeenWith("UNRELATED=1"), ". 03/04/26");
}

}  // namespace
}  // namespace tarvo::test
