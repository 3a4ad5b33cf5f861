#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "forms/controls.h"

namespace tarvo::qt {

// What every control has: its name, its place, whether it is enabled and seen.
void SyncBasics(QWidget& widget, const Control& control);

// The widgets of small windows. Each brings itself in line with the state of one control.

class LabelWidget : public QLabel {
 public:
  explicit LabelWidget(QWidget* parent);
  void Sync(const Label& label);
};

class ButtonWidget : public QPushButton {
 public:
  explicit ButtonWidget(QWidget* parent) : QPushButton(parent) { setAutoDefault(false); }
  void Sync(const Button& button);
};

class FrameWidget : public QGroupBox {
 public:
  explicit FrameWidget(QWidget* parent) : QGroupBox(parent) {}
  void Sync(const Frame& frame);
};

class ImageWidget : public QWidget {
 public:
  explicit ImageWidget(QWidget* parent) : QWidget(parent) {}
  void Sync(const ImageControl& image);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  PicturePointer picture_;
  QIcon icon_;
};

class LineWidget : public QWidget {
 public:
  explicit LineWidget(QWidget* parent) : QWidget(parent) {}
  void Sync(const Line& line);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarvo::qt
