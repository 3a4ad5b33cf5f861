#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace tarvo {

// Why a package is not valid.
struct PackageFault {
  std::string member;    // its name in the package; "" when the fault lies in the package itself
  std::string sentence;  // what is wrong, as one English sentence that names the member
};

enum class PackageKind {
  kDriver,    // must hold "driver.inf" in its root, in any letter case
  kHandHeld,  // any files
};

// A package: a zip archive with the files of a driver (".drv") or of hand-held components (".pkg").
// It is checked before anything is written, and only what has been found sound is ever unpacked.
//
// The check inflates every member once and keeps what it has verified in memory, up to 40 MiB, so
// that unpacking need not inflate it again; larger members are inflated again, and verified again,
// when they are unpacked. The memory in use stays below 64 MiB whatever the package says. The file
// is held open from the check to the end of the object's life.
class Package {
 public:
  // Opens nothing yet. The platform must outlive the object.
  Package(Platform& platform, std::string_view path, PackageKind kind = PackageKind::kDriver);
  ~Package();
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  // Checks the package, first its "driver.inf", then all of it, and writes nothing. The first fault
  // found, or nothing when the package is valid. A file that is missing or cannot be read is a
  // fault too. Throws nothing.
  std::optional<PackageFault> Check();

  // The same for a package that is only to be judged: nothing is kept, and nothing can be unpacked.
  std::optional<PackageFault> CheckOnly();

  // Unpacks a package that Check found valid into a folder, which is made, with its parents, when
  // it is missing. Names on the way are found in any letter case. The package's files replace those
  // of the same name, in any letter case; nothing else is touched, except that what a killed run
  // has left behind is removed. "*.exe" may be executed.
  //
  // All members are written to hidden files beside their targets first and then renamed over them,
  // so that at any moment every file is the old or the new one. Nothing is written through a
  // symbolic link below the folder: one in a folder's place is a failure (75), one in a file's
  // place is replaced. Throws a RuntimeError when anything cannot be written; what had not been
  // renamed by then is removed again, as are the folders that were made. Error 5 without a
  // successful check.
  //
  // `finishDescription` gets the new "driver.inf" of the root once its content is written, before
  // any file has its name. What it throws is a failure to unpack.
  using FinishDescription = std::function<void(File& description)>;
  void Unpack(std::string_view folder, const FinishDescription& finishDescription = {});

  // The same with every file put directly into the folder under its bare name; of files that share
  // a name the later one in the package stays.
  void UnpackFlat(std::string_view folder);

  // Of the files in the root of a package that Check found valid, the first by name that matches a
  // pattern and is not hidden, letter case ignored; "" for none.
  std::string FirstRootFile(std::string_view pattern) const;

  // The whole content of a file in the root, whose name is exactly this. Error 53 when there is
  // none, 75 for one of more than `most` bytes.
  std::string ReadRootFile(std::string_view name, std::uint64_t most);

 private:
  class Contents;

  std::optional<PackageFault> Check(std::uint64_t mostKept);
  void Unpack(std::string_view folder, bool isFlat, const FinishDescription& finishDescription);

  Platform& platform_;
  std::string path_;
  PackageKind kind_;
  std::unique_ptr<Contents> contents_;  // what a successful check has found; none otherwise
};

}  // namespace tarvo
