#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/temporary_folder.h"

namespace tarvo::test {

// The header record of a phrase file whose text is in the given character set.
std::string PoHeader(std::string_view charset = "UTF-8");

// Phrases with their translations as the text of a phrase file, header included.
using Phrases = std::vector<std::pair<std::string, std::string>>;
std::string PoText(const Phrases& phrases);

// Compiles the text of a phrase file into a file of the folder and gives its bytes. On Linux msgfmt
// does it, with its options; fails the running test when msgfmt refuses it. Elsewhere a compiler of
// the tests' own does, for phrase files without comments.
std::string MakeDictionary(const TemporaryFolder& folder, std::string_view poText,
                           const std::string& options = {}, const std::string& name = "TARVO.DIC");

}  // namespace tarvo::test
