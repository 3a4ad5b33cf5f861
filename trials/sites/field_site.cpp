#include "sites/field_site.h"

#include <stdexcept>

#include "actions/install_drivers.h"
#include "base/paths.h"
#include "base/runtime_error.h"
#include "catalogue/driver_list.h"

namespace tarvo::test {
namespace fs = std::filesystem;

namespace {

bool IsUnfinished(const std::string& path) { return FileNameOf(path).starts_with(".tarvo-new-"); }

const TreeEntry* Find(const FileTree& tree, const std::string& path) {
  const auto found = tree.find(path);
  return found == tree.end() ? nullptr : &found->second;
}

bool IsSame(const TreeEntry* a, const TreeEntry* b) {
  return (!a && !b) || (a && b && a->kind == b->kind && a->content == b->content);
}

}  // namespace

void SitePlatform::RefuseOutside(std::string_view path) const {
  if (path.starts_with('/') && !path.starts_with(root_)) throw RuntimeError(kPermissionDenied);
}

void SitePlatform::MakeFolder(std::string_view path) {
  RefuseOutside(path);
  RootedPlatform::MakeFolder(path);
}

std::unique_ptr<File> SitePlatform::OpenFile(std::string_view path, OpenFor use) {
  if (use == OpenFor::kReadingAndWriting) RefuseOutside(path);
  return RootedPlatform::OpenFile(path, use);
}

int SitePlatform::StartProcess(std::string_view program, const std::vector<std::string>& arguments,
                               StartWindow) {
  if (!Attributes(program)) throw RuntimeError(kFileNotFound);
  std::string& call = started.emplace_back(program);
  for (const std::string& argument : arguments) call.append(" ").append(argument);
  if (atStart) atStart(program);
  return ++lastProcess;
}

double SitePlatform::SecondsSinceMidnight() {
  constexpr int kMostReadings = 100'000;
  if (++readings_ > kMostReadings) throw std::logic_error("waits without end");
  return RootedPlatform::SecondsSinceMidnight();
}

void SiteRun::Select(std::string_view key) {
  frmDrivers& window = Window();
  for (int i = 0; i < window.lvListView.Count(); ++i) {
    ListItem& item = window.lvListView.ItemAt(i);
    if (item.Key != key) continue;
    window.lvListView.Select(&item);
    window.lvListView_ItemClick(item);
    return;
  }
  throw std::logic_error("not in the list: " + std::string(key));
}

bool SiteRun::Install(const std::string& package) {
  Window().DriverFileList[1] = package;
  Window().DriverFileList[2].clear();
  InstallOrder order;
  order.firstPackage = package;
  return !InstallDrivers(program_.RunGlobals(), Window(), order);
}

FieldSite::FieldSite() : system(folder.Path()) {
  system.specialFolders = platform.specialFolders;
  system.specialFolders[kPersonalDocuments] = folder.MakeFolder("personal");
  folder.MakeFolder("start");
  folder.MakeFolder(InData("Drivers"));
  StoreSettings();
  oldPackage = PackageOf("1.0", {{"gone.txt", "old only"}});
  PackHandHeld("old");
  Restore(Everything());
  EXPECT_TRUE(StartedRun()->Install(oldPackage));
  for (const char* name : {"2024-01.csv", "2024-02.hvd", "2024-03.asc", "Site A/2024-04.csv"}) {
    DriverFile(std::string("Meter/Data/") + name, std::string("downloaded ") + name);
  }
  DriverFile("Meter/notes.doc", "the user's own");
  fs::permissions(folder / InMeter("notes.doc"), fs::perms(0444));
  DriverFile("Tide Gauge/driver.inf", "another driver");
  DriverFile("Tide Gauge/Data/2023-12.csv", "downloaded, too");
  newPackage = PackageOf("2.0", {{"more.txt", "new only"}, {"Maps/Far/away.bmp", "new only"}});
  PackHandHeld("new");
  site = Everything();
}

std::string FieldSite::PackageOf(const std::string& version, PackageFiles files) const {
  for (const char* name : {"Download.EXE", "upload.exe", "Properties.EXE", "help.html",
                           "Maps/near.bmp", "Maps/Near/harbour.bmp"}) {
    files[name] = std::string(name).append(" ").append(version);
  }
  files["Large.ICO"] = IconFile();
  files["Small.BMP"] = BitmapFile();
  files["firmware.bin"] = std::string(70'000, version[0]);
  files["driver.inf"] = "[Driver]\r\nVersion=" + version + "\r\n";
  files["Sample.hvd"] =
      "Title\r\nFIELDNAME\r\nLevel " + version + " (m)\r\nWater temperature (C)\r\n";
  return MakePackage(folder, InData("Meter_" + version + ".drv"), files);
}

void FieldSite::PackHandHeld(const std::string& content) const {
  MakePackage(folder, InData("Tarvoexe.pkg"), {{"deep/Tool.exe", content}});
  MakePackage(folder, InData("Win32Installer.pkg"), {{"PDATarvo.exe", content}});
}

void FieldSite::StoreSettings() {
  RegistryReplacement store(system);
  store.OpenLocalRegistry(kCompanyName);
  store.SaveSetting("Sibling_Settings_Port", "COM3");
  store.SaveSetting("Freed", "deleted below");
  store.SaveSetting("Sibling_Settings_Sites", std::string(2500, 's'));
  store.SaveSetting("tarvo.versions_Meter_DOWNLOAD", "1.0.7");
  store.DeleteKey("Freed");
}

std::unique_ptr<SiteRun> FieldSite::StartedRun(Platform& on) {
  auto run = std::make_unique<SiteRun>(system, on);
  EXPECT_EQ(run->Start(), AfterStart::kEventLoop);
  return run;
}

void FieldSite::Restore(const FileTree& tree) {
  RestoreTree(folder.Path(), tree);
  fs::current_path(folder / "start");
  system.BeginRun();
  system.secondsOfDay = 12 * 3600.0;
  system.started.clear();
}

FileTree FieldSite::Without(FileTree tree, const std::string& folder) {
  std::erase_if(tree, [&](const auto& entry) {
    return entry.first == folder || entry.first.starts_with(folder + "/");
  });
  return tree;
}

void FieldSite::ExpectOldOrNew(const FileTree& found, const FileTree& before, const FileTree& after,
                               bool mayHaveUnfinished) {
  FileTree known = before;
  known.insert(after.begin(), after.end());
  for (const auto& [path, entry] : known) {
    const TreeEntry* now = Find(found, path);
    EXPECT_TRUE(IsSame(now, Find(before, path)) || IsSame(now, Find(after, path)))
        << path << (now ? " is neither old nor new: " + now->content.substr(0, 200) : " is gone");
  }
  for (const auto& [path, entry] : found) {
    if (known.contains(path)) continue;
    EXPECT_TRUE(mayHaveUnfinished && IsUnfinished(path)) << path << " belongs to no version";
    EXPECT_FALSE(path.starts_with(InMeter("Data/"))) << path;
  }
}

std::size_t FieldSite::ExpectWholeOrGone(const FileTree& found) const {
  std::size_t gone = 0;
  for (const auto& [path, entry] : site) {
    const TreeEntry* now = Find(found, path);
    const bool isOfDriver = (path + "/").starts_with(InMeter(""));
    if (isOfDriver && !now) {
      ++gone;
    } else {
      EXPECT_TRUE(IsSame(now, &entry)) << path << " is damaged";
      EXPECT_TRUE(isOfDriver || now->modes == entry.modes) << path << " has other modes";
    }
  }
  EXPECT_EQ(found.size() + gone, site.size()) << "something new is there";
  return gone;
}

}  // namespace tarvo::test
