#include <algorithm>
#include <climits>

#include "big_run.h"
#include "platform/names.h"
#include "support/tree_record.h"

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::size_t kLongest = 255;  // bytes of a name
constexpr std::size_t kLongestInPackage = 4096;
constexpr std::uint16_t kUtf8 = 0x800;  // the flag of a member

// A name of so many bytes that ends in a character; ASCII letters fill what that leaves.
std::string NameOf(std::size_t size, std::string_view character, std::string_view ending = {}) {
  std::string name;
  while ((size - name.size() - ending.size()) % character.size() != 0) name += 'n';
  while (name.size() + ending.size() < size) name += character;
  return name.append(ending);
}

const std::vector<std::string> kCharacters = {"n", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x94\xA7",
                                              " ", "\xFF"};

class LongNames : public BigRun {};

// Every length, each with characters of every size up to its last byte.
TEST_F(LongNames, OfDownloadsAreCountedKeptAndRemovedAtEveryLength) {
  for (std::size_t size = 5; size <= kLongest; ++size) {
    for (const std::string& character : kCharacters) {
      DriverFile("Meter/Data/" + NameOf(size, character, ".csv"), "only here");
    }
  }
  // The shortest names of the six kinds are the same where no character has room.
  const auto distinct = std::distance(fs::directory_iterator(folder / InDrivers("Meter/Data")),
                                      fs::directory_iterator());
  Update();
  EXPECT_THAT(Counts("Meter"), ElementsAre(std::to_string(distinct), "", ""));
  const TreeRecord before = RecordTree(folder / InDrivers("Meter/Data"));
  EXPECT_TRUE(Install({Pack("Meter_2.drv")}));
  EXPECT_THAT(Differences(before, RecordTree(folder / InDrivers("Meter/Data"))), IsEmpty());
  EXPECT_EQ(Remove("Meter"), 0);
  EXPECT_THAT(LastMessage(), HasSubstr("You have " + std::to_string(distinct) + " downloads"));
  EXPECT_FALSE(Exists("Meter"));
  TellHeld("big.names", Counted(distinct) +
                            " downloads with names of 5 to 255 bytes, of characters of one to four "
                            "bytes: all counted, kept by a re-install and removed");
}

TEST_F(LongNames, OfMembersAreUnpackedUpToTheLongestAndRefusedBeyond) {
  for (const std::string& character : kCharacters) {
    if (character == "\xFF") continue;  // no name of a package
    const std::string longest = NameOf(kLongest, character);
    const std::string package =
        Pack("Meter_1.drv", {{.name = longest, .content = "new", .flags = kUtf8},
                             {.name = "Maps/" + longest, .content = "new", .flags = kUtf8},
                             {.name = longest + "/x", .content = "new", .flags = kUtf8}});
    EXPECT_FALSE(Install({package})) << "a file where a folder must be";
    const std::string sound =
        Pack("Meter_1.drv", {{.name = longest, .content = "new", .flags = kUtf8},
                             {.name = "Maps/" + longest, .content = "new", .flags = kUtf8}});
    EXPECT_TRUE(Install({sound}));
    EXPECT_EQ(folder.ReadFile(InDrivers("Meter/" + longest)), "new");
    EXPECT_EQ(folder.ReadFile(InDrivers("Meter/Maps/" + longest)), "new");
    const std::string tooLong = NameOf(kLongest + 1, character);
    EXPECT_FALSE(
        Install({Pack("Meter_2.drv", {{.name = tooLong, .content = "x", .flags = kUtf8},
                                      {.name = longest, .content = "x", .flags = kUtf8}})}));
    EXPECT_EQ(folder.ReadFile(InDrivers("Meter/" + longest)), "new");
    EXPECT_EQ(Remove("Meter"), 0);
    EXPECT_FALSE(Exists("Meter"));
  }
}

