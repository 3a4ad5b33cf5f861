#include "forms/help_file.h"

#include <algorithm>
#include <set>

#include "base/runtime_error.h"
#include "base/text.h"
#include "forms/help_format.h"
#include "forms/help_tags.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::string_view kEnglish = "en";

[[noreturn]] void Refuse(std::string_view fileName, const std::string& why) {
  throw RuntimeError(kInvalidFileFormat, "The help file \"" + ValidUtf8(fileName) +
                                             "\" cannot be used: it " + why + ".");
}

struct LabelAttribute {
  std::string_view name;
  std::string HelpLabels::*label;
};

constexpr LabelAttribute kLabelAttributes[] = {
    {"data-contents", &HelpLabels::contents}, {"data-search", &HelpLabels::search},
    {"data-keyword", &HelpLabels::keyword},   {"data-index", &HelpLabels::index},
    {"data-nothing", &HelpLabels::nothing},   {"data-show", &HelpLabels::show},
    {"data-back", &HelpLabels::back},         {"data-forward", &HelpLabels::forward},
    {"data-larger", &HelpLabels::larger},     {"data-smaller", &HelpLabels::smaller},
};

std::string Required(const HelpTag& tag, std::string_view attribute) {
  std::string value = tag.Attribute(attribute);
  if (value.empty()) throw DamagedHelp();
  return value;
}

std::vector<std::string> SplitKeywords(std::string_view text) {
  std::vector<std::string> keywords;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(';'), text.size());
    std::string_view word = text.substr(0, end);
    word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
    word = word.substr(0, word.find_last_not_of(' ') + 1);
    if (!word.empty()) keywords.emplace_back(word);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return keywords;
}

// Takes the sections and topics out of the document while its tags go by.
class SectionCollector {
 public:
  explicit SectionCollector(HelpFile& file) : file_(file) {}

  void Start(const HelpTag& tag) {
    if (tag.name == help::kSection) StartSection(tag);
    if (tag.name == help::kTopic) StartTopic(tag);
  }

  // `body` is what stands between the element's tags.
  void End(std::string_view name, std::string_view body) {
    if (name == help::kTopic) Section().topics.back().body = body;
    if (name == help::kSection) EndSection();
  }

 private:
  HelpSection& Section() {
    if (!inSection_) throw DamagedHelp();
    return file_.sections.back();
  }

  void StartSection(const HelpTag& tag) {
    if (inSection_) throw DamagedHelp();
    HelpSection section;
    section.language = Required(tag, "lang");
    if (!languages_.insert(section.language).second) throw DamagedHelp();
    section.title = Required(tag, "data-title");
    for (const LabelAttribute& attribute : kLabelAttributes) {
      section.labels.*attribute.label = Required(tag, attribute.name);
    }
    file_.sections.push_back(std::move(section));
    ids_.clear();
    inSection_ = true;
  }

  void EndSection() {
    if (Section().topics.empty()) throw DamagedHelp();
    inSection_ = false;
  }

  void StartTopic(const HelpTag& tag) {
    HelpSection& section = Section();
    const std::string prefix = section.language + "-";
    HelpTopic topic;
    topic.id = Required(tag, "id");
    if (topic.id.size() <= prefix.size() || !topic.id.starts_with(prefix)) throw DamagedHelp();
    topic.id.erase(0, prefix.size());
    if (!ids_.insert(topic.id).second) throw DamagedHelp();
    topic.title = Required(tag, "data-title");
    const std::string level = Required(tag, "data-level");
    if (level != "1" && level != "2") throw DamagedHelp();
    topic.level = level == "1" ? 1 : 2;
    if (section.topics.empty() && topic.level != 1) throw DamagedHelp();
    topic.keywords = SplitKeywords(tag.Attribute("data-keywords"));
    section.topics.push_back(std::move(topic));
  }

  HelpFile& file_;
  bool inSection_ = false;
  std::set<std::string> languages_;
  std::set<std::string> ids_;  // of the section's topics
};

void Collect(std::string_view bytes, HelpFile& file) {
  HelpTagReader reader(bytes);
  SectionCollector collector(file);
  while (const auto tag = reader.Next()) {
    if (tag->isEnd) {
      collector.End(tag->name, tag->body);
    } else {
      collector.Start(*tag);
    }
  }
}

bool IsUtf8Text(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const Character character = CharacterAt(bytes, i);
    if (character.codePoint == 0 || character.codePoint >= kBadByte) return false;
    i += character.size;
  }
  return true;
}

void CheckMark(std::string_view bytes, std::string_view fileName) {
  const std::string_view start = bytes.substr(0, help::kMarkWithin);
  const std::size_t mark = start.find(help::kMark);
  if (mark == std::string_view::npos) Refuse(fileName, "is no help file of Tarvo");
  if (!start.substr(mark + help::kMark.size()).starts_with(help::kVersion)) {
    Refuse(fileName, "is a help file of another version of Tarvo");
  }
}

const HelpSection* FindSection(const HelpFile& file, std::string_view language) {
  for (const HelpSection& section : file.sections) {
    if (EqualIgnoringCase(section.language, language)) return &section;
  }
  return nullptr;
}

}  // namespace

const HelpTopic* HelpSection::Find(std::string_view id) const {
  for (const HelpTopic& topic : topics) {
    if (topic.id == id) return &topic;
  }
  return nullptr;
}

const HelpSection& HelpFile::In(std::string_view language) const {
  const std::string name = ReplaceAll(language.substr(0, language.find_first_of(".@")), "_", "-");
  for (const std::string_view wanted :
       {std::string_view(name), std::string_view(name).substr(0, name.find('-')), kEnglish}) {
    if (const HelpSection* const section = FindSection(*this, wanted)) return *section;
  }
  return sections.front();
}

HelpFile ParseHelpFile(std::string_view bytes, std::string_view fileName) {
  if (bytes.size() > kLargestHelpFile) Refuse(fileName, "is too large");
  CheckMark(bytes, fileName);
  if (!IsUtf8Text(bytes)) Refuse(fileName, "is not in UTF-8");
  HelpFile file;
  try {
    Collect(bytes, file);
  } catch (const DamagedHelp&) {
    Refuse(fileName, "is cut short or damaged");
  }
  if (!FindSection(file, kEnglish)) Refuse(fileName, "is cut short or damaged");
  return file;
}

HelpFile ReadHelpFile(Platform& platform, std::string_view path) {
  const auto file = platform.OpenFile(ResolveName(platform, path), OpenFor::kReading);
  const std::uint64_t size = file->Size();
  if (size > kLargestHelpFile) Refuse(path, "is too large");
  return ParseHelpFile(file->ReadAt(0, static_cast<std::size_t>(size)), path);
}

}  // namespace tarvo
