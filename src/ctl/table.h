#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// The text on one line: control characters and backslashes as "\n", "\t", "\\" or "\xNN", bytes
// that are no UTF-8 as U+FFFD.
std::string OneLine(std::string_view text);

// The same for a sentence, in which a backslash that separates the names in paths stands as it is.
std::string OneLineSentence(std::string_view text);

// Rows of equally many cells as lines of aligned columns, two blanks apart. Widths count
// characters.
std::string AlignedTable(const std::vector<std::vector<std::string>>& rows);

}  // namespace tarvo
