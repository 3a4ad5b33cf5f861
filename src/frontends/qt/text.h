#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "forms/control.h"

namespace tarvo::qt {

// The program's text as the toolkit draws it: plain, with U+FFFD for bytes that are no UTF-8.
QString ToText(std::string_view text);

// The same with a carriage return, alone or before a line feed, as a line break.
QString ToLines(std::string_view text);

// A caption with "&" before its access key, as menus and buttons take it.
QString ToCaption(std::string_view caption);

// A caption as it is read: without the marks of access keys.
QString WithoutAccessKey(std::string_view caption);

// A text that may hold "&", for places that take captions.
QString WithoutMeaning(const QString& text);

// A tool tip, which would otherwise be taken for markup when it looks like it.
QString ToToolTip(std::string_view text);

// The program's own text; bytes as UTF-8.
std::string FromText(const QString& text);

// A control's font. The standard one of all controls is the user's own.
QFont ToFont(const Font& font);

}  // namespace tarvo::qt
