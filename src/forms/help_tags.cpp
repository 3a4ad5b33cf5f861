#include "forms/help_tags.h"

#include <algorithm>

#include "base/text.h"
#include "forms/help_format.h"

namespace tarvo {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kNameCharacters = "abcdefghijklmnopqrstuvwxyz0123456789-";

const help::Element& ElementNamed(std::string_view name) {
  for (const help::Element& element : help::kElements) {
    if (element.name == name) return element;
  }
  throw DamagedHelp();
}

bool HasEndTag(help::Place place) {
  return place != help::Place::kEmpty && place != help::Place::kEmptyInTopic;
}

bool MayStand(help::Place place, bool inTopic) {
  if (place == help::Place::kBoth) return true;
  return inTopic == (place == help::Place::kInTopic || place == help::Place::kEmptyInTopic);
}

}  // namespace

std::string HelpTag::Attribute(std::string_view wanted) const {
  for (const auto& [attribute, value] : attributes) {
    if (attribute != wanted) continue;
    std::string text = ReplaceAll(value, "&lt;", "<");
    text = ReplaceAll(text, "&gt;", ">");
    text = ReplaceAll(text, "&quot;", "\"");
    return ReplaceAll(text, "&amp;", "&");
  }
  return {};
}

std::optional<HelpTag> HelpTagReader::Next() {
  while (true) {
    const std::size_t tagAt = bytes_.find('<', at_);
    const std::size_t textEnd = std::min(tagAt, bytes_.size());
    if (open_.empty() && bytes_.find_first_not_of(kBlanks, at_) < textEnd) throw DamagedHelp();
    if (tagAt == std::string_view::npos) {
      if (!isOver_) throw DamagedHelp();
      return std::nullopt;
    }
    if (isOver_) throw DamagedHelp();
    at_ = tagAt + 1;
    if (Takes("/")) return ReadEndTag(tagAt);
    if (!Takes("!")) return ReadStartTag();
    SkipDeclaration();
  }
}

HelpTag HelpTagReader::ReadStartTag() {
  HelpTag tag;
  tag.name = ReadName();
  ReadAttributes(tag);
  CheckPlace(tag);
  if (!HasEndTag(ElementNamed(tag.name).place)) return tag;
  open_.push_back({tag.name, at_});
  if (tag.name == help::kTopic) inTopic_ = true;
  return tag;
}

void HelpTagReader::CheckPlace(const HelpTag& tag) const {
  if (!MayStand(ElementNamed(tag.name).place, inTopic_)) throw DamagedHelp();
  if (open_.empty() != (tag.name == "html")) throw DamagedHelp();
  if (open_.size() >= help::kDeepestNesting) throw DamagedHelp();
  if (!inTopic_) return;
  for (const auto& attribute : tag.attributes) {
    if (tag.name != "a" || attribute.first != help::kLinkAttribute) throw DamagedHelp();
  }
}

HelpTag HelpTagReader::ReadEndTag(std::size_t tagAt) {
  HelpTag tag;
  tag.isEnd = true;
  tag.name = ReadName();
  Require(">");
  if (open_.empty() || open_.back().name != tag.name) throw DamagedHelp();
  tag.body = bytes_.substr(open_.back().bodyAt, tagAt - open_.back().bodyAt);
  open_.pop_back();
  if (tag.name == help::kTopic) inTopic_ = false;
  isOver_ = open_.empty();
  return tag;
}

void HelpTagReader::ReadAttributes(HelpTag& tag) {
  while (true) {
    const std::size_t before = at_;
    SkipBlanks();
    if (Takes(">")) return;
    if (at_ == before) throw DamagedHelp();
    const std::string_view name = ReadName();
    Require("=\"");
    const std::size_t valueAt = at_;
    SkipBehind("\"");
    tag.attributes.emplace_back(name, bytes_.substr(valueAt, at_ - 1 - valueAt));
  }
}

std::string_view HelpTagReader::ReadName() {
  const std::size_t start = at_;
  at_ = std::min(bytes_.find_first_not_of(kNameCharacters, at_), bytes_.size());
  if (at_ == start) throw DamagedHelp();
  return bytes_.substr(start, at_ - start);
}

void HelpTagReader::SkipBlanks() {
  at_ = std::min(bytes_.find_first_not_of(kBlanks, at_), bytes_.size());
}

// A comment, or the document's type.
void HelpTagReader::SkipDeclaration() { SkipBehind(Takes("--") ? "-->" : ">"); }

void HelpTagReader::SkipBehind(std::string_view end) {
  const std::size_t found = bytes_.find(end, at_);
  if (found == std::string_view::npos) throw DamagedHelp();
  at_ = found + end.size();
}

bool HelpTagReader::Takes(std::string_view text) {
  if (!bytes_.substr(at_).starts_with(text)) return false;
  at_ += text.size();
  return true;
}

void HelpTagReader::Require(std::string_view text) {
  if (!Takes(text)) throw DamagedHelp();
}

}  // namespace tarvo
