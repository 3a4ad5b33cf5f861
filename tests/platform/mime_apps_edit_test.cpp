#include "platform/linux/mime_apps_edit.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/linux/key_file.h"

namespace tarvo::test {
namespace {

constexpr const char* kType = "text/csv";
constexpr const char* kId = "csvFile.desktop";
constexpr const char* kLine = "text/csv=csvFile.desktop;\n";

std::string Edited(std::string_view text, DefaultLine use = DefaultLine::kAlways) {
  return WithDefaultApplication(text, kType, kId, use);
}

struct Edit {
  const char* what;
  std::string before;
  std::string after;
};

const Edit kEdits[] = {
    {"an empty file", "", std::string("[Default Applications]\n") + kLine},
    {"another group", "[Added Associations]\na/b=c;\n",
     std::string("[Added Associations]\na/b=c;\n\n[Default Applications]\n") + kLine},
    {"another group without a last line end", "[X]\na=b",
     std::string("[X]\na=b\n\n[Default Applications]\n") + kLine},
    {"another group with lines of another system", "[X]\r\na=b\r\n",
     "[X]\r\na=b\r\n\r\n[Default Applications]\r\ntext/csv=csvFile.desktop;\r\n"},
    {"the group alone", "[Default Applications]", std::string("[Default Applications]\n") + kLine},
    {"the group without the type", "[Default Applications]\na/b=c\n\n# next\n[X]\n",
     std::string("[Default Applications]\na/b=c\n") + kLine + "\n# next\n[X]\n"},
    {"the group at the end without a last line end", "[Default Applications]\na/b=c",
     std::string("[Default Applications]\na/b=c\n") + kLine},
    {"a last line that ends in half a line end", "[Default Applications]\r\na/b=c\r",
     "[Default Applications]\r\na/b=c\r\ntext/csv=csvFile.desktop;\r\n"},
    {"the group twice", "[Default Applications]\na/b=c\n[Default Applications]\nd/e=f\n",
     std::string("[Default Applications]\na/b=c\n") + kLine + "[Default Applications]\nd/e=f\n"},
    {"another application", "[Default Applications]\ntext/csv=a.desktop;b.desktop;\na/b=c\n",
     std::string("[Default Applications]\n") + kLine + "a/b=c\n"},
    {"another application in the last line", "[Default Applications]\ntext/csv=a.desktop",
     "[Default Applications]\ntext/csv=csvFile.desktop;"},
    {"another application, with lines of another system",
     "[Default Applications]\r\ntext/csv=a\r\n",
     "[Default Applications]\r\ntext/csv=csvFile.desktop;\r\n"},
    {"a line that simple readers do not see", "[Default Applications]\n  text/csv = a.desktop\n",
     std::string("[Default Applications]\n") + kLine},
    {"the type twice", "[Default Applications]\ntext/csv=a\nx=y\ntext/csv=b\n",
     std::string("[Default Applications]\n") + kLine + "x=y\n" + kLine},
    {"a group that simple readers do not see", " [Default Applications]\ntext/csv=a\n",
     std::string(" [Default Applications]\n") + kLine + "\n[Default Applications]\n" + kLine},
    {"the type in other groups", "[Added Associations]\ntext/csv=a\n[Default Applications]\n",
     std::string("[Added Associations]\ntext/csv=a\n[Default Applications]\n") + kLine},
    {"a last line without an end that is left out",
     "[Removed Associations]\ntext/csv=csvFile.desktop",
     std::string("[Removed Associations]\n\n[Default Applications]\n") + kLine},
    {"the type before all groups", "text/csv=a\n",
     std::string("text/csv=a\n\n[Default Applications]\n") + kLine},
    {"similar types", "[Default Applications]\ntext/csvx=a\nTEXT/CSV=a\n#text/csv=a\n",
     std::string("[Default Applications]\ntext/csvx=a\nTEXT/CSV=a\n") + kLine + "#text/csv=a\n"},
    {"itself", std::string("[Default Applications]\n") + kLine,
     std::string("[Default Applications]\n") + kLine},
    {"itself removed",
     "[Default Applications]\n" + std::string(kLine) +
         "[Removed Associations]\ntext/csv=csvFile.desktop;\na/b=c\n",
     "[Default Applications]\n" + std::string(kLine) + "[Removed Associations]\na/b=c\n"},
    {"itself removed among others",
     "[Removed Associations]\ntext/csv=a.desktop;csvFile.desktop;b.desktop\n"
     "[Default Applications]\n" +
         std::string(kLine),
     "[Removed Associations]\ntext/csv=a.desktop;b.desktop;\n[Default Applications]\n" +
         std::string(kLine)},
    {"others removed",
     "[Default Applications]\n" + std::string(kLine) +
         "[Removed Associations]\ntext/csv = a.desktop\n",
     "[Default Applications]\n" + std::string(kLine) +
         "[Removed Associations]\ntext/csv = a.desktop\n"},
    {"itself removed for another type",
     "[Default Applications]\n" + std::string(kLine) +
         "[Removed Associations]\na/b=csvFile.desktop\n",
     "[Default Applications]\n" + std::string(kLine) +
         "[Removed Associations]\na/b=csvFile.desktop\n"},
    {"malformed lines", "no sign\n[broken\ntext/csv=a\n]\n=\n",
     std::string("no sign\n[broken\ntext/csv=a\n]\n=\n\n[Default Applications]\n") + kLine},
    {"bytes that are no text", std::string("\0\xff\n\x80[", 5),
     std::string("\0\xff\n\x80[", 5) + "\n\n[Default Applications]\n" + kLine},
};

TEST(MimeAppsEdit, ChangesTheLinesOfTheTypeOnly) {
  for (const Edit& edit : kEdits) EXPECT_EQ(Edited(edit.before), edit.after) << edit.what;
}

TEST(MimeAppsEdit, ChangesNothingMoreTheSecondTime) {
  for (const Edit& edit : kEdits) EXPECT_EQ(Edited(edit.after), edit.after) << edit.what;
}

TEST(MimeAppsEdit, AddsNoLineWhereOnlyLinesThatAreThereMayChange) {
  const std::string other = "[Default Applications]\na/b=c\n[Removed Associations]\n";
  EXPECT_EQ(Edited(other, DefaultLine::kWhenThereIs), other);
  EXPECT_EQ(Edited("", DefaultLine::kWhenThereIs), "");
  EXPECT_EQ(Edited("[Default Applications]\ntext/csv=a\n", DefaultLine::kWhenThereIs),
            std::string("[Default Applications]\n") + kLine);
}

std::string RandomFile(std::mt19937& random) {
  const std::vector<std::string> pieces = {
      "[Default Applications]",
      "[Removed Associations]",
      "[Added Associations]",
      "[Other Group]",
      "text/csv=",
      "text/csv",
      "csvFile.desktop",
      "a.desktop",
      ";",
      "=",
      "#",
      " ",
      "\n",
      "\n",
      "\n",
      "\r\n",
      "\r",
      "\t",
      "[",
      "]",
      "text/plain=x.desktop",
      std::string(1, '\0'),
      "\xc3\xa4",
      "\xff",
  };
  std::string text;
  const auto count = std::uniform_int_distribution<int>(0, 40)(random);
  std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
  for (int i = 0; i < count; ++i) text += pieces[pick(random)];
  return text;
}

bool IsOfType(const KeyFileLine& line) {
  return line.kind == KeyFileLine::Kind::kEntry && line.key == kType &&
         (line.group == "Default Applications" || line.group == "Removed Associations");
}

// The file without the lines that may change, and without blank lines and the group's name, which
// may be added.
std::string OtherLines(std::string_view text) {
  std::string others;
  for (const KeyFileLine& line : KeyFileLines(text)) {
    std::string_view words = line.whole.substr(0, line.whole.size() - line.end.size());
    while (words.ends_with('\r')) words.remove_suffix(1);
    const bool isAdded = words.empty() || words == "[Default Applications]";
    if (!IsOfType(line) && !isAdded) others += std::string(words) + "\n";
  }
  return others;
}

TEST(MimeAppsEdit, KeepsAllOtherLinesAndGivesTheDefaultWhateverTheFile) {
  std::mt19937 random(20230315);
  for (int round = 0; round < 20'000; ++round) {
    const std::string before = RandomFile(random);
    const std::string after = Edited(before);
    SCOPED_TRACE("round " + std::to_string(round) + ":\n" + before);
    ASSERT_EQ(OtherLines(after), OtherLines(before));
    ASSERT_EQ(Edited(after), after);
    const std::vector<KeyFileLine> lines = KeyFileLines(after);
    ASSERT_EQ(KeyFileValue(lines, "Default Applications", kType), "csvFile.desktop;");
    for (const KeyFileLine& line : lines) {
      if (!IsOfType(line) || line.group != "Removed Associations") continue;
      for (const std::string& item : KeyFileList(line.value)) ASSERT_NE(item, kId);
    }
  }
}

TEST(MimeAppsEdit, KeepsEveryByteWhenNoLineOfTheTypeIsThere) {
  std::mt19937 random(45000);
  int files = 0;
  while (files < 5'000) {
    const std::string before = RandomFile(random);
    if (before.find("text/csv") != std::string::npos) continue;
    ++files;
    const std::string after = Edited(before);
    std::size_t front = 0;
    while (front < before.size() && before[front] == after[front]) ++front;
    ASSERT_EQ(after.substr(after.size() - (before.size() - front)), before.substr(front))
        << "more was changed than inserted in:\n"
        << before;
  }
}

TEST(KeyFileLines, AreTheWholeTextInItsOrder) {
  std::mt19937 random(1);
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = RandomFile(random);
    std::string joined;
    for (const KeyFileLine& line : KeyFileLines(text)) joined += line.whole;
    ASSERT_EQ(joined, text);
  }
}

TEST(DesktopFileIds, AreNamesThatAListCanHold) {
  for (const char* id : {"csvFile.desktop", "org.x.Y-z_1.desktop", "\xc3\xa4 b.desktop"}) {
    EXPECT_TRUE(IsDesktopFileId(id)) << id;
  }
  for (const char* id : {"", ".desktop", "csvFile", "a;b.desktop", "a/b.desktop", "a\nb.desktop",
                         "a\rb.desktop", "a\\b.desktop", " a.desktop", "a\x7f.desktop"}) {
    EXPECT_FALSE(IsDesktopFileId(id)) << id;
  }
  EXPECT_FALSE(IsDesktopFileId(std::string("a\0b.desktop", 11)));
}

}  // namespace
}  // namespace tarvo::test
