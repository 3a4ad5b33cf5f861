#include "frontends/win32/help_page.h"

#include "base/text.h"

namespace tarvo::win32 {
namespace {

constexpr std::string_view kIndexName = "index";

bool BeginsWith(std::string_view keyword, std::string_view key) {
  return EqualIgnoringCase(keyword.substr(0, key.size()), key);
}

const HelpTopic* TopicWith(std::string_view key, const HelpSection& section) {
  if (key.empty()) return nullptr;
  for (const HelpTopic& topic : section.topics) {
    if (BeginsWith(topic.title, key)) return &topic;
    for (const std::string& keyword : topic.keywords) {
      if (BeginsWith(keyword, key)) return &topic;
    }
  }
  return nullptr;
}

// Where the section of a language begins; npos when it is not found.
std::size_t SectionOf(std::string_view page, const std::string& language) {
  std::size_t begin = page.find("<section ");
  while (begin != std::string_view::npos) {
    const std::string_view tag = page.substr(begin, page.find('>', begin) - begin);
    if (tag.find(" lang=\"" + language + "\"") != std::string_view::npos) break;
    begin = page.find("<section ", begin + 1);
  }
  return begin;
}

// Gives the index of a section, which is its last part, a name; false when there is none.
bool NameIndex(std::string& page, const std::string& language) {
  const std::size_t begin = SectionOf(page, language);
  const std::size_t end = page.find("</section>", begin);
  if (begin == std::string::npos || end == std::string::npos) return false;
  const std::size_t index = page.rfind("<nav>", end);
  if (index == std::string::npos || index < begin) return false;
  page.insert(index, "<a id=\"" + std::string(kIndexName) + "\"></a>\n");
  return true;
}

}  // namespace

std::string HelpPage(std::string_view fileBytes, const HelpFile& help, const HelpRequest& request) {
  const HelpSection& section = help.In(request.language);
  std::string page(fileBytes);
  std::string place = section.language;
  if (const HelpTopic* const topic = TopicWith(request.key, section)) {
    place = section.LinkName(*topic);
  } else if (request.command == HelpCommand::kPartialKey && NameIndex(page, section.language)) {
    place = kIndexName;
  }
  // Where a file is opened by its name, no place in it can be named: the page goes there itself.
  const std::size_t head = page.find("</head>");
  if (head != std::string::npos)
    page.insert(head, "<meta http-equiv=\"refresh\" content=\"0; url=#" + place + "\">\n");
  return page;
}

}  // namespace tarvo::win32
