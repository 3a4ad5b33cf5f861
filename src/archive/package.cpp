#include "archive/package.h"

#include "base/runtime_error.h"

namespace tarvo {

class Package::Contents {};

Package::Package(Platform& platform, std::string_view path, PackageKind kind)
    : platform_(platform), path_(path), kind_(kind) {}

Package::~Package() = default;

std::optional<PackageFault> Package::Check() {
  contents_.reset();
  return PackageFault{"", "Packages cannot be read yet."};
}

void Package::Unpack(std::string_view) {
  if (!contents_) throw RuntimeError(kInvalidProcedureCall);
}

void Package::UnpackFlat(std::string_view) {
  if (!contents_) throw RuntimeError(kInvalidProcedureCall);
}

}  // namespace tarvo
