#include "support/made_help.h"

namespace tarvo::test {

std::string HelpTopicText(const std::string& language, const std::string& id,
                          const std::string& title, const std::string& keywords, int level,
                          const std::string& body) {
  return "<article id=\"" + language + "-" + id + "\" data-level=\"" + std::to_string(level) +
         "\" data-title=\"" + title + "\" data-keywords=\"" + keywords + "\">" + body +
         "</article>\n";
}

std::string HelpSectionText(const std::string& language, const std::string& topics) {
  std::string start = "<section lang=\"" + language + "\" data-title=\"Help (" + language + ")\"";
  for (const char* label : {"contents", "search", "keyword", "index", "nothing", "show", "back",
                            "forward", "larger", "smaller"}) {
    start += std::string(" data-") + label + "=\"&amp;" + label + " &lt;" + language + "&gt;\"";
  }
  return start + ">\n<h1>Help</h1>\n" + topics + "</section>\n";
}

std::string HelpDocument(const std::string& sections) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"generator\" content=\"Tarvo Help 1\">\n<title>Help</title>\n"
         "<style>p > b { margin: 0 }</style>\n</head>\n<body>\n" +
         sections + "</body>\n</html>\n";
}

}  // namespace tarvo::test
