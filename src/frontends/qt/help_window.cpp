#include "frontends/qt/help_window.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

#include "frontends/qt/text.h"

namespace tarvo::qt {
namespace {

constexpr QSize kUsualSize(940, 640);
constexpr int kPaneWidth = 290;
constexpr int kContentsPage = 0;
constexpr int kSearchPage = 1;
constexpr int kIdRole = Qt::UserRole;

// A button's text with the keys that do the same.
void SetCaption(QToolButton& button, const std::string& caption, const QKeySequence& keys) {
  const QString name = WithoutAccessKey(caption);
  button.setAccessibleName(name);
  button.setToolTip(
      ToToolTip(FromText(name + " (" + keys.toString(QKeySequence::NativeText) + ")")));
}

}  // namespace

HelpWindow::HelpWindow() : page_(new HelpPage(this)), tabs_(new QTabWidget(this)) {
  setObjectName("helpWindow");
  setWindowFlag(Qt::Window);
  tabs_->setObjectName("helpTabs");
  tabs_->insertTab(kContentsPage, MakeContents(), QString());
  tabs_->insertTab(kSearchPage, MakeSearch(), QString());

  auto* const right = new QWidget(this);
  auto* const column = new QVBoxLayout(right);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(MakeButtons());
  column->addWidget(page_);

  auto* const splitter = new QSplitter(this);
  splitter->setObjectName("helpSplitter");
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(tabs_);
  splitter->addWidget(right);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kPaneWidth, kUsualSize.width() - kPaneWidth});
  auto* const all = new QHBoxLayout(this);
  all->addWidget(splitter);

  ConnectPage();
  AddShortcuts();
  SetTabOrder();
  resize(kUsualSize.boundedTo(screen()->availableSize()));
}

QWidget* HelpWindow::MakeContents() {
  contents_ = new QTreeWidget(tabs_);
  contents_->setObjectName("helpContents");
  contents_->setHeaderHidden(true);
  contents_->setExpandsOnDoubleClick(false);
  const auto show = [this](const QTreeWidgetItem* item) {
    page_->ShowTopic(FromText(item->data(0, kIdRole).toString()));
  };
  connect(contents_, &QTreeWidget::itemClicked, this, show);
  connect(contents_, &QTreeWidget::itemActivated, this, show);
  return contents_;
}

QWidget* HelpWindow::MakeSearch() {
  auto* const pane = new QWidget(tabs_);
  auto* const column = new QVBoxLayout(pane);
  keywordLabel_ = new QLabel(pane);
  keyword_ = new QLineEdit(pane);
  found_ = new QListWidget(pane);
  nothing_ = new QLabel(pane);
  show_ = new QPushButton(pane);
  for (QWidget* widget : {static_cast<QWidget*>(keywordLabel_), static_cast<QWidget*>(keyword_),
                          static_cast<QWidget*>(found_), static_cast<QWidget*>(nothing_),
                          static_cast<QWidget*>(show_)}) {
    column->addWidget(widget);
  }
  column->setAlignment(show_, Qt::AlignRight);
  keywordLabel_->setObjectName("helpKeywordLabel");
  keywordLabel_->setBuddy(keyword_);
  keyword_->setObjectName("helpKeyword");
  keyword_->setClearButtonEnabled(true);
  keyword_->installEventFilter(this);
  found_->setObjectName("helpIndex");
  found_->setUniformItemSizes(true);
  nothing_->setObjectName("helpNothing");
  nothing_->setTextFormat(Qt::PlainText);
  nothing_->setWordWrap(true);
  show_->setObjectName("helpShow");
  connect(keyword_, &QLineEdit::textChanged, this, &HelpWindow::Filter);
  connect(keyword_, &QLineEdit::returnPressed, this, &HelpWindow::ShowChosen);
  connect(found_, &QListWidget::itemActivated, this, &HelpWindow::ShowChosen);
  connect(show_, &QPushButton::clicked, this, &HelpWindow::ShowChosen);
  return pane;
}

QToolButton* HelpWindow::MakeButton(const char* name, void (HelpWindow::*pressed)()) {
  auto* const button = new QToolButton(this);
  button->setObjectName(name);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  connect(button, &QToolButton::clicked, this, pressed);
  return button;
}

QWidget* HelpWindow::MakeButtons() {
  auto* const bar = new QWidget(this);
  back_ = MakeButton("helpBack", &HelpWindow::Back);
  forward_ = MakeButton("helpForward", &HelpWindow::Forward);
  smaller_ = MakeButton("helpSmaller", &HelpWindow::Smaller);
  larger_ = MakeButton("helpLarger", &HelpWindow::Larger);
  for (QToolButton* button : {back_, forward_}) {
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setEnabled(false);
  }
  back_->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
  forward_->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
  smaller_->setText("A\u2212");
  larger_->setText("A+");
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(back_);
  row->addWidget(forward_);
  row->addStretch();
  row->addWidget(smaller_);
  row->addWidget(larger_);
  return bar;
}

