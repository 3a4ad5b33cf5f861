#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QWidget>
#include <memory>
#include <vector>

#include "forms/front_end.h"
#include "forms/help_file.h"
#include "frontends/qt/help_index.h"
#include "frontends/qt/help_page.h"

namespace tarvo::qt {

// The window that shows the help: on the left the tree of topics and the index of keywords, on the
// right a topic. It runs no handler of the program's windows.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  HelpWindow();

  // Shows the part of the file that a request asks for and comes to the front. A topic that is on
  // the screen stays there unless the help has changed or is in another language now.
  void Show(const HelpFile& file, const HelpRequest& request);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* MakeContents();
  QWidget* MakeSearch();
  QWidget* MakeButtons();
  QToolButton* MakeButton(const char* name, void (HelpWindow::*pressed)());
  void SetTabOrder();
  void ConnectPage();
  void AddShortcuts();

  void SetSection(const HelpSection& section);
  void SetTexts();
  void FillContents();
  void Filter();
  void ShowChosen();
  void SelectInContents();
  void Back() { page_->backward(); }
  void Forward() { page_->forward(); }
  void Larger() { page_->SetZoom(page_->Zoom() + HelpPage::kZoomStep); }
  void Smaller() { page_->SetZoom(page_->Zoom() - HelpPage::kZoomStep); }
  void ComeToFront();

  HelpSection section_;
  std::vector<HelpIndexEntry> index_;
  HelpPage* page_;
  QTabWidget* tabs_;
  QTreeWidget* contents_ = nullptr;
  QLabel* keywordLabel_ = nullptr;
  QLineEdit* keyword_ = nullptr;
  QListWidget* found_ = nullptr;
  QLabel* nothing_ = nullptr;
  QPushButton* show_ = nullptr;
  QToolButton* back_ = nullptr;
  QToolButton* forward_ = nullptr;
  QToolButton* larger_ = nullptr;
  QToolButton* smaller_ = nullptr;
};

}  // namespace tarvo::qt
