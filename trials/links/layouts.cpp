#include "layouts.h"

#include <filesystem>

namespace tarvo::test {
namespace {

namespace fs = std::filesystem;

void Link(const std::string& target, const std::string& path) { fs::create_symlink(target, path); }

void HardLink(const std::string& target, const std::string& path) {
  fs::remove(path);
  fs::create_hard_link(target, path);
}

// A link in the place of what stands there.
void LinkInstead(const std::string& target, const std::string& path) {
  fs::remove_all(path);
  Link(target, path);
}

// Each leads to the next, the last one to the target.
void Chain(int length, const std::string& target, const std::string& path) {
  for (int i = 1; i < length; ++i) {
    Link(path + std::to_string(i), i == 1 ? path : path + std::to_string(i - 1));
  }
  Link(target, length == 1 ? path : path + std::to_string(length - 1));
}

// What happens to stand behind "Drivers" once that is a link.
void MoveDrivers(const Ground& g) {
  fs::rename(g.drivers, g.root + "/elsewhere");
  Link("../../../elsewhere", g.drivers);
}

// A link of one kind in the driver's folder.
Layout InTheDriver(const char* name, const std::string& target, const std::string& below = "link") {
  return {name, [=](const Ground& g) {
            const std::string full = target.starts_with('/') ? g.outside + target : target;
            LinkInstead(full, g.meter + "/" + below);
          }};
}

Layout HardLinkInTheDriver(const char* name, const std::string& target, const std::string& below) {
  return {name, [=](const Ground& g) { HardLink(g.outside + target, g.meter + "/" + below); }};
}

std::vector<Layout> LinksOfEveryTarget() {
  return {
      InTheDriver("LinkToAFile", "/kept.csv"),
      InTheDriver("LinkToAReadOnlyFile", "/locked.csv"),
      InTheDriver("LinkToAProgram", "/Download.EXE", "extra.exe"),
      InTheDriver("LinkToAPipe", "/pipe"),
      InTheDriver("LinkToAFolder", "/folder"),
      InTheDriver("LinkToAReadOnlyFolder", "/fixed"),
      InTheDriver("LinkToAnEmptyFolder", "/empty"),
      InTheDriver("LinkToAFolderCalledLikeTheDriver", "/Meter"),
      InTheDriver("RelativeLinkToAFile", "../../../../../outside/kept.csv"),
      InTheDriver("RelativeLinkToAFolder", "../../../../../outside/folder"),
      InTheDriver("RelativeLinkInAFolder", "../../../../../../outside/folder", "Data/link"),
      InTheDriver("LinkToNothing", "nowhere"),
      InTheDriver("LinkToWhatCouldBeMadeOutside", "/new"),
      InTheDriver("LinkToALinkOutside", "/link"),
      InTheDriver("LinkToItself", "link"),
      InTheDriver("LinkToItsFolder", "."),
      InTheDriver("LinkToTheFolderAbove", ".."),
      InTheDriver("LinkToTheDataFolder", "../.."),
      InTheDriver("LinkToAnotherDriver", "../Other"),
      InTheDriver("LinkToAFileOfTheDriver", "driver.inf"),
      InTheDriver("LinkToAFolderOfTheDriver", "Data"),
      {"LinkToTheRoot", [](const Ground& g) { Link("/", g.meter + "/link"); }},
      {"LinkToADevice", [](const Ground& g) { Link("/dev/null", g.meter + "/link"); }},
      {"LinkOfTheSystem", [](const Ground& g) { Link("/proc/self/root", g.meter + "/link"); }},
      {"LinkToTheDriverItself", [](const Ground& g) { Link(g.meter, g.meter + "/link"); }},
      {"RingOfTwoLinks",
       [](const Ground& g) {
         Link("ring2", g.meter + "/ring1");
         Link("ring1", g.meter + "/ring2");
       }},
      {"ChainOfThreeLinks",
       [](const Ground& g) { Chain(3, g.outside + "/folder", g.meter + "/chain"); }},
      {"ChainOfAsManyLinksAsTheSystemFollows",
       [](const Ground& g) { Chain(40, g.outside + "/folder", g.meter + "/chain"); }},
      {"ChainOfMoreLinksThanTheSystemFollows",
       [](const Ground& g) { Chain(41, g.outside + "/folder", g.meter + "/chain"); }},
      {"LinkOfAsManyBytesAsALinkHolds",
       [](const Ground& g) {
         std::string target = g.outside;
         while (target.size() + 2 <= 4095) target += "/.";
         Link(target, g.meter + "/link");
       }},
  };
}

std::vector<Layout> LinksUnderEveryName() {
  return {
      InTheDriver("DescriptionIsALink", "/driver.inf", "driver.inf"),
      InTheDriver("DescriptionInAnotherLetterCaseIsALink", "/driver.inf", "DRIVER.Inf"),
      InTheDriver("DescriptionIsALinkToWhatCouldBeMade", "/new.inf", "driver.inf"),
      InTheDriver("DescriptionIsALinkToAFolder", "/folder", "driver.inf"),
      InTheDriver("ToolIsALink", "/Download.EXE", "Download.EXE"),
      InTheDriver("PictureIsALink", "/kept.csv", "Large.ICO"),
      InTheDriver("SampleIsALink", "/Sample.hvd", "Sample.hvd"),
      InTheDriver("SampleIsALinkToWhatCouldBeMade", "/new.hvd", "Sample.hvd"),
      InTheDriver("FirstSampleIsALink", "/Sample.hvd", "a.hvd"),
      InTheDriver("FolderOfThePackageIsALink", "/folder", "Maps"),
      InTheDriver("FolderOfThePackageInAnotherLetterCaseIsALink", "/folder", "MAPS"),
      InTheDriver("FolderBelowAFolderOfThePackageIsALink", "/folder", "Maps/Near"),
      InTheDriver("FileInAFolderOfThePackageIsALink", "/kept.csv", "Maps/near.bmp"),
      InTheDriver("DataIsALink", "/Data", "Data"),
      InTheDriver("DataInAnotherLetterCaseIsALink", "/Data", "data"),
      InTheDriver("DataIsALinkToWhatCouldBeMade", "/new", "Data"),
      InTheDriver("DataIsALinkToAFile", "/kept.csv", "Data"),
      InTheDriver("DownloadIsALink", "/kept.csv", "Data/own.csv"),
      InTheDriver("FolderOfDownloadsIsALink", "/Data", "Data/2025"),
      InTheDriver("HiddenLinkToAFolder", "/folder", ".link"),
      InTheDriver("HiddenLinkInAHiddenFolder", "/folder", ".hidden/.link"),
      InTheDriver("UnfinishedFileIsALink", "/kept.csv", ".tarvo-new-0"),
      InTheDriver("UnfinishedFileIsALinkToWhatCouldBeMade", "/new", ".tarvo-new-0"),
      InTheDriver("UnfinishedFileIsALinkToAFolder", "/folder", ".tarvo-new-1"),
      InTheDriver("LinkWithALineEndInItsName", "/folder", "line\nend"),
      InTheDriver("LinkWhoseNameIsNoText", "/folder", "\xFF\xFE"),
      InTheDriver("LinkWithBlanksAtTheEndOfItsName", "/folder", "link  "),
      InTheDriver("LinkWithTheLongestName", "/folder", std::string(255, 'l')),
      {"LinksOfEveryKindByTheHundred",
       [](const Ground& g) {
         for (int i = 0; i < 100; ++i) {
           const std::string number = std::to_string(i);
           Link(g.outside + "/kept.csv", g.meter + "/Data/file" + number + ".csv");
           Link(g.outside + "/folder", g.meter + "/Data/folder" + number);
           Link("nothing" + number, g.meter + "/Maps/none" + number);
         }
       }},
      {"LinkTwentyFoldersDown",
       [](const Ground& g) {
         std::string deep = g.meter + "/Data";
         for (int i = 0; i < 20; ++i) deep += "/deep";
         fs::create_directories(deep);
         Link(g.outside + "/folder", deep + "/link");
       }},
      {"LinkInAReadOnlyFolder",
       [](const Ground& g) {
         Link(g.outside + "/folder", g.meter + "/Data/link");
         fs::permissions(g.meter + "/Data", fs::perms(0555));
       }},
  };
}

std::vector<Layout> HardLinks() {
  return {
      HardLinkInTheDriver("HardLink", "/kept.csv", "link.csv"),
      HardLinkInTheDriver("HardLinkOfAReadOnlyFile", "/locked.csv", "link.csv"),
      HardLinkInTheDriver("DescriptionIsAHardLink", "/driver.inf", "driver.inf"),
      HardLinkInTheDriver("DescriptionIsAHardLinkOfAReadOnlyFile", "/locked.csv", "driver.inf"),
      HardLinkInTheDriver("ToolIsAHardLink", "/Download.EXE", "Download.EXE"),
      HardLinkInTheDriver("SampleIsAHardLink", "/Sample.hvd", "Sample.hvd"),
      HardLinkInTheDriver("DownloadIsAHardLink", "/kept.csv", "Data/own.csv"),
      HardLinkInTheDriver("UnfinishedFileIsAHardLink", "/locked.csv", ".tarvo-new-0"),
      HardLinkInTheDriver("HiddenHardLinkOfAReadOnlyFile", "/locked.csv", ".link"),
      HardLinkInTheDriver("HardLinkOfAPipe", "/pipe", "pipe"),
      {"HardLinkOfALink",
       [](const Ground& g) { fs::create_hard_link(g.outside + "/link", g.meter + "/link"); }},
  };
}

std::vector<Layout> LinksAboveTheDriver() {
  const auto theDriverIs = [](const char* name, const std::string& target) {
    return Layout{name, [=](const Ground& g) {
                    LinkInstead(target.starts_with('/') ? g.outside + target : target, g.meter);
                  }};
  };
  const auto inData = [](const char* name, const std::string& target, const std::string& path) {
    return Layout{name,
                  [=](const Ground& g) { LinkInstead(g.outside + target, g.data + "/" + path); }};
  };
  return {
      theDriverIs("DriverIsALink", "/Meter"),
      theDriverIs("DriverIsARelativeLink", "../../../../outside/Meter"),
      theDriverIs("DriverIsALinkToWhatCouldBeMade", "/new"),
      theDriverIs("DriverIsALinkToAFile", "/kept.csv"),
      theDriverIs("DriverIsALinkToAnotherDriver", "Other"),
      theDriverIs("DriverIsALinkToItself", "Meter"),
      theDriverIs("DriverIsALinkToItsFolder", "."),
      theDriverIs("DriverIsALinkToALink", "/link"),
      {"DriverInAnotherLetterCaseIsALink",
       [](const Ground& g) {
         fs::remove_all(g.meter);
         Link(g.outside + "/Meter", g.drivers + "/METER");
       }},
      {"DriverIsAHardLinkOfAFile",
       [](const Ground& g) {
         fs::remove_all(g.meter);
         HardLink(g.outside + "/locked.csv", g.meter);
       }},
      {"DriversIsALink", MoveDrivers},
      {"DriversAndTheDriverAreLinks",
       [](const Ground& g) {
         LinkInstead(g.outside + "/Meter", g.meter);
         MoveDrivers(g);
       }},
      {"DriversAndDataAreLinks",
       [](const Ground& g) {
         LinkInstead(g.outside + "/Data", g.meter + "/Data");
         MoveDrivers(g);
       }},
      inData("FolderOfInstallersIsALink", "/folder", "DeviceInstaller"),
      inData("FolderOfInstallersIsALinkToWhatCouldBeMade", "/new", "DeviceInstaller"),
      inData("FolderForHandHeldsIsALink", "/folder", "Win32Device"),
      {"FolderInTheFolderOfInstallersIsALink",
       [](const Ground& g) {
         fs::create_directory(g.data + "/DeviceInstaller");
         Link(g.outside + "/folder", g.data + "/DeviceInstaller/Palm Kestrel");
       }},
      {"CopyOfTheSampleIsALink",
       [](const Ground& g) {
         fs::create_directory(g.data + "/Win32Device");
         Link(g.outside + "/Sample.hvd", g.data + "/Win32Device/Sample.hvd");
       }},
      {"CopyOfTheSampleIsAHardLink",
       [](const Ground& g) {
         fs::create_directory(g.data + "/Win32Device");
         HardLink(g.outside + "/Sample.hvd", g.data + "/Win32Device/Sample.hvd");
       }},
      {"PackageIsALink",
       [](const Ground& g) {
         const std::string package = g.data + "/Meter_2.drv";
         fs::rename(package, g.root + "/package");
         Link(g.root + "/package", package);
       }},
  };
}

std::vector<Layout> Joined(std::initializer_list<std::vector<Layout>> parts) {
  std::vector<Layout> all;
  for (const std::vector<Layout>& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace

const std::vector<Layout>& Layouts() {
  static const std::vector<Layout> layouts =
      Joined({LinksOfEveryTarget(), LinksUnderEveryName(), HardLinks(), LinksAboveTheDriver()});
  return layouts;
}

}  // namespace tarvo::test
