// The parameters of a phrase: "%1" and its like filled from a text of fields. The input is the
// phrase, a line feed, and the fields.

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "forms/null_front_end.h"
#include "input.h"
#include "memory_platform.h"
#include "require.h"
#include "translate/translator.h"

namespace tarvo::fuzz {
namespace {

constexpr std::string_view kBar = "\u00A6";

std::vector<std::string> FieldsOf(std::string_view parameters) {
  std::vector<std::string> fields(1);
  for (std::size_t i = 0; i < parameters.size();) {
    if (parameters.substr(i).starts_with(kBar)) {
      fields.emplace_back();
      i += kBar.size();
    } else {
      fields.back() += parameters[i++];
    }
  }
  return fields;
}

// What GetParameter promises, said in another way.
std::string ExpectedField(const std::vector<std::string>& fields, unsigned number) {
  return number == 0 ? "" : fields[std::min<std::size_t>(number, fields.size()) - 1];
}

std::string ExpectedText(std::string_view phrase, const std::vector<std::string>& fields) {
  if (phrase.find("%1") == std::string_view::npos) return std::string(phrase);
  std::string text;
  while (!phrase.empty()) {
    const bool isField = phrase.size() > 1 && phrase[0] == '%' &&
                         std::string_view("0123456789").find(phrase[1]) != std::string_view::npos;
    text += isField ? ExpectedField(fields, static_cast<unsigned>(phrase[1] - '0'))
                    : std::string(phrase.substr(0, 1));
    phrase.remove_prefix(isField ? 2 : 1);
  }
  return text;
}

void Run(Input input) {
  static MemoryPlatform platform;
  static NullFrontEnd frontEnd;
  static Library library(platform);
  static Translator translator(platform, frontEnd, library);

  // A long phrase full of numbers would only copy the same fields again and again.
  const std::string_view phrase = input.Line().substr(0, 200);
  const std::string_view parameters = input.Rest();
  const std::vector<std::string> fields = FieldsOf(parameters);
  for (unsigned number = 0; number <= 12; ++number) {
    Require(Translator::GetParameter(parameters, static_cast<int>(number)) ==
                ExpectedField(fields, number),
            "a parameter is the field of its number");
  }
  Require(Translator::GetParameter(parameters, -1).empty(), "there is no field before the first");

  const std::string text = translator.Translate(phrase, parameters);
  Require(text == ExpectedText(phrase, fields),
          "every field stands where the phrase has its number");
  Require(translator.Translate(phrase) == ExpectedText(phrase, {""}),
          "no parameters are one empty");
  // Valid text stays valid: a separator is never found inside a character.
  if (ValidUtf8(phrase) == phrase && ValidUtf8(parameters) == parameters) {
    Require(ValidUtf8(text) == text, "valid UTF-8 gives valid UTF-8");
  }
}

}  // namespace
}  // namespace tarvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvo::fuzz::Run({data, size});
  return 0;
}
