#include "translate/dictionary_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "platform/forwarding_platform.h"
#include "support/made_dictionary.h"

namespace tarvo {
namespace {

using test::MakeDictionary;
using test::Phrases;
using test::PoText;
using test::TemporaryFolder;
using Texts = std::vector<std::string>;

// Counts how often a file is opened.
class CountingPlatform : public ForwardingPlatform {
 public:
  CountingPlatform() : ForwardingPlatform(SystemPlatform()) {}
  std::unique_ptr<File> OpenFile(std::string_view path, OpenFor use) override {
    ++opened;
    return ForwardingPlatform::OpenFile(path, use);
  }
  int opened = 0;
};

class DictionaryTableTest : public testing::Test {
 protected:
  void Open(const Phrases& phrases) {
    MakeDictionary(folder_, PoText(phrases));
    table_.SetFileName(SystemPlatform(), folder_ / "TARVO.DIC");
  }

  // A field of all records from the current one to the end.
  Texts Rest(std::string_view field) {
    Texts texts;
    for (; !table_.AtEnd(); table_.MoveNext()) {
      texts.emplace_back(table_.CurrentRecord().Item(field).Value());
    }
    return texts;
  }

  template <typename Action>
  static int ErrorOf(Action action) {
    try {
      action();
      return 0;
    } catch (const RuntimeError& error) {
      return error.Number();
    }
  }

  TemporaryFolder folder_;
  DictionaryTable table_;
};

TEST_F(DictionaryTableTest, HasNoFileNameAndNoRecordsUntilAFileIsOpened) {
  EXPECT_EQ(table_.FileName(), "");
  EXPECT_EQ(table_.RecordCount(), 0);
  EXPECT_TRUE(table_.AtEnd());
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "");
}

TEST_F(DictionaryTableTest, TellsTheNameOfTheOpenFile) {
  Open({{"a", "b"}});
  EXPECT_EQ(table_.FileName(), folder_ / "TARVO.DIC");
  table_.SetFileName(SystemPlatform(), "");
  EXPECT_EQ(table_.FileName(), "");
  EXPECT_EQ(table_.RecordCount(), 0);
}

TEST_F(DictionaryTableTest, FindsTheFileInAnyLetterCase) {
  MakeDictionary(folder_, PoText({{"a", "b"}}), "", "Tarvo.dic");
  table_.SetFileName(SystemPlatform(), folder_ / "TARVO.DIC");
  EXPECT_EQ(table_.RecordCount(), 1);
}

TEST_F(DictionaryTableTest, AMissingOrDamagedFileLeavesTheTableAsItWas) {
  Open({{"a", "b"}});
  folder_.WriteFile("bad.dic", "no dictionary");
  EXPECT_EQ(ErrorOf([&] { table_.SetFileName(SystemPlatform(), folder_ / "none.dic"); }),
            kFileNotFound);
  EXPECT_EQ(ErrorOf([&] { table_.SetFileName(SystemPlatform(), folder_ / "bad.dic"); }),
            kInvalidFileFormat);
  EXPECT_EQ(table_.FileName(), folder_ / "TARVO.DIC");
  EXPECT_EQ(table_.RecordCount(), 1);
}

TEST_F(DictionaryTableTest, GivesTheFieldsByNameAndByPosition) {
  Open({{"Open", "Öffnen"}});
  const DictionaryTable::Record record = table_.CurrentRecord();
  EXPECT_EQ(record.Item("ENGLISH").Value(), "Open");
  EXPECT_EQ(record.Item("translation").Value(), "Öffnen");
  EXPECT_EQ(record.Item(1).Value(), "Open");
  EXPECT_EQ(record.Item(2).Value(), "Öffnen");
}

TEST_F(DictionaryTableTest, AnUnknownFieldIsAnError) {
  Open({{"a", "b"}});
  EXPECT_EQ(ErrorOf([&] { table_.CurrentRecord().Item("GERMAN"); }), kSubscriptOutOfRange);
  EXPECT_EQ(ErrorOf([&] { table_.CurrentRecord().Item(0); }), kSubscriptOutOfRange);
  EXPECT_EQ(ErrorOf([&] { table_.CurrentRecord().Item(3); }), kSubscriptOutOfRange);
  EXPECT_EQ(ErrorOf([&] { table_.SetOrderField("GERMAN"); }), kSubscriptOutOfRange);
}

TEST_F(DictionaryTableTest, OrdersWithoutRegardToLetterCaseAndTiesByCodePoint) {
  Open({{"open", "1"},
        {"Zebra", "2"},
        {"Open", "3"},
        {"apple", "4"},
        {"OPEN", "5"},
        {"Openly", "6"},
        {"Bar", "7"}});
  table_.SetOrderField(kEnglishField);
  EXPECT_EQ(Rest(kEnglishField),
            (Texts{"apple", "Bar", "OPEN", "Open", "open", "Openly", "Zebra"}));
}

TEST_F(DictionaryTableTest, ComparesBeyondAnyPrefixThatPhrasesShare) {
  Open({{"Properties of b", "1"},
        {"properties Of a", "2"},
        {"Properties", "3"},
        {"PROPERTIES OF C", "4"}});
  table_.SetOrderField(kEnglishField);
  EXPECT_EQ(Rest(kEnglishField),
            (Texts{"Properties", "properties Of a", "Properties of b", "PROPERTIES OF C"}));
}

TEST_F(DictionaryTableTest, OrdersLettersBeyondAsciiByTheirLowerCase) {
  Open({{"é", "1"}, {"É", "2"}, {"è", "3"}, {"z", "4"}, {"я", "5"}, {"Я", "6"}, {"€", "7"}});
  table_.SetOrderField(kEnglishField);
  EXPECT_EQ(Rest(kEnglishField), (Texts{"z", "è", "É", "é", "Я", "я", "€"}));
}

TEST_F(DictionaryTableTest, OrdersByTheTranslationToo) {
  Open({{"a", "zwei"}, {"b", "Eins"}, {"c", "eins"}});
  table_.SetOrderField(kTranslationField);
  EXPECT_EQ(Rest(kTranslationField), (Texts{"Eins", "eins", "zwei"}));
}

TEST_F(DictionaryTableTest, OrderingStandsOnTheFirstRecord) {
  Open({{"a", "1"}, {"b", "2"}});
  table_.MoveNext();
  table_.SetOrderField(kEnglishField);
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "a");
}

