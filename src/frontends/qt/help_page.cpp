#include "frontends/qt/help_page.h"

#include <QApplication>
#include <QDesktopServices>
#include <QPalette>
#include <QTextDocument>
#include <QUrl>
#include <QWheelEvent>
#include <algorithm>

#include "frontends/qt/text.h"

namespace tarvo::qt {
namespace {

constexpr const char* kTopicScheme = "topic";
constexpr int kMargin = 12;

QUrl UrlOf(const std::string& id) {
  QUrl url;
  url.setScheme(kTopicScheme);
  url.setPath(ToText(id));
  return url;
}

QString StyleFor(const QPalette& palette) {
  return QString(
             "h2 { margin-top: 0; margin-bottom: 10px; }"
             "h3 { margin-top: 16px; margin-bottom: 6px; }"
             "p { margin-top: 0; margin-bottom: 8px; }"
             "li { margin-bottom: 4px; }"
             "ul, ol { margin-top: 0; margin-bottom: 8px; }"
             "table { border-collapse: collapse; margin-top: 4px; margin-bottom: 12px; }"
             "th, td { border: 1px solid %1; padding: 4px; }"
             "th { background-color: %2; text-align: left; }"
             "code, kbd, pre { font-family: monospace; }"
             "a { color: %3; }")
      .arg(palette.color(QPalette::Mid).name(), palette.color(QPalette::AlternateBase).name(),
           palette.color(QPalette::Link).name());
}

}  // namespace

HelpPage::HelpPage(QWidget* parent) : QTextBrowser(parent) {
  setObjectName("helpPage");
  setOpenLinks(false);
  document()->setDocumentMargin(kMargin);
  document()->setDefaultStyleSheet(StyleFor(palette()));
  connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::FollowLink);
  connect(this, &QTextBrowser::historyChanged, this,
          [this] { setAccessibleName(ToText(Topic().title)); });
}

void HelpPage::SetSection(const HelpSection& section) {
  section_ = &section;
  ShowTopic(section.topics.front().id);
  reload();
  clearHistory();
}

void HelpPage::ShowTopic(const std::string& id) {
  if (section_->Find(id)) setSource(UrlOf(id), QTextDocument::HtmlResource);
}

const HelpTopic& HelpPage::Topic() const {
  const HelpTopic* const topic = section_->Find(FromText(source().path()));
  return topic ? *topic : section_->topics.front();
}

void HelpPage::SetZoom(int percent) {
  zoom_ = std::clamp(percent, kSmallestZoom, kLargestZoom);
  QFont font = QApplication::font(this);
  font.setPointSizeF(font.pointSizeF() * zoom_ / 100);
  setFont(font);
}

// Never a null value: the document would look for the file itself.
QVariant HelpPage::loadResource(int, const QUrl& url) {
  const HelpTopic* const topic =
      url.scheme() == kTopicScheme ? section_->Find(FromText(url.path())) : nullptr;
  return topic ? ToText(topic->body) : QString();
}

void HelpPage::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    QTextBrowser::wheelEvent(event);
    return;
  }
  wheelTurned_ += event->angleDelta().y();
  const int steps = wheelTurned_ / QWheelEvent::DefaultDeltasPerStep;
  wheelTurned_ -= steps * QWheelEvent::DefaultDeltasPerStep;
  SetZoom(zoom_ + steps * kZoomStep);
  event->accept();
}

void HelpPage::FollowLink(const QUrl& link) {
  const bool leadsOutside =
      link.scheme() == "http" || link.scheme() == "https" || link.scheme() == "mailto";
  if (leadsOutside) {
    QDesktopServices::openUrl(link);
    return;
  }
  for (const HelpTopic& topic : section_->topics) {
    if (link.fragment() == ToText(section_->LinkName(topic))) {
      ShowTopic(topic.id);
      return;
    }
  }
}

}  // namespace tarvo::qt
