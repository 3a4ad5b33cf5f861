#pragma once

#include <string>
#include <string_view>

namespace tarvo {

// What separates the names in a path on this system.
extern const char kSeparator;

// How many characters of a path are the root that it starts at: "/"; with drives "C:\",
// "\\server\share\" or, for the current drive, "\". 0 for a relative path.
std::size_t RootSize(std::string_view path);

// The path with a separator at its end; only the last character is tested, so "" gives the
// separator alone.
std::string WithSeparator(std::string_view path);

// `folder` and `name` with one separator between them. An empty folder gives the name alone.
std::string JoinPath(std::string_view folder, std::string_view name);

// The part behind the last separator: the whole path when it has none, "" when it ends in one.
std::string_view FileNameOf(std::string_view path);

// The part before the last separator: "" when there is none, the root itself for a name in it.
std::string_view FolderOf(std::string_view path);

// Whether a file name matches a pattern, without regard to letter case: "*" stands for any
// characters, "?" for one, and "*.*" matches every name, with a dot or without.
bool MatchesPattern(std::string_view name, std::string_view pattern);

}  // namespace tarvo
