#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <QWidget>
#include <memory>

#include "forms/form.h"
#include "frontends/qt/seam.h"

namespace tarvo::qt {

// A window on the screen: draws a form's state and calls its handlers.
class FormWindow : public QObject {
 public:
  FormWindow(Form& form, Seam& seam, std::unique_ptr<QWidget> widget);
  ~FormWindow() override;

  const Form& State() const { return form_; }
  QWidget& Widget() { return *widget_; }

  // Brings the window in line with the form's state. Cheap when nothing has changed.
  virtual void Sync();

  virtual void Show();

  // Draws the present state at once; no handler runs. A window that has never been drawn, since it
  // has just been shown, is waited for, and then handlers may run.
  virtual void Repaint();

  // Takes the window off the screen. The form may go away afterwards.
  virtual void Close();

  // In pixels: the size between menu and frame, and of the bars whether they are seen or not.
  virtual QSize InnerSize() { return widget_->size(); }
  virtual int ToolbarHeight() { return 0; }
  virtual int StatusBarHeight() { return 0; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

  // An event of the window itself; true when it is to go no further.
  virtual bool WindowEvent(QEvent& event);

  Form& form_;
  Seam& seam_;
  QPointer<QWidget> widget_;  // its own, unless an owner on the screen has gone before
  bool shown_ = false;

 private:
  bool KeyDown(int key, bool fromKeypad);
  void Activated();

  bool wasDrawn_ = false;
  bool awaitsFirstActivation_ = false;
  bool lostToOwnDialog_ = false;
  bool closed_ = false;
};

}  // namespace tarvo::qt
