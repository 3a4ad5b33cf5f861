#include "frontends/qt/help_index.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include "frontends/qt/text.h"

namespace tarvo::qt {

QString Folded(const QString& text) {
  QString folded;
  for (const QChar character : text.normalized(QString::NormalizationForm_KD)) {
    if (!character.isMark()) folded += character;
  }
  return folded.toCaseFolded();
}

std::vector<HelpIndexEntry> IndexOf(const HelpSection& section) {
  std::vector<HelpIndexEntry> entries;
  std::map<QString, int> uses;
  for (const HelpTopic& topic : section.topics) {
    std::set<QString> own;
    const auto add = [&](const std::string& keyword) {
      HelpIndexEntry entry{ToText(keyword), Folded(ToText(keyword)), &topic};
      if (!own.insert(entry.folded).second) return;
      ++uses[entry.folded];
      entries.push_back(std::move(entry));
    };
    for (const std::string& keyword : topic.keywords) add(keyword);
    add(topic.title);
  }
  for (HelpIndexEntry& entry : entries) {
    if (uses[entry.folded] > 1) entry.text += " \u2013 " + ToText(entry.topic->title);
  }
  std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
    return std::tie(a.folded, a.text) < std::tie(b.folded, b.text);
  });
  return entries;
}

}  // namespace tarvo::qt