TEST_F(DictionaryTableTest, MovesToAPositionCountedFromOne) {
  Open({{"a", "1"}, {"b", "2"}, {"c", "3"}});
  table_.SetOrderField(kEnglishField);
  EXPECT_EQ(table_.RecordCount(), 3);
  table_.MoveTo(3);
  EXPECT_EQ(Rest(kEnglishField), Texts{"c"});
  table_.MoveTo(1);
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "a");
}

TEST_F(DictionaryTableTest, APositionOutOfRangeIsAnErrorAndMovesNothing) {
  Open({{"a", "1"}, {"b", "2"}});
  table_.SetOrderField(kEnglishField);
  table_.MoveTo(2);
  for (const int position : {0, -1, 3}) {
    EXPECT_EQ(ErrorOf([&] { table_.MoveTo(position); }), kSubscriptOutOfRange) << position;
  }
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "b");
}

TEST_F(DictionaryTableTest, BehindTheLastRecordTheFieldsAreEmpty) {
  Open({{"a", "1"}});
  table_.MoveNext();
  EXPECT_TRUE(table_.AtEnd());
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "");
  EXPECT_EQ(table_.CurrentRecord().Item(2).Value(), "");
  table_.MoveNext();
  EXPECT_TRUE(table_.AtEnd());
  table_.MoveTo(1);
  EXPECT_FALSE(table_.AtEnd());
}

TEST_F(DictionaryTableTest, ScansForwardForAPhraseAsALoopWould) {
  Phrases phrases;
  for (int i = 0; i < 60; ++i) phrases.push_back({"Phrase " + std::to_string(i), "x"});
  Open(phrases);
  table_.SetOrderField(kEnglishField);
  for (int from = 1; from <= table_.RecordCount(); from += 7) {
    for (const auto& [english, translation] : phrases) {
      table_.MoveTo(from);
      const Texts rest = Rest(kEnglishField);
      const bool isAhead = std::find(rest.begin(), rest.end(), english) != rest.end();
      table_.MoveTo(from);
      ASSERT_EQ(table_.ScanFor(english), isAhead) << english << " from " << from;
      if (!isAhead) continue;
      ASSERT_EQ(table_.CurrentRecord().Item(1).Value(), english);
    }
  }
}

TEST_F(DictionaryTableTest, AScanThatFindsNothingMovesNothing) {
  Open({{"a", "1"}, {"b", "2"}});
  table_.SetOrderField(kEnglishField);
  table_.MoveTo(2);
  EXPECT_FALSE(table_.ScanFor("a"));
  EXPECT_FALSE(table_.ScanFor("B"));
  EXPECT_FALSE(table_.ScanFor(""));
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "b");
  EXPECT_TRUE(table_.ScanFor("b"));
  EXPECT_FALSE(DictionaryTable().ScanFor("a"));
}

TEST_F(DictionaryTableTest, TwoCursorsReadTheFileOnceAndMoveApart) {
  MakeDictionary(folder_, PoText({{"a", "y"}, {"b", "x"}}));
  CountingPlatform platform;
  table_.SetFileName(platform, folder_ / "TARVO.DIC");
  DictionaryTable second;
  second.SetFileName(table_);
  EXPECT_EQ(platform.opened, 1);

  table_.SetOrderField(kEnglishField);
  second.SetOrderField(kTranslationField);
  table_.MoveNext();
  EXPECT_EQ(table_.CurrentRecord().Item(1).Value(), "b");
  EXPECT_EQ(second.CurrentRecord().Item(2).Value(), "x");
  EXPECT_EQ(second.FileName(), table_.FileName());

  // The records live as long as any cursor stands on them.
  table_.SetFileName(platform, "");
  EXPECT_EQ(second.CurrentRecord().Item(1).Value(), "b");
}

}  // namespace
}  // namespace tarvo
