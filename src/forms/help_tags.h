#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvo {

// What a document raises whose structure is not that of a help file. It is caught where the file's
// name is known.
struct DamagedHelp {};

// A start tag with its attributes, or an end tag with what stands before it since its start tag.
struct HelpTag {
  std::string_view name;
  bool isEnd = false;
  std::string_view body;                                                  // of an end tag
  std::vector<std::pair<std::string_view, std::string_view>> attributes;  // as they stand

  // An attribute's value as plain text; "" when it is not there.
  std::string Attribute(std::string_view name) const;
};

// The tags of a help file, one after the other; text and comments are passed over. Every element is
// one of help::kElements at a place that suits it, is closed in its turn, and the document is over
// when "html" is: anything else raises DamagedHelp.
class HelpTagReader {
 public:
  explicit HelpTagReader(std::string_view bytes) : bytes_(bytes) {}

  // Nothing behind the last tag. An element without an end tag gives its start tag only.
  std::optional<HelpTag> Next();

 private:
  struct OpenElement {
    std::string_view name;
    std::size_t bodyAt;
  };

  HelpTag ReadStartTag();
  HelpTag ReadEndTag(std::size_t tagAt);
  void ReadAttributes(HelpTag& tag);
  void CheckPlace(const HelpTag& tag) const;
  std::string_view ReadName();
  void SkipBlanks();
  void SkipDeclaration();
  void SkipBehind(std::string_view end);
  bool Takes(std::string_view text);
  void Require(std::string_view text);

  std::string_view bytes_;
  std::size_t at_ = 0;
  std::vector<OpenElement> open_;
  bool inTopic_ = false;
  bool isOver_ = false;
};

}  // namespace tarvo
