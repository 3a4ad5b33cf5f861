#pragma once

#include <QString>
#include <vector>

#include "forms/help_file.h"

namespace tarvo::qt {

// The text as keywords are compared: without letter case, accents and the like.
QString Folded(const QString& text);

// A line of the index.
struct HelpIndexEntry {
  QString text;    // the keyword, followed by the topic's title when several topics have it
  QString folded;  // the keyword
  const HelpTopic* topic;
};

// The index of a section in the order of its keywords. Every title counts as a keyword too. The
// section must outlive the entries.
std::vector<HelpIndexEntry> IndexOf(const HelpSection& section);

}  // namespace tarvo::qt
