#include "frontends/qt/dialog_controls.h"

#include <QPainter>
#include <algorithm>

#include "frontends/qt/pictures.h"
#include "frontends/qt/text.h"
#include "frontends/qt/twips.h"

namespace tarvo::qt {

void SyncBasics(QWidget& widget, const Control& control) {
  if (widget.objectName().isEmpty()) widget.setObjectName(ToText(control.Name));
  widget.setGeometry(ToPixels(control.Place));
  widget.setEnabled(control.Enabled);
  widget.setVisible(control.Visible);
}

LabelWidget::LabelWidget(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void LabelWidget::Sync(const Label& label) {
  SyncBasics(*this, label);
  const QFont drawn = ToFont(label.Font);
  if (font() != drawn) setFont(drawn);
  // A label that has been measured to its text must not lose the last fraction of a pixel.
  const int width = kScale.ToPixelsUp(label.Place.Width);
  resize(std::max(width, 0) + 2, height());
  setWordWrap(height() >= 2 * fontMetrics().height());
  setText(ToLines(label.Caption));
  setToolTip(ToToolTip(label.ToolTipText));
}

void ButtonWidget::Sync(const Button& button) {
  SyncBasics(*this, button);
  setText(ToCaption(button.Caption));
  setAccessibleName(WithoutAccessKey(button.Caption));
  setToolTip(ToToolTip(button.ToolTipText));
  setDefault(button.IsDefault);
}

void FrameWidget::Sync(const Frame& frame) {
  SyncBasics(*this, frame);
  setTitle(ToCaption(frame.Caption));
  setToolTip(ToToolTip(frame.ToolTipText));
}

void ImageWidget::Sync(const ImageControl& image) {
  SyncBasics(*this, image);
  setToolTip(ToToolTip(image.ToolTipText));
  if (picture_ == image.Picture) return;
  picture_ = image.Picture;
  icon_ = picture_ ? IconOf(picture_) : QIcon();
  update();
}

void ImageWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!icon_.isNull()) icon_.paint(&painter, rect());
}

void LineWidget::Sync(const Line& line) {
  SyncBasics(*this, line);
  const QRect place = ToPixels(line.Place);
  setGeometry(QRect(place.topLeft(), place.size().expandedTo({1, 1})));
}

void LineWidget::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), palette().color(QPalette::Mid));
}

}  // namespace tarvo::qt