void HelpWindow::SetTabOrder() {
  QWidget* const order[] = {tabs_, contents_, keyword_, found_,   show_,
                            page_, back_,     forward_, smaller_, larger_};
  for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

void HelpWindow::ConnectPage() {
  connect(page_, &QTextBrowser::backwardAvailable, back_, &QWidget::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward_, &QWidget::setEnabled);
  connect(page_, &QTextBrowser::historyChanged, this, &HelpWindow::SelectInContents);
}

void HelpWindow::AddShortcuts() {
  const auto add = [this](const QKeySequence& keys, auto action) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
  };
  add(Qt::Key_Escape, &HelpWindow::close);
  add(Qt::ALT | Qt::Key_Left, &HelpWindow::Back);
  add(Qt::ALT | Qt::Key_Right, &HelpWindow::Forward);
  add(Qt::CTRL | Qt::Key_Plus, &HelpWindow::Larger);
  add(Qt::CTRL | Qt::Key_Equal, &HelpWindow::Larger);  // the same key without the shift key
  add(Qt::CTRL | Qt::Key_Minus, &HelpWindow::Smaller);
  add(Qt::CTRL | Qt::Key_0, [this] { page_->SetZoom(100); });
}

void HelpWindow::Show(const HelpFile& file, const HelpRequest& request) {
  const HelpSection& section = file.In(request.language);
  if (section != section_) SetSection(section);
  if (request.command == HelpCommand::kPartialKey) {
    tabs_->setCurrentIndex(kSearchPage);
    keyword_->setText(ToText(request.key));
    keyword_->selectAll();
    keyword_->setFocus();
  } else {
    tabs_->setCurrentIndex(kContentsPage);
    contents_->setFocus();
  }
  ComeToFront();
}

void HelpWindow::SetSection(const HelpSection& section) {
  index_.clear();
  section_ = section;
  index_ = IndexOf(section_);
  SetTexts();
  FillContents();
  keyword_->clear();
  Filter();
  page_->SetSection(section_);
  SelectInContents();
}

void HelpWindow::SetTexts() {
  const HelpLabels& labels = section_.labels;
  setWindowTitle(ToText(section_.title));
  tabs_->setAccessibleName(ToText(section_.title));
  tabs_->setTabText(kContentsPage, ToCaption(labels.contents));
  tabs_->setTabText(kSearchPage, ToCaption(labels.search));
  contents_->setAccessibleName(WithoutAccessKey(labels.contents));
  keywordLabel_->setText(ToCaption(labels.keyword));
  keyword_->setAccessibleName(WithoutAccessKey(labels.keyword));
  found_->setAccessibleName(ToText(labels.index));
  nothing_->setText(ToText(labels.nothing));
  show_->setText(ToCaption(labels.show));
  back_->setText(ToCaption(labels.back));
  forward_->setText(ToCaption(labels.forward));
  SetCaption(*back_, labels.back, Qt::ALT | Qt::Key_Left);
  SetCaption(*forward_, labels.forward, Qt::ALT | Qt::Key_Right);
  SetCaption(*larger_, labels.larger, Qt::CTRL | Qt::Key_Plus);
  SetCaption(*smaller_, labels.smaller, Qt::CTRL | Qt::Key_Minus);
}

void HelpWindow::FillContents() {
  contents_->clear();
  QTreeWidgetItem* parent = nullptr;
  for (const HelpTopic& topic : section_.topics) {
    QTreeWidgetItem* item = nullptr;
    if (topic.level == 1 || !parent) {
      item = parent = new QTreeWidgetItem(contents_);
    } else {
      item = new QTreeWidgetItem(parent);
    }
    item->setText(0, ToText(topic.title));
    item->setToolTip(0, ToToolTip(topic.title));
    item->setData(0, kIdRole, ToText(topic.id));
  }
  contents_->expandAll();
}

// The keywords that begin with what is typed come before those that only contain it.
void HelpWindow::Filter() {
  found_->clear();
  const QString wanted = Folded(keyword_->text().simplified());
  for (const bool atStart : {true, false}) {
    for (const HelpIndexEntry& entry : index_) {
      if (entry.folded.startsWith(wanted) != atStart || !entry.folded.contains(wanted)) continue;
      auto* const item = new QListWidgetItem(entry.text, found_);
      item->setData(kIdRole, ToText(entry.topic->id));
      item->setToolTip(ToToolTip(entry.topic->title));
    }
  }
  found_->setCurrentRow(0);
  nothing_->setVisible(found_->count() == 0);
  show_->setEnabled(found_->count() > 0);
}

void HelpWindow::ShowChosen() {
  if (const QListWidgetItem* const item = found_->currentItem())
    page_->ShowTopic(FromText(item->data(kIdRole).toString()));
}

void HelpWindow::SelectInContents() {
  const QString id = ToText(page_->Topic().id);
  for (QTreeWidgetItemIterator item(contents_); *item; ++item) {
    if ((*item)->data(0, kIdRole).toString() == id) contents_->setCurrentItem(*item);
  }
}

void HelpWindow::ComeToFront() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

// The keys that move in the list work while one types.
bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != keyword_ || event->type() != QEvent::KeyPress) return false;
  switch (static_cast<const QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QCoreApplication::sendEvent(found_, event);
      return true;
    default:
      return false;
  }
}

}  // namespace tarvo::qt
