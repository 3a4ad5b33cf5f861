#pragma once

#include <string_view>

namespace tarvo::help {

// The form of a help file, an HTML document whose elements are all closed and properly nested.
// docs/help-file.md explains it.

// Stands near the beginning; the number is the version of the form.
inline constexpr std::string_view kMark = "<meta name=\"generator\" content=\"Tarvo Help ";
inline constexpr std::string_view kVersion = "1\">";
inline constexpr std::size_t kMarkWithin = 1024;  // bytes from the start

inline constexpr std::string_view kSection = "section";  // one language
inline constexpr std::string_view kTopic = "article";

inline constexpr std::size_t kDeepestNesting = 24;

// Where an element may stand.
enum class Place {
  kFrame,         // around the topics
  kInTopic,       // in a topic
  kBoth,          // in either
  kEmpty,         // around the topics, without an end tag
  kEmptyInTopic,  // in a topic, without an end tag
};

struct Element {
  std::string_view name;
  Place place;
};

// Every element that a help file may have. None of them loads or runs anything.
inline constexpr Element kElements[] = {
    {"html", Place::kFrame},      {"head", Place::kFrame},   {"meta", Place::kEmpty},
    {"title", Place::kFrame},     {"style", Place::kFrame},  {"body", Place::kFrame},
    {"header", Place::kFrame},    {"nav", Place::kFrame},    {kSection, Place::kFrame},
    {kTopic, Place::kFrame},      {"h1", Place::kFrame},     {"h2", Place::kBoth},
    {"h3", Place::kInTopic},      {"p", Place::kBoth},       {"ul", Place::kBoth},
    {"ol", Place::kBoth},         {"li", Place::kBoth},      {"table", Place::kInTopic},
    {"tr", Place::kInTopic},      {"th", Place::kInTopic},   {"td", Place::kInTopic},
    {"pre", Place::kInTopic},     {"a", Place::kBoth},       {"b", Place::kInTopic},
    {"i", Place::kInTopic},       {"code", Place::kInTopic}, {"kbd", Place::kInTopic},
    {"br", Place::kEmptyInTopic},
};

// The only attribute in a topic, of a link.
inline constexpr std::string_view kLinkAttribute = "href";

}  // namespace tarvo::help
