#pragma once

#include <string>

namespace tarvo::test {

// A link to a folder beside it, while this lives; what fails in making it fails the running test.
// Wine, which makes and removes no links, lets programs of the system below do it.
class FolderLink {
 public:
  FolderLink(const std::string& target, std::string link);
  ~FolderLink();
  FolderLink(const FolderLink&) = delete;
  FolderLink& operator=(const FolderLink&) = delete;

 private:
  std::string link_;
};

}  // namespace tarvo::test
