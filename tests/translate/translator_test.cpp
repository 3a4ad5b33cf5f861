#include "translate/translator.h"

#include <gtest/gtest.h>

#include <string>

#include "base/runtime_error.h"
#include "forms/null_front_end.h"
#include "support/hand_moved_platform.h"
#include "support/made_dictionary.h"

namespace tarvo {
namespace {

using test::HandMovedPlatform;
using test::MakeDictionary;
using test::Phrases;
using test::PoHeader;
using test::PoText;
using test::TemporaryFolder;

constexpr std::string_view kBar = "\u00A6";

std::string Joined(std::initializer_list<std::string_view> fields) {
  std::string text;
  for (const std::string_view field : fields) {
    if (field.data() != fields.begin()->data()) text += kBar;
    text += field;
  }
  return text;
}

class TranslatorTest : public testing::Test {
 protected:
  TranslatorTest() { platform_.ChangeCurrentFolder(folder_.Path()); }

  void Load(const Phrases& phrases) {
    MakeDictionary(folder_, PoText(phrases));
    translator_.LoadDictionary("TARVO.DIC");
  }

  TemporaryFolder folder_;
  HandMovedPlatform platform_;
  NullFrontEnd frontEnd_;
  Library library_{platform_};
  Translator translator_{platform_, frontEnd_, library_};
};

TEST_F(TranslatorTest, WithoutADictionaryEveryPhraseComesBackWithItsParameters) {
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_FALSE(translator_.HasDictionary());
  EXPECT_EQ(translator_.Translate("Open"), "Open");
  EXPECT_EQ(translator_.Translate("%1 Downloads", "CSV"), "CSV Downloads");
  EXPECT_EQ(translator_.Translate(""), "");
  EXPECT_EQ(translator_.ApplicationTitle(), "Tarvo");
}

TEST_F(TranslatorTest, DetectsTheLocaleWithoutADictionaryToo) {
  platform_.shortDatePattern = "yyyy-mm-dd";
  platform_.decimalSign = ",";
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_FALSE(translator_.HasDictionary());
  EXPECT_EQ(library_.DatePattern(), "Y-M-D");
  EXPECT_EQ(library_.DecimalSeparator(), ",");
}

TEST_F(TranslatorTest, DetectsTheLocaleBeforeADamagedDictionaryFails) {
  platform_.decimalSign = ",";
  folder_.WriteFile("TARVO.DIC", "damaged");
  try {
    translator_.LoadDictionary("TARVO.DIC");
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidFileFormat);
  }
  EXPECT_EQ(library_.DecimalSeparator(), ",");
  EXPECT_FALSE(translator_.HasDictionary());
  EXPECT_EQ(translator_.Translate("Open"), "Open");
}

TEST_F(TranslatorTest, FindsTheDictionaryInTheCurrentFolderInAnyLetterCase) {
  MakeDictionary(folder_, PoText({{"Open", "Öffnen"}}), "", "tarvo.dic");
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_EQ(translator_.Translate("Open"), "Öffnen");
}

TEST_F(TranslatorTest, FindsAHiddenDictionary) {
  MakeDictionary(folder_, PoText({{"Open", "Öffnen"}}), "", ".tarvo.dic");
  translator_.LoadDictionary(".TARVO.DIC");
  EXPECT_EQ(translator_.Translate("Open"), "Öffnen");
}

TEST_F(TranslatorTest, AFolderOfThatNameIsNoDictionary) {
  folder_.MakeFolder("TARVO.DIC");
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_FALSE(translator_.HasDictionary());
}

TEST_F(TranslatorTest, AnEmptyDictionaryIsOpenAndTranslatesNothing) {
  MakeDictionary(folder_, PoHeader());
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_TRUE(translator_.HasDictionary());
  EXPECT_EQ(translator_.Translate("Open"), "Open");
  EXPECT_EQ(translator_.Translate("%1!", "a"), "a!");
}

TEST_F(TranslatorTest, TellsTheLanguageOfTheDictionary) {
  EXPECT_EQ(translator_.Language(), "");
  MakeDictionary(folder_, "msgid \"\"\nmsgstr \"Language: de_AT\\n\"\n");
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_EQ(translator_.Language(), "de_AT");
  Load({{"Open", "Öffnen"}});
  EXPECT_EQ(translator_.Language(), "");
}

TEST_F(TranslatorTest, HasNoLanguageAfterADictionaryThatCannotBeRead) {
  MakeDictionary(folder_, "msgid \"\"\nmsgstr \"Language: de\\n\"\n");
  translator_.LoadDictionary("TARVO.DIC");
  ASSERT_EQ(translator_.Language(), "de");
  folder_.WriteFile("TARVO.DIC", "damaged");
  EXPECT_THROW(translator_.LoadDictionary("TARVO.DIC"), RuntimeError);
  EXPECT_EQ(translator_.Language(), "");
}

TEST_F(TranslatorTest, TheDictionaryTranslatesTheApplicationTitle) {
  Load({{"Tarvo", "Titel"}, {"Titel", "Zweiter"}});
  EXPECT_EQ(translator_.ApplicationTitle(), "Titel");
  EXPECT_EQ(translator_.AppTitle(), "");
}

TEST_F(TranslatorTest, TranslatesEveryPhraseOfTheDictionary) {
  const Phrases phrases = {{"Open", "Öffnen"},    {"Options", "Optionen"},   {"Delete", "Löschen"},
                           {"Download", "Laden"}, {"écran", "Schirm"},       {"Écran", "SCHIRM"},
                           {"&File", "&Datei"},   {"%1 files", "%1 Dateien"}};
  Load(phrases);
  for (const auto& [english, translation] : phrases) {
    if (english.find('%') != std::string::npos) continue;
    EXPECT_EQ(translator_.Translate(english), translation);
  }
  EXPECT_EQ(translator_.Translate("%1 files", "3"), "3 Dateien");
}

TEST_F(TranslatorTest, LetterCaseCountsThoughTheScanStartsAtTheOtherCase) {
  Load({{"Open", "Öffnen"}, {"apple", "Apfel"}});
  EXPECT_EQ(translator_.Translate("open"), "open");
  EXPECT_EQ(translator_.Translate("OPEN"), "OPEN");
  EXPECT_EQ(translator_.Translate("Apple"), "Apple");
}

TEST_F(TranslatorTest, CaseVariantsOfAPhraseAreTranslatedApart) {
  Load({{"open", "öffnen"}, {"Open", "Öffnen"}, {"OPEN", "ÖFFNEN"}, {"Zoom", "Größe"}});
  EXPECT_EQ(translator_.Translate("open"), "öffnen");
  EXPECT_EQ(translator_.Translate("Open"), "Öffnen");
  EXPECT_EQ(translator_.Translate("OPEN"), "ÖFFNEN");
}

TEST_F(TranslatorTest, APhraseWhoseInitialBeginsNoRecordComesBackWithItsParameters) {
  Load({{"Open", "Öffnen"}});
  EXPECT_EQ(translator_.Translate("Quit"), "Quit");
  EXPECT_EQ(translator_.Translate("Quit %1", "now"), "Quit now");
  EXPECT_EQ(translator_.Translate("Ärger"), "Ärger");
}

TEST_F(TranslatorTest, APhraseBehindTheLastRecordWithItsInitialComesBack) {
  Load({{"Alpha", "1"}, {"Omega", "2"}});
  EXPECT_EQ(translator_.Translate("Azure"), "Azure");
  EXPECT_EQ(translator_.Translate("Ozone"), "Ozone");
}

TEST_F(TranslatorTest, AnEmptyPhraseIsEmptyAndNotTheDescriptionOfTheFile) {
  Load({{"Open", "Öffnen"}});
  EXPECT_EQ(translator_.Translate(""), "");
  EXPECT_EQ(translator_.Translate("", "a"), "");
}

TEST_F(TranslatorTest, ABlankTranslationGivesThePhrase) {
  Load({{"Open", "   "}, {"Close", ""}, {"Tab", "\\t"}});
  EXPECT_EQ(translator_.Translate("Open"), "Open");
  EXPECT_EQ(translator_.Translate("Close"), "Close");
  EXPECT_EQ(translator_.Translate("Tab"), "\t");
}

TEST_F(TranslatorTest, PhrasesWithAContextOrPluralsAreNotTranslated) {
  MakeDictionary(folder_, PoHeader() +
                              "msgctxt \"menu\"\nmsgid \"Open\"\nmsgstr \"Öffnen\"\n\n"
                              "msgid \"file\"\nmsgid_plural \"files\"\n"
                              "msgstr[0] \"Datei\"\nmsgstr[1] \"Dateien\"\n");
  translator_.LoadDictionary("TARVO.DIC");
  EXPECT_EQ(translator_.Translate("Open"), "Open");
  EXPECT_EQ(translator_.Translate("file"), "file");
  EXPECT_EQ(translator_.Translate("files"), "files");
}

TEST_F(TranslatorTest, TheParametersAreFilledIntoTheTranslation) {
  Load({{"%1 of %2", "%2, davon %1"}});
  EXPECT_EQ(translator_.Translate("%1 of %2", Joined({"3", "7"})), "7, davon 3");
}

TEST_F(TranslatorTest, WhetherTheTextHoldsParametersIsAskedOfTheTranslation) {
  Load({{"All %1", "Alle %2"}, {"All", "Alle %1"}});
  EXPECT_EQ(translator_.Translate("All %1", Joined({"a", "b"})), "Alle %2");
  EXPECT_EQ(translator_.Translate("All", "a"), "Alle a");
}

TEST_F(TranslatorTest, NumberedFieldsReplaceTheirNumbers) {
  EXPECT_EQ(translator_.Translate("%1 of %2", Joined({"3", "7"})), "3 of 7");
  EXPECT_EQ(translator_.Translate("%1%1", "a"), "aa");
}

TEST_F(TranslatorTest, WithoutAFirstParameterTheTextStaysAsItIs) {
  EXPECT_EQ(translator_.Translate("Total %2", Joined({"a", "b"})), "Total %2");
  EXPECT_EQ(translator_.Translate("100 %0", "a"), "100 %0");
}

TEST_F(TranslatorTest, OneDigitIsOneParameter) {
  EXPECT_EQ(translator_.Translate("%10", "a"), "a0");
}

TEST_F(TranslatorTest, ZeroIsNothingAndANumberTooLargeIsTheLastField) {
  EXPECT_EQ(translator_.Translate("%1[%0]", "a"), "a[]");
  EXPECT_EQ(translator_.Translate("%1 %5", Joined({"a", "b"})), "a b");
  EXPECT_EQ(translator_.Translate("%1.", ""), ".");
}

TEST_F(TranslatorTest, APercentSignWithoutADigitStays) {
  EXPECT_EQ(translator_.Translate("%1%", "50"), "50%");
  EXPECT_EQ(translator_.Translate("%1 % x %%", "50"), "50 % x %%");
  EXPECT_EQ(translator_.Translate("%1 %\u00B2 %\u0662", "50"), "50 %\u00B2 %\u0662");
}

TEST_F(TranslatorTest, AnInsertedFieldIsNotExpandedAgain) {
  EXPECT_EQ(translator_.Translate("%1!", Joined({"%2", "b"})), "%2!");
  EXPECT_EQ(translator_.Translate("%12", Joined({"%", "b"})), "%2");
}

TEST(GetParameter, CountsFieldsFromOne) {
  const std::string parameters = Joined({"a", "", "c"});
  EXPECT_EQ(Translator::GetParameter(parameters, 0), "");
  EXPECT_EQ(Translator::GetParameter(parameters, 1), "a");
  EXPECT_EQ(Translator::GetParameter(parameters, 2), "");
  EXPECT_EQ(Translator::GetParameter(parameters, 3), "c");
  EXPECT_EQ(Translator::GetParameter(parameters, 4), "c");
  EXPECT_EQ(Translator::GetParameter(parameters, -1), "");
  EXPECT_EQ(Translator::GetParameter("", 1), "");
}

TEST(GetParameter, OnlyTheWholeBrokenBarSeparates) {
  EXPECT_EQ(Translator::GetParameter("a|b\u00C2\u00A5c", 1), "a|b\u00C2\u00A5c");
  EXPECT_EQ(Translator::GetParameter("a\xA6z", 1), "a\xA6z");
}

}  // namespace
}  // namespace tarvo
