#include "forms/help_file.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <random>
#include <string>

#include "base/runtime_error.h"
#include "error_of.h"
#include "platform/forwarding_platform.h"
#include "support/made_help.h"
#include "support/temporary_folder.h"

namespace tarvo {
namespace {

using test::ErrorOf;
using test::HelpDocument;
using test::HelpSectionText;
using test::HelpTopicText;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::HasSubstr;

// Why the bytes are refused; "" when they are not.
std::string Refusal(std::string_view bytes) {
  try {
    ParseHelpFile(bytes, "TARVO.HLP");
    return "";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), kInvalidFileFormat);
    return error.Description();
  }
}

constexpr const char* kDamaged =
    "The help file \"TARVO.HLP\" cannot be used: it is cut short or damaged.";

std::string WithTopic(const std::string& topic) {
  return HelpDocument(HelpSectionText("en", topic));
}

std::string WithBody(const std::string& body) {
  return WithTopic(HelpTopicText("en", "one", "One", "", 1, body));
}

TEST(HelpFile, GivesTheSectionsWithTheirTopicsInOrder) {
  const HelpFile file = ParseHelpFile(
      HelpDocument(HelpSectionText("de", HelpTopicText("de", "one", "Eins", "Wort")) +
                   HelpSectionText("en", HelpTopicText("en", "one", "One", "word; two  words ;") +
                                             HelpTopicText("en", "two", "Two", "", 2, "<p>b</p>"))),
      "");
  ASSERT_EQ(file.sections.size(), 2U);
  const HelpSection& english = file.sections[1];
  EXPECT_EQ(file.sections[0].language, "de");
  EXPECT_EQ(english.language, "en");
  EXPECT_EQ(english.title, "Help (en)");
  ASSERT_EQ(english.topics.size(), 2U);
  EXPECT_EQ(english.topics[0].title, "One");
  EXPECT_EQ(english.topics[0].level, 1);
  EXPECT_THAT(english.topics[0].keywords, ElementsAre("word", "two  words"));
  EXPECT_EQ(english.topics[1].id, "two");
  EXPECT_EQ(english.topics[1].level, 2);
  EXPECT_TRUE(english.topics[1].keywords.empty());
  EXPECT_EQ(english.topics[1].body, "<p>b</p>");
  EXPECT_EQ(english.LinkName(english.topics[1]), "en-two");
  EXPECT_EQ(english.Find("two"), &english.topics[1]);
  EXPECT_EQ(english.Find("three"), nullptr);
}

TEST(HelpFile, GivesEveryLabelAsItWasWritten) {
  const HelpFile file = ParseHelpFile(WithBody("<p>b</p>"), "");
  const HelpLabels& labels = file.sections[0].labels;
  EXPECT_EQ(labels.contents, "&contents <en>");
  EXPECT_EQ(labels.search, "&search <en>");
  EXPECT_EQ(labels.keyword, "&keyword <en>");
  EXPECT_EQ(labels.index, "&index <en>");
  EXPECT_EQ(labels.nothing, "&nothing <en>");
  EXPECT_EQ(labels.show, "&show <en>");
  EXPECT_EQ(labels.back, "&back <en>");
  EXPECT_EQ(labels.forward, "&forward <en>");
  EXPECT_EQ(labels.larger, "&larger <en>");
  EXPECT_EQ(labels.smaller, "&smaller <en>");
}

TEST(HelpFile, AttributesArePlainText) {
  const HelpFile file = ParseHelpFile(
      WithTopic(HelpTopicText("en", "one", "&lt;A&gt; &amp;amp; &quot;B&quot;", "a &amp; b")), "");
  EXPECT_EQ(file.sections[0].topics[0].title, "<A> &amp; \"B\"");
  EXPECT_THAT(file.sections[0].topics[0].keywords, ElementsAre("a & b"));
}

