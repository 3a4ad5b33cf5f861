#pragma once

#include <string>

namespace tarvo::test {

// Folders one in another, of any number of levels, whose path may be longer than the system takes.
// They are removed at the end of the object's life.
class DeepFolder {
 public:
  // Makes the levels below `top`, each called `name`, and an empty file in the deepest.
  DeepFolder(std::string top, int levels, const std::string& name, const std::string& file);
  ~DeepFolder();
  DeepFolder(const DeepFolder&) = delete;
  DeepFolder& operator=(const DeepFolder&) = delete;

  // Whether that file is where it was made.
  bool IsWhole() const;

 private:
  int Deepest() const;

  std::string top_;
  int levels_;
  std::string name_;
  std::string file_;
};

}  // namespace tarvo::test
