#pragma once

#include <string_view>
#include <vector>

namespace tarvo {

struct MoEntry {
  std::string_view original;
  std::string_view translation;
};

struct MoFile {
  std::string_view language;  // of the translations, such as "de"; "" when the file does not say
  std::vector<MoEntry> entries;
};

// The entries of an MO catalogue in the file's order, as views into its bytes. The record that
// describes the file and the entries with a context or plurals are left out: no phrase of the
// program can mean them.
//
// Error 321 with a sentence that names the file when the bytes are no MO catalogue, when any part
// of it lies outside the file, when the text is in another character set than UTF-8 or ASCII, or
// when it has more than 16 MiB.
MoFile ReadMoFile(std::string_view bytes, std::string_view fileName);

}  // namespace tarvo
