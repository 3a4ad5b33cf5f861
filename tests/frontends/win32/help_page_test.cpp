#include "frontends/win32/help_page.h"

#include <gmock/gmock.h>

#include "support/made_help.h"

namespace tarvo::win32 {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class HelpPageTest : public ::testing::Test {
 protected:
  std::string Page(HelpCommand command, const std::string& key, const std::string& language) {
    return HelpPage(file, ParseHelpFile(file, "TARVO.HLP"), {"TARVO.HLP", command, key, language});
  }

  std::string file = test::HelpDocument(
      test::HelpSectionText("en", test::HelpTopicText("en", "first", "First", "start; begin") +
                                      test::HelpTopicText("en", "second", "Second", "Download")) +
      test::HelpSectionText("de", test::HelpTopicText("de", "first", "Erstes", "Anfang")));
};

TEST_F(HelpPageTest, OpensAtTheContentsInTheUsersLanguage) {
  EXPECT_THAT(Page(HelpCommand::kContents, "", "de_AT"), HasSubstr("url=#de\""));
  EXPECT_THAT(Page(HelpCommand::kContents, "", "it"), HasSubstr("url=#en\""));
}

TEST_F(HelpPageTest, OpensAtTheTopicThatHasTheKeyword) {
  EXPECT_THAT(Page(HelpCommand::kPartialKey, "down", "en"), HasSubstr("url=#en-second\""));
  EXPECT_THAT(Page(HelpCommand::kPartialKey, "ERST", "de"), HasSubstr("url=#de-first\""));
}

TEST_F(HelpPageTest, AnUnknownKeywordOpensTheSection) {
  EXPECT_THAT(Page(HelpCommand::kPartialKey, "nowhere", "de"), HasSubstr("url=#de\""));
}

TEST_F(HelpPageTest, ASearchOpensAtTheIndexOfTheSection) {
  file.insert(file.rfind("</section>"), "<nav><h2>Index</h2></nav>\n");
  const std::string page = Page(HelpCommand::kPartialKey, "", "de");
  EXPECT_THAT(page, HasSubstr("url=#index\""));
  EXPECT_THAT(page, HasSubstr("<a id=\"index\"></a>\n<nav><h2>Index"));
}

TEST_F(HelpPageTest, TheFileIsShownAsItStandsOtherwise) {
  std::string page = Page(HelpCommand::kContents, "", "en");
  const std::size_t begin = page.find("<meta http-equiv");
  ASSERT_NE(begin, std::string::npos);
  page.erase(begin, page.find('\n', begin) + 1 - begin);
  EXPECT_EQ(page, file);
}

}  // namespace
}  // namespace tarvo::win32
