#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// A command line that a program takes apart again into exactly these words. A word without a blank
// or a quotation mark stands as it is.
std::wstring CommandLineOf(std::wstring_view program, const std::vector<std::wstring>& arguments);

// The command line with which the command interpreter runs a script (".bat", ".cmd") with these
// words: nothing in them is taken for a command or a variable. Throws 5 for a word with a quotation
// mark or a line end, which no script can be given safely.
std::wstring ScriptCommandLineOf(std::wstring_view interpreter, std::wstring_view script,
                                 const std::vector<std::wstring>& arguments);

}  // namespace tarvo
