#pragma once

#include <string>
#include <string_view>

#include "base/text.h"
#include "common/library.h"
#include "forms/form.h"
#include "forms/front_end.h"
#include "platform/platform.h"
#include "translate/dictionary_table.h"
#include "translate/initial_index.h"

namespace tarvo {

// Turns English phrases into the user's language, fills parameters into them, and translates whole
// windows. It also keeps the application's title, which is translated with everything else.
class Translator {
 public:
  Translator(Platform& platform, FrontEnd& frontEnd, Library& library)
      : platform_(platform), frontEnd_(frontEnd), library_(library) {}

  // Detects the locale, then loads a dictionary if a file of that name exists (relative to the
  // current folder, in any letter case, hidden or not) and translates the application's title.
  // Error 321 for a file that is no dictionary, or what opening and reading it raise; then no
  // dictionary is open.
  void LoadDictionary(std::string_view fileName);
  bool HasDictionary() const { return !english_.FileName().empty(); }

  // The language of the translations as the dictionary names it, such as "de" or "de_AT"; ""
  // without a dictionary or when it does not say.
  std::string Language() const { return ValidUtf8(english_.Language()); }

  // The phrase in the user's language, itself when the dictionary lacks it; then, if the text holds
  // "%1" at all, every "%" with a digit is replaced by that field of the parameters, which are
  // separated by U+00A6.
  std::string Translate(std::string_view phrase, std::string_view parameters = {});

  // Field n, counted from 1, of a text separated by U+00A6: "" for 0, the last field for a number
  // too large.
  static std::string GetParameter(std::string_view parameters, int n);

  // Translates the window's caption and its controls' texts, under the hourglass pointer. The first
  // call of a run sets AppTitle and translates the application's title once more. Without a
  // dictionary every call sets AppTitle, and nothing else changes.
  void TranslateWindow(Form& form);

  // The runtime's application title: "Tarvo" until a dictionary translates it.
  const std::string& ApplicationTitle() const { return applicationTitle_; }

  // The title as the first window translation found it: the prefix of the main window's settings
  // keys.
  const std::string& AppTitle() const { return appTitle_; }

 private:
  // Fills the index with the first position of each initial of a field, in the cursor's order.
  static void BuildIndex(DictionaryTable& cursor, int field, InitialIndex& index);
  std::string_view Lookup(std::string_view phrase);
  void TranslateText(std::string& text);

  Platform& platform_;
  FrontEnd& frontEnd_;
  Library& library_;
  DictionaryTable english_;      // ordered by the English phrase
  DictionaryTable translation_;  // ordered by the translation
  InitialIndex englishIndex_;
  InitialIndex translationIndex_;
  std::string applicationTitle_ = "Tarvo";
  std::string appTitle_;
};

}  // namespace tarvo