// The package's name is a driver's, "_" and at least the four characters of its kind.
TEST_F(LongNames, OfDriversAreInstalledListedAndRemoved) {
  constexpr std::size_t kBehind = 5;
  for (std::size_t size = kLongest - kBehind - 8; size <= kLongest - kBehind; ++size) {
    for (const std::string& character : kCharacters) {
      const std::string name = NameOf(size, character);
      EXPECT_TRUE(Install({Pack(name + "_.drv", {{.name = "Download.EXE", .content = "x"}})}));
      DriverFile(name + "/Data/own.csv");
      Update();
      EXPECT_THAT(Counts(name), ElementsAre("1", "", ""));
      EXPECT_EQ(Remove(name), 0);
      EXPECT_FALSE(Exists(name));
      fs::remove(folder / InData(name + "_.drv"));
    }
  }
  const std::string longest = NameOf(kLongest, "\xE2\x82\xAC");
  DriverFile(longest + "/own.csv");
  Update();
  EXPECT_THAT(Counts(longest), ElementsAre("1", "", ""));
  EXPECT_EQ(Remove(longest), 0);
  EXPECT_FALSE(Exists(longest));
}

class LongPaths : public BigRun {
 protected:
  // Names, one in another, below the driver "Meter", so that the path of the last has that length.
  std::vector<std::string> NamesFor(std::size_t length) const {
    std::vector<std::string> names;
    for (std::size_t left = length - (folder / InDrivers("Meter")).size(); left > 0;) {
      const std::size_t room = left - 1;
      const bool isLast = room <= kLongest;
      const std::size_t size = isLast ? room : std::min(kLongest, room / 2);
      names.push_back(NameOf(size, "n", isLast ? ".csv" : ""));
      left -= size + 1;
    }
    return names;
  }

  std::string Joined(const std::vector<std::string>& names) const {
    std::string path;
    for (const std::string& name : names) path += (path.empty() ? "" : "/") + name;
    return path;
  }

  void MakeFile(const std::vector<std::string>& names) {
    std::string path = Driver("Meter");
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
      path += "/" + names[i];
      starting.MakeFolder(path);
    }
    starting.MakeFile(path + "/" + names.back(), FileUse::kData)->WriteAt(0, "old");
  }

  std::string Content(const std::vector<std::string>& names) {
    return ReadWholeFile(starting, folder / InDrivers("Meter/" + Joined(names)));
  }

  void ExpectOneDownloadToBeRemoved() {
    Update();
    EXPECT_THAT(Counts("Meter"), ElementsAre("1", "", ""));
    EXPECT_EQ(Remove("Meter"), 0);
    EXPECT_THAT(LastMessage(), HasSubstr("You have 1 downloads"));
    EXPECT_FALSE(Exists("Meter"));
  }
};

// Every length around the one that the system takes in a call, and many times that.
TEST_F(LongPaths, AreReachedAllTheSame) {
  std::vector<std::size_t> lengths = {2U * PATH_MAX, 5U * PATH_MAX, 20U * PATH_MAX};
  for (std::size_t length = PATH_MAX - 8; length <= PATH_MAX + 8; ++length) {
    lengths.push_back(length);
  }
  for (const std::size_t length : lengths) {
    SCOPED_TRACE(length);
    const std::vector<std::string> names = NamesFor(length);
    MakeFile(names);
    EXPECT_TRUE(Install({Pack("Meter_1.drv")}));
    EXPECT_EQ(Content(names), "old");
    if (Joined(names).size() <= kLongestInPackage) {
      const std::string name = Joined(names);
      EXPECT_TRUE(Install({Pack("Meter_2.drv", {{.name = name, .content = "new"}})}));
      EXPECT_EQ(Content(names), "new");
    }
    ExpectOneDownloadToBeRemoved();
    if (HasFailure()) return;
  }
  TellHeld("big.paths", Counted(static_cast<long long>(lengths.size())) + " files with paths of " +
                            Counted(PATH_MAX - 8) + " to " + Counted(20 * PATH_MAX) +
                            " bytes: kept or replaced by a re-install, counted and removed");
}

}  // namespace
}  // namespace tarvo::test