TEST(HelpFile, TheSectionOfALanguageIsFoundWithAndWithoutItsRegion) {
  HelpFile file;
  for (const char* language : {"en", "de", "pt", "pt-BR"}) {
    file.sections.push_back({});
    file.sections.back().language = language;
  }
  const auto in = [&](std::string_view language) { return file.In(language).language; };
  EXPECT_EQ(in("de"), "de");
  EXPECT_EQ(in("DE"), "de");
  EXPECT_EQ(in("de_AT"), "de");
  EXPECT_EQ(in("de-AT"), "de");
  EXPECT_EQ(in("de_DE.UTF-8@euro"), "de");
  EXPECT_EQ(in("pt_BR"), "pt-BR");
  EXPECT_EQ(in("pt_PT"), "pt");
  EXPECT_EQ(in("d"), "en");
  EXPECT_EQ(in("deu"), "en");
  EXPECT_EQ(in("it_IT"), "en");
  EXPECT_EQ(in("_"), "en");
  EXPECT_EQ(in(""), "en");
}

TEST(HelpFile, ATopicMayHaveEveryElementThatTheHelpUses) {
  const std::string body =
      "<h2>T</h2><h3>t</h3><p>a<br>b &lt; c > d</p><ul><li><b>1</b></li></ul><ol><li><i>2</i></li>"
      "</ol><table><tr><th>h</th><td>d</td></tr></table><pre>x</pre><p><code>c</code><kbd>k</kbd> "
      "<a href=\"#en-one\">l</a><!-- no <tag> --></p>";
  const HelpFile file = ParseHelpFile(WithBody(body), "");
  EXPECT_EQ(file.sections[0].topics[0].body, body);
}

TEST(HelpFile, ATopicMayHaveNothingThatLoadsOrRunsAnything) {
  EXPECT_EQ(Refusal(WithBody("<p>good</p>")), "");
  for (const char* body :
       {"<img src=\"file:///etc/passwd\">", "<script>x</script>", "<style>p{}</style>",
        "<iframe></iframe>", "<p style=\"background: url(x)\">b</p>", "<p onclick=\"x\">b</p>",
        "<a name=\"x\">b</a>", "<section></section>", "<html></html>", "<meta name=\"a\">",
        "<P>b</P>", "<unknown></unknown>"}) {
    EXPECT_EQ(Refusal(WithBody(body)), kDamaged) << body;
  }
}

TEST(HelpFile, ElementsMustBeClosedInTheirTurn) {
  for (const char* body :
       {"<p>", "</p>", "<p><b></p></b>", "<p></p></p>", "<", "<p", "<p class", "<p class=\"",
        "<a href=x>b</a>", "<a href=\"x\"href=\"y\">b</a>", "</p >", "<!--", "< p>b</p>", "<p/>"}) {
    EXPECT_EQ(Refusal(WithBody(body)), kDamaged) << body;
  }
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<ul><li>";
  for (int i = 0; i < 100000; ++i) deep += "</li></ul>";
  EXPECT_EQ(Refusal(WithBody(deep)), kDamaged);
}

TEST(HelpFile, TopicsMustSayWhatTheyAre) {
  const auto refusal = [](const std::string& attributes) {
    return Refusal(WithTopic("<article " + attributes + "><p>b</p></article>"));
  };
  EXPECT_EQ(refusal("id=\"en-a\" data-title=\"A\" data-level=\"1\""), "");
  EXPECT_EQ(refusal("data-title=\"A\" data-level=\"1\""), kDamaged);
  EXPECT_EQ(refusal("id=\"a\" data-title=\"A\" data-level=\"1\""), kDamaged);
  EXPECT_EQ(refusal("id=\"de-a\" data-title=\"A\" data-level=\"1\""), kDamaged);
  EXPECT_EQ(refusal("id=\"en-\" data-title=\"A\" data-level=\"1\""), kDamaged);
  EXPECT_EQ(refusal("id=\"en-a\" data-level=\"1\""), kDamaged);
  EXPECT_EQ(refusal("id=\"en-a\" data-title=\"A\""), kDamaged);
  EXPECT_EQ(refusal("id=\"en-a\" data-title=\"A\" data-level=\"3\""), kDamaged);
  EXPECT_EQ(refusal("id=\"en-a\" data-title=\"A\" data-level=\"2\""), kDamaged);  // the first
}

