#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/globals/globals.h"
#include "app/globals/version.h"
#include "base/text.h"
#include "forms/null_front_end.h"
#include "platform/platform.h"
#include "ui/frm_about.h"
#include "ui/frm_drivers.h"
#include "ui/frm_splash.h"

namespace tarvo {
namespace {

using Texts = std::vector<std::string>;

// A run of the program in a language: its windows as the dictionary of the build translates them.
// "" is a run without a dictionary.
struct ProgramRun {
  explicit ProgramRun(const std::string& language) {
    globals.translator.LoadDictionary(DICTIONARIES "/" + language + "/TARVO.DIC");
    globals.translator.TranslateWindow(main);
    frontEnd.Load(about);
    frontEnd.Load(splash);
  }

  Texts AllTexts() {
    Texts texts;
    for (Form* form :
         {static_cast<Form*>(&main), static_cast<Form*>(&about), static_cast<Form*>(&splash)}) {
      texts.push_back(form->Caption);
      for (Control* control : form->Controls()) {
        for (const std::string* text : control->TranslatableTexts()) texts.push_back(*text);
      }
    }
    return texts;
  }

  NullFrontEnd frontEnd;
  Globals globals{SystemPlatform(), frontEnd, ""};
  frmSplash splash{globals};
  frmDrivers main{globals, splash};
  frmAbout about{globals};
};

// The letter behind "&" in lower case; "" when there is none.
std::string AccessKey(std::string_view caption) {
  const std::size_t mark = caption.find('&');
  if (mark == std::string_view::npos) return "";
  return LowerCase(FirstCharacter(caption.substr(mark + 1)));
}

// The access keys that several captions share.
Texts SharedKeys(const std::vector<std::string>& captions) {
  std::map<std::string, int> uses;
  for (const std::string& caption : captions) ++uses[AccessKey(caption)];
  Texts shared;
  for (const auto& [key, count] : uses) {
    if (!key.empty() && count > 1) shared.push_back(key);
  }
  return shared;
}

template <typename Items>
Texts Captions(const Items& items) {
  Texts captions;
  for (const MenuItem* item : items) captions.push_back(item->Caption);
  return captions;
}

// Texts that are the same in English and in a language.
const std::map<std::string, std::set<std::string>> kSameText = {
    {"de", {"Tarvo", "OK", "&Details", VersionText()}},
    {"es", {"Tarvo"}},
    {"fr", {"Tarvo", "OK", "&Options...", VersionText()}},
};

class WindowPhrases : public testing::TestWithParam<const char*> {};

TEST_P(WindowPhrases, TheDictionaryOfTheBuildIsThere) {
  ProgramRun run(GetParam());
  EXPECT_TRUE(run.globals.translator.HasDictionary());
}

TEST_P(WindowPhrases, TheDictionaryTellsItsLanguage) {
  ProgramRun run(GetParam());
  EXPECT_EQ(run.globals.translator.Language(), GetParam());
}

TEST_P(WindowPhrases, AccessKeysAreUniqueInEveryMenu) {
  ProgramRun run(GetParam());
  EXPECT_EQ(SharedKeys(Captions(run.main.MenuBar)), Texts{});
  for (const MenuItem* menu : run.main.MenuBar) {
    EXPECT_EQ(SharedKeys(Captions(menu->Items)), Texts{}) << menu->Name;
  }
}

TEST_P(WindowPhrases, NoTextOfAWindowStaysEnglish) {
  const std::string language = GetParam();
  const Texts english = ProgramRun("").AllTexts();
  const Texts translated = ProgramRun(language).AllTexts();
  ASSERT_EQ(english.size(), translated.size());
  ASSERT_GT(english.size(), 40U);
  for (std::size_t i = 0; i < english.size(); ++i) {
    if (english[i].empty() || kSameText.at(language).contains(english[i])) continue;
    EXPECT_NE(translated[i], english[i]);
  }
}

TEST_P(WindowPhrases, TheVersionIsTranslatedAsAWhole) {
  ProgramRun run(GetParam());
  const std::string word = std::string(GetParam()) == "es" ? "Versión " : "Version ";
  EXPECT_EQ(run.about.lblVersion.Caption, word + kVersion);
  EXPECT_EQ(run.splash.lblVersion.Caption, word + kVersion);
}

TEST_P(WindowPhrases, TheTitleStaysTheSame) {
  ProgramRun run(GetParam());
  EXPECT_EQ(run.globals.translator.AppTitle(), "Tarvo");
  EXPECT_EQ(run.globals.translator.ApplicationTitle(), "Tarvo");
}

INSTANTIATE_TEST_SUITE_P(Languages, WindowPhrases, testing::Values("de", "es", "fr"),
                         [](const auto& language) { return std::string(language.param); });

TEST(AccessKeys, AreFoundWhereTheyAreShared) {
  EXPECT_EQ(SharedKeys({"&File", "Of&fice", "None", "Plain"}), Texts{"f"});
  EXPECT_EQ(SharedKeys({"&Äpfel", "&ä"}), Texts{"ä"});
}

}  // namespace
}  // namespace tarvo
