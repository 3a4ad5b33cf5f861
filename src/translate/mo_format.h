#pragma once

#include <cstdint>
#include <string_view>

namespace tarvo::mo {

// The layout of a GNU MO catalogue, which is what a dictionary file is. docs/dictionary.md has the
// picture. All numbers are 32 bits without sign, in the byte order that the magic number shows.

inline constexpr std::uint32_t kMagic = 0x950412DE;
inline constexpr std::uint32_t kMagicSwapped = 0xDE120495;

// Offsets of the header's fields.
inline constexpr std::uint32_t kRevisionAt = 4;
inline constexpr std::uint32_t kCountAt = 8;
inline constexpr std::uint32_t kOriginalsAt = 12;     // offset of the table of originals
inline constexpr std::uint32_t kTranslationsAt = 16;  // offset of the table of translations
inline constexpr std::uint32_t kHeaderSize = 28;      // with the size and offset of a hash table

// The high half of the revision is its major number; tables of both are read alike.
inline constexpr std::uint32_t kLastMajorRevision = 1;

// A table entry: length of the text in bytes, offset of the text. A NUL stands behind each text.
inline constexpr std::uint32_t kTableEntrySize = 8;

// Inside an original: what separates a context from the phrase, and the singular from the plural.
inline constexpr char kContextSeparator = '\x04';
inline constexpr char kPluralSeparator = '\0';

// The record with the empty original describes the file in lines, among other things its character
// set and its language.
inline constexpr std::string_view kCharsetField = "charset=";
inline constexpr std::string_view kLanguageField = "Language:";  // begins a line

}  // namespace tarvo::mo