TEST(HelpFile, TopicsAndSectionsAreThereOnce) {
  const std::string topic = HelpTopicText("en", "one", "One", "word");
  EXPECT_EQ(Refusal(WithTopic(topic + topic)), kDamaged);
  const std::string section = HelpSectionText("en", topic);
  EXPECT_EQ(Refusal(HelpDocument(section + section)), kDamaged);
}

TEST(HelpFile, SectionsMustHaveTopicsLabelsAndStandBesideEachOther) {
  const std::string topic = HelpTopicText("en", "one", "One", "word");
  EXPECT_EQ(Refusal(WithTopic("")), kDamaged);
  EXPECT_EQ(Refusal(HelpDocument(topic)), kDamaged);
  EXPECT_EQ(Refusal(HelpDocument(HelpSectionText("en", topic + HelpSectionText("de", "")))),
            kDamaged);
  const std::string section = HelpSectionText("en", topic);
  for (const char* attribute : {"lang=", "data-title=", "data-contents=", "data-search=",
                                "data-keyword=", "data-index=", "data-nothing=", "data-show=",
                                "data-back=", "data-forward=", "data-larger=", "data-smaller="}) {
    std::string changed = section;
    changed.replace(changed.find(attribute), 1, "x");
    EXPECT_EQ(Refusal(HelpDocument(changed)), kDamaged) << attribute;
  }
}

TEST(HelpFile, EnglishMustBeThere) {
  EXPECT_EQ(Refusal(HelpDocument(HelpSectionText("de", HelpTopicText("de", "a", "A", "")))),
            kDamaged);
  EXPECT_EQ(Refusal(HelpDocument("")), kDamaged);
}

TEST(HelpFile, OtherFilesAreNoHelp) {
  for (const std::string& bytes :
       {std::string(), std::string("<!DOCTYPE html><html><body><p>Page</p></body></html>"),
        std::string("\x3F\x5F\x03\x00 classic help", 17), std::string(1 << 20, '\xFF'),
        std::string(1 << 20, '<'), std::string("PK\x03\x04")}) {
    EXPECT_THAT(Refusal(bytes), HasSubstr("it is no help file of Tarvo")) << bytes.substr(0, 30);
  }
}

TEST(HelpFile, AnotherVersionOfTheFormIsToldApart) {
  std::string bytes = WithBody("<p>b</p>");
  bytes.replace(bytes.find("Help 1\""), 7, "Help 12\"");
  EXPECT_THAT(Refusal(bytes), HasSubstr("it is a help file of another version of Tarvo"));
}

TEST(HelpFile, TextMustBeUtf8) {
  EXPECT_THAT(Refusal(WithBody("<p>\xE9</p>")), HasSubstr("it is not in UTF-8"));
  EXPECT_THAT(Refusal(WithBody(std::string("<p>\0</p>", 8))), HasSubstr("it is not in UTF-8"));
}

TEST(HelpFile, NothingMayFollowTheDocumentAndNothingMayPrecedeItButItsType) {
  const std::string bytes = WithBody("<p>b</p>");
  EXPECT_EQ(Refusal(bytes + " \r\n"), "");
  EXPECT_EQ(Refusal(bytes + "x"), kDamaged);
  EXPECT_EQ(Refusal(bytes + bytes), kDamaged);
  EXPECT_EQ(Refusal("x" + bytes), kDamaged);
}

TEST(HelpFile, AFileThatIsTooLargeIsRefused) {
  const std::string fitting = WithBody("<p>" + std::string(kLargestHelpFile - 4096, 'x') + "</p>");
  EXPECT_EQ(Refusal(fitting), "");
  EXPECT_THAT(Refusal(fitting + std::string(4096, ' ')), HasSubstr("it is too large"));
}

TEST(HelpFile, IsReadFromAFileInAnyLetterCaseOfItsName) {
  const TemporaryFolder folder;
  folder.WriteFile("Tarvo.hlp", WithBody("<p>b</p>"));
  EXPECT_EQ(ReadHelpFile(SystemPlatform(), folder / "TARVO.HLP").sections.size(), 1U);
}

