#include "translate/translator.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "platform/names.h"

namespace tarvo {
namespace {

constexpr std::string_view kFieldSeparator = "\u00A6";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string FillParameters(std::string_view text, std::string_view parameters) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 1 < text.size() && IsDigit(text[i + 1])) {
      result += Translator::GetParameter(parameters, text[++i] - '0');
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace

void Translator::LoadDictionary(std::string_view fileName) {
  library_.DetectLocale();
  english_ = {};
  translation_ = {};
  if (!FileExists(platform_, fileName)) return;

  english_.SetFileName(platform_, fileName);
  translation_.SetFileName(english_);
  english_.SetOrderField(kEnglishField);
  translation_.SetOrderField(kTranslationField);
  BuildIndex(english_, kEnglishPosition, englishIndex_);
  BuildIndex(translation_, kTranslationPosition, translationIndex_);
  applicationTitle_ = Translate(applicationTitle_);
}

void Translator::BuildIndex(DictionaryTable& cursor, int field, InitialIndex& index) {
  index.Clear();
  std::string_view previous;
  for (int position = 1; position <= cursor.RecordCount(); ++position, cursor.MoveNext()) {
    const std::string_view initial = FirstCharacter(cursor.CurrentRecord().Item(field).Value());
    if (initial == previous) continue;
    previous = initial;
    if (!initial.empty()) index.Add(CharacterAt(initial, 0).codePoint, position);
  }
}

std::string Translator::Translate(std::string_view phrase, std::string_view parameters) {
  const std::string_view text = Lookup(phrase);
  if (text.find("%1") == std::string_view::npos) return std::string(text);
  return FillParameters(text, parameters);
}

// A jump to the first record with the phrase's initial, then a scan forward for the phrase itself.
// It ends where the initial does, because no record with another initial equals the phrase.
std::string_view Translator::Lookup(std::string_view phrase) {
  if (!HasDictionary() || phrase.empty()) return phrase;
  const int first = englishIndex_.Find(CharacterAt(phrase, 0).codePoint);
  if (first == 0) return phrase;
  english_.MoveTo(first);
  if (!english_.ScanFor(phrase)) return phrase;
  const std::string_view translation = english_.CurrentRecord().Item(kTranslationPosition).Value();
  return IsBlank(translation) ? phrase : translation;
}

std::string Translator::GetParameter(std::string_view parameters, int n) {
  std::string_view field;
  std::size_t start = 0;
  for (int i = 0; i < n; ++i) {
    const std::size_t end = parameters.find(kFieldSeparator, start);
    field = parameters.substr(start, end - start);
    if (end == std::string_view::npos) break;
    start = end + kFieldSeparator.size();
  }
  return std::string(field);
}

void Translator::TranslateWindow(Form& form) {
  if (!HasDictionary()) {
    appTitle_ = applicationTitle_;
    return;
  }
  frontEnd_.SetMousePointer(kHourglassPointer);
  TranslateText(form.Caption);
  if (appTitle_.empty()) {
    appTitle_ = applicationTitle_;
    applicationTitle_ = Translate(applicationTitle_);
  }
  for (Control* control : form.Controls()) {
    for (std::string* text : control->TranslatableTexts()) {
      try {
        TranslateText(*text);
      } catch (const RuntimeError&) {
        // A text that cannot be translated stays as it is; the others still get their turn.
      }
    }
  }
  frontEnd_.SetMousePointer(kDefaultPointer);
}

void Translator::TranslateText(std::string& text) {
  std::string translation = Translate(text);
  if (!translation.empty()) text = std::move(translation);
}

}  // namespace tarvo
