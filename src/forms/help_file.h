#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace tarvo {

// One page of the help.
struct HelpTopic {
  std::string id;     // the same in every language, such as "download"
  std::string title;  // plain text
  int level = 1;      // 1, or 2 for a topic that belongs to the one of level 1 before it
  std::vector<std::string> keywords;
  std::string body;  // HTML of the few elements that a topic may have; links go to "#" + LinkName

  bool operator==(const HelpTopic&) const = default;
};

// The few texts that a window which shows the help has of its own, with "&" before access keys.
struct HelpLabels {
  std::string contents;  // the page with the tree of topics
  std::string search;    // the page with the index of keywords
  std::string keyword;   // what the field is for
  std::string index;     // what the list is, read by screen readers
  std::string nothing;   // no keyword matches
  std::string show;      // shows the chosen topic
  std::string back;
  std::string forward;
  std::string larger;  // the text
  std::string smaller;

  bool operator==(const HelpLabels&) const = default;
};

// The help in one language.
struct HelpSection {
  std::string language;  // such as "de"
  std::string title;
  HelpLabels labels;
  std::vector<HelpTopic> topics;  // at least one; the first has level 1

  bool operator==(const HelpSection&) const = default;

  // The topic with that id; null when there is none.
  const HelpTopic* Find(std::string_view id) const;

  // The name by which links in topics of this section mean a topic.
  std::string LinkName(const HelpTopic& topic) const { return language + "-" + topic.id; }
};

// The program's help, "TARVO.HLP": one HTML file with a section for each language.
// docs/help-file.md describes its form.
struct HelpFile {
  std::vector<HelpSection> sections;  // English among them

  // The section for a language as dictionaries and locales name it ("de", "de_AT", "de-AT.UTF-8"):
  // the one with exactly that name, else the one of the language without its region, else English.
  const HelpSection& In(std::string_view language) const;
};

// A larger file is refused unread, in bytes.
inline constexpr std::size_t kLargestHelpFile = std::size_t{8} << 20;

// Reads a help file, found in any letter case of its name. Error 53 when it is missing, and what
// opening and reading it raise; 321 with a sentence that says which file and why when it is no help
// file of the program's, is cut short or damaged in its structure, is not UTF-8, or is too large.
HelpFile ReadHelpFile(Platform& platform, std::string_view path);

// The same from bytes in memory. `fileName` is named in errors.
HelpFile ParseHelpFile(std::string_view bytes, std::string_view fileName);

}  // namespace tarvo