TEST(HelpFile, AMissingFileAndAFolderAreErrorsOfTheirOwn) {
  const TemporaryFolder folder;
  EXPECT_EQ(ErrorOf([&] { ReadHelpFile(SystemPlatform(), folder / "TARVO.HLP"); }), kFileNotFound);
  folder.MakeFolder("TARVO.HLP");
  EXPECT_EQ(ErrorOf([&] { ReadHelpFile(SystemPlatform(), folder / "TARVO.HLP"); }),
            kPathFileAccessError);
}

class HugeFile : public File {
 public:
  std::uint64_t Size() override { return std::uint64_t{1} << 40; }
  std::size_t ReadInto(std::uint64_t, std::span<char>) override {
    ADD_FAILURE() << "it is read";
    return 0;
  }
  void WriteAt(std::uint64_t, std::string_view) override {}
};

TEST(HelpFile, AHugeFileIsRefusedUnread) {
  class HugeFiles : public ForwardingPlatform {
   public:
    HugeFiles() : ForwardingPlatform(SystemPlatform()) {}
    std::unique_ptr<File> OpenFile(std::string_view, OpenFor) override {
      return std::make_unique<HugeFile>();
    }
  };
  HugeFiles platform;
  const TemporaryFolder folder;
  const std::string path = folder.WriteFile("TARVO.HLP", "");
  EXPECT_EQ(ErrorOf([&] { ReadHelpFile(platform, path); }), kInvalidFileFormat);
}

// The help of the build.
std::string BuiltHelp() {
  const auto file = SystemPlatform().OpenFile(HELP_FILE, OpenFor::kReading);
  return file->ReadAt(0, static_cast<std::size_t>(file->Size()));
}

TEST(BuiltHelp, HasTheSameTopicsInEveryLanguage) {
  const HelpFile file = ParseHelpFile(BuiltHelp(), "");
  ASSERT_EQ(file.sections.size(), 4U);
  const HelpSection& english = file.In("en");
  EXPECT_GT(english.topics.size(), 30U);
  for (const HelpSection& section : file.sections) {
    ASSERT_EQ(section.topics.size(), english.topics.size());
    for (std::size_t i = 0; i < section.topics.size(); ++i) {
      EXPECT_EQ(section.topics[i].id, english.topics[i].id);
      EXPECT_EQ(section.topics[i].level, english.topics[i].level);
      EXPECT_FALSE(section.topics[i].keywords.empty());
    }
  }
}

TEST(BuiltHelp, CutAnywhereIsRefused) {
  const std::string help = BuiltHelp();
  const std::size_t end = help.rfind('>') + 1;
  EXPECT_EQ(Refusal(help.substr(0, end)), "");
  // Every place of the last topics, and enough others: each cut reads the file again.
  for (std::size_t size = end - 1; size > end - 100; --size) {
    EXPECT_NE(Refusal(help.substr(0, size)), "") << size;
  }
  for (std::size_t size = 0; size < end; size += 4999) {
    EXPECT_NE(Refusal(help.substr(0, size)), "") << size;
  }
}

TEST(BuiltHelp, ChangedBytesAreReadOrRefusedButNeverMore) {
  const std::string help = BuiltHelp();
  std::mt19937 random(20260115);
  int refused = 0;
  for (int round = 0; round < 120; ++round) {
    std::string changed = help;
    for (int i = 0; i < 1 + round % 20; ++i) {
      const std::size_t at = random() % changed.size();
      switch (random() % 4) {
        case 0:
          changed[at] = static_cast<char>(random());
          break;
        case 1:
          changed[at] = static_cast<char>(changed[at] ^ (1 << random() % 7));
          break;
        case 2:
          changed.erase(at, 1 + random() % 200);
          break;
        default:
          changed.insert(at, help, random() % help.size(), random() % 200);
          break;
      }
    }
    if (!Refusal(changed).empty()) ++refused;
  }
  EXPECT_GT(refused, 60);
  EXPECT_LT(refused, 120);
}

}  // namespace
}  // namespace tarvo
