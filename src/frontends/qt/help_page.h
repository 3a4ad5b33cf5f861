#pragma once

#include <QTextBrowser>
#include <string>

#include "forms/help_file.h"

namespace tarvo::qt {

// The part of the help window that shows a topic, with the topics shown before and after it. It
// shows only what is in the section it was given: nothing is ever fetched. A link to another topic
// shows that topic, one that leads to the outside goes to the desktop, any other does nothing.
class HelpPage : public QTextBrowser {
  Q_OBJECT

 public:
  explicit HelpPage(QWidget* parent);

  // Shows the first topic of a section, without topics before it. The section must outlive the page
  // or the next call.
  void SetSection(const HelpSection& section);

  // Shows a topic of the section; nothing when it has no such topic.
  void ShowTopic(const std::string& id);

  // The topic that is shown.
  const HelpTopic& Topic() const;

  // Sizes of the text in percent of the usual one.
  static constexpr int kSmallestZoom = 50;
  static constexpr int kLargestZoom = 300;
  static constexpr int kZoomStep = 10;

  int Zoom() const { return zoom_; }
  void SetZoom(int percent);  // cut to the two sizes

 protected:
  QVariant loadResource(int type, const QUrl& url) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void FollowLink(const QUrl& link);

  const HelpSection* section_ = nullptr;
  int zoom_ = 100;
  int wheelTurned_ = 0;  // in eighths of a degree, until it is enough for a step
};

}  // namespace tarvo::qt
