#include "frontends/qt/text.h"

#include <QGuiApplication>
#include <QTextDocument>

#include "base/text.h"
#include "frontends/common/captions.h"

namespace tarvo::qt {

QString ToText(std::string_view text) {
  const std::string valid = ValidUtf8(text);
  return QString::fromUtf8(valid.data(), static_cast<qsizetype>(valid.size()));
}

QString ToLines(std::string_view text) { return ToText(WithLineFeeds(text)); }

QString ToCaption(std::string_view caption) {
  // What follows a tab would be drawn as a shortcut.
  return ToText(caption).replace('\t', ' ');
}

QString WithoutAccessKey(std::string_view caption) {
  return ToText(tarvo::WithoutAccessKey(caption));
}

QString WithoutMeaning(const QString& text) { return QString(text).replace('&', "&&"); }

QString ToToolTip(std::string_view text) {
  const QString plain = ToLines(text);
  return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain) : plain;
}

std::string FromText(const QString& text) { return text.toStdString(); }

QFont ToFont(const Font& font) {
  const Font standard;
  if (font.Name == standard.Name && font.Size == standard.Size && !font.Bold)
    return QGuiApplication::font();
  QFont drawn(ToText(font.Name));
  drawn.setPointSizeF(font.Size > 0 ? static_cast<double>(font.Size) : 1);
  drawn.setBold(font.Bold);
  return drawn;
}

}  // namespace tarvo::qt
