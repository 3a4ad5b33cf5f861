#pragma once

#include <string>

namespace tarvo::test {

// Parts of a help file with the sections, topics and bodies of a test. Texts that stand in
// attributes are given as they are to stand there. A section's title is "Help (LANGUAGE)", its
// labels are "&NAME <LANGUAGE>".
std::string HelpTopicText(const std::string& language, const std::string& id,
                          const std::string& title, const std::string& keywords, int level = 1,
                          const std::string& body = "<p>Text</p>");
std::string HelpSectionText(const std::string& language, const std::string& topics);
std::string HelpDocument(const std::string& sections);

}  // namespace tarvo::test
