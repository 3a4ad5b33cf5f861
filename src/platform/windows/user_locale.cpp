#include "platform/windows/user_locale.h"

#include <windows.h>

#include "base/text.h"
#include "platform/windows/wide_text.h"

namespace tarvo {

std::string UsersShortDate(CalendarDate date) {
  SYSTEMTIME calendar{};
  calendar.wYear = static_cast<WORD>(date.year);
  calendar.wMonth = static_cast<WORD>(date.month);
  calendar.wDay = static_cast<WORD>(date.day);
  wchar_t text[128];
  const int size = ::GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &calendar, nullptr,
                                     text, static_cast<int>(std::size(text)), nullptr);
  return size > 0 ? Narrow(text) : std::string();
}

std::string UsersDecimalSeparator() {
  wchar_t text[16];
  const int size = ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, text,
                                     static_cast<int>(std::size(text)));
  const std::string sign = size > 0 ? Narrow(text) : std::string();
  // The user may have entered anything there.
  return sign.empty() ? "." : std::string(FirstCharacter(sign));
}

}  // namespace tarvo
