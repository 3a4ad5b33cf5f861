#include "frontends/qt/list_pane.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <algorithm>

#include "frontends/qt/text.h"
#include "frontends/qt/twips.h"

namespace tarvo::qt {

namespace {

// The text in at most two lines, the second one cut where it is too long.
QString InTwoLines(const QString& text, const QFont& font, int width) {
  QTextOption wrapping(Qt::AlignHCenter);
  wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(text, font);
  layout.setTextOption(wrapping);
  layout.beginLayout();
  QTextLine first = layout.createLine();
  if (first.isValid()) first.setLineWidth(width);
  layout.endLayout();
  if (!first.isValid() || first.textLength() >= text.size()) return text;
  const QString rest = text.mid(first.textLength()).trimmed();
  return text.left(first.textLength()).trimmed() + QChar(QChar::LineSeparator) +
         QFontMetrics(font).elidedText(rest, Qt::ElideRight, width);
}

}  // namespace

// Gives every item of the icon and list views the same size, so that they stand in a grid and a
// long list is measured once.
class CellDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return cell; }
  QSize cell;

 private:
  static constexpr int kTextMargins = 8;  // left and right of a name, in pixels

 protected:
  // Under a large icon the name begins right below it, however many lines it has.
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->decorationPosition != QStyleOptionViewItem::Top) return;
    option->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
    option->text = InTwoLines(option->text, option->font, cell.width() - kTextMargins);
  }
};

namespace {

constexpr int kLargeIcon = 48;
constexpr int kSmallIcon = 16;
constexpr int kMaxNameWidth = 180;

// Column headings are as wide as their texts, so they are drawn without margins and never cut.
class HeadingView : public QHeaderView {
 public:
  explicit HeadingView(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(false);
    setSectionsMovable(false);
    setHighlightSections(false);
    setStretchLastSection(false);
    setMinimumSectionSize(0);
  }

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int section) const override {
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = rect;
    option.section = section;
    style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);
    const int margin =
        section == 0 ? style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this) : 0;
    painter->setPen(palette().color(QPalette::ButtonText));
    painter->setFont(font());
    painter->drawText(rect.adjusted(margin, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                      model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString());
  }
};

}  // namespace

ListPane::ListPane(ListView& list, Seam& seam, QWidget* parent)
    : QStackedWidget(parent),
      list_(&list),
      seam_(seam),
      names_(list, 1),
      table_(list, 1 + ListItem::kSubItems),
      icons_(new GestureView<QListView>(*this, this)),
      delegate_(new CellDelegate(this)) {
  setObjectName(ToText(list.Name));
  setFont(QApplication::font());
  icons_->setObjectName(objectName() + "Icons");
  icons_->setModel(&names_);
  icons_->setItemDelegate(delegate_);
  icons_->setUniformItemSizes(true);
  icons_->setSelectionRectVisible(false);
  addWidget(icons_);
  setFocusProxy(icons_);
}

void ListPane::MakeDetails() {
  details_ = new GestureView<QTreeView>(*this, this);
  details_->setObjectName(objectName() + "Details");
  details_->setHeader(new HeadingView(details_));
  details_->setModel(&table_);
  details_->setRootIsDecorated(false);
  details_->setItemsExpandable(false);
  details_->setUniformRowHeights(true);
  details_->setAllColumnsShowFocus(true);
  details_->setIconSize({kSmallIcon, kSmallIcon});
  details_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  details_->header()->setFont(font());
  addWidget(details_);
  // A width that the user gives a column is the column's from then on.
  connect(details_->header(), &QHeaderView::sectionResized, this,
          [this](int section, int, int now) {
            if (!list_ || static_cast<std::size_t>(section) >= list_->ColumnHeaders.size()) return;
            ColumnHeader& column = list_->ColumnHeaders[static_cast<std::size_t>(section)];
            const auto before = kScale.ToPixelsUp(column.Width);
            if (before != now) column.Width = ToTwips(now);
          });
}

QAbstractItemView& ListPane::View() const {
  if (currentWidget() == details_ && details_) return *details_;
  return *icons_;
}

void ListPane::Sync(const QString& accessibleName) {
  if (!list_) return;
  if (list_->View() == kDetails && !details_) MakeDetails();
  const bool otherView = view_ != list_->View();
  const int scrolled = View().verticalScrollBar()->value();
  const bool newNames = names_.Sync();
  const bool newRows = details_ && table_.Sync();
  if (otherView || arranged_ != list_->Generation()) ChooseView();
  arranged_ = list_->Generation();
  if (details_) TakeOverColumns();
  if (View().accessibleName() != accessibleName) View().setAccessibleName(accessibleName);
  setEnabled(list_->Enabled);
  View().setToolTip(ToToolTip(list_->ToolTipText));
  TakeOverSelection();
  if ((newNames || newRows) && !otherView) View().verticalScrollBar()->setValue(scrolled);
}

void ListPane::Detach() {
  names_.Detach();
  table_.Detach();
  list_ = nullptr;
}

void ListPane::ChooseView() {
  const bool hadFocus = View().hasFocus();
  const bool otherView = view_ != list_->View();
  view_ = list_->View();
  if (view_ != kDetails) ArrangeIcons();
  QWidget* const chosen = view_ == kDetails ? static_cast<QWidget*>(details_) : icons_;
  setCurrentWidget(chosen);
  setFocusProxy(chosen);
  if (hadFocus) chosen->setFocus();
  const QModelIndex current = View().currentIndex();
  if (otherView && current.isValid()) View().scrollTo(current);
}

void ListPane::ArrangeIcons() {
  const bool large = view_ == kLargeIcons;
  const int line = fontMetrics().height();
  delegate_->cell = large ? QSize(96, kLargeIcon + 2 * line + 8) : SmallCell();
  icons_->setViewMode(large ? QListView::IconMode : QListView::ListMode);
  icons_->setFlow(view_ == kList ? QListView::TopToBottom : QListView::LeftToRight);
  icons_->setWrapping(true);
  icons_->setMovement(QListView::Static);
  icons_->setResizeMode(QListView::Adjust);
  icons_->setIconSize(large ? QSize(kLargeIcon, kLargeIcon) : QSize(kSmallIcon, kSmallIcon));
  icons_->setSpacing(0);
  icons_->setGridSize(large ? delegate_->cell + QSize(8, 8) : delegate_->cell);
  icons_->setTextElideMode(Qt::ElideRight);
}

// As wide as the longest name, within reason.
QSize ListPane::SmallCell() const {
  int width = 0;
  for (int i = 0; i < list_->Count(); ++i) {
    width = std::max(width, fontMetrics().horizontalAdvance(ToText(list_->ItemAt(i).Text)));
    if (width > kMaxNameWidth) break;
  }
  return {std::min(width, kMaxNameWidth) + kSmallIcon + 20,
          std::max(kSmallIcon, fontMetrics().height()) + 4};
}

void ListPane::TakeOverColumns() {
  QHeaderView& header = *details_->header();
  for (int i = 0; i < header.count(); ++i) {
    const float twips = list_->ColumnHeaders[static_cast<std::size_t>(i)].Width;
    const int width = std::max(0, kScale.ToPixelsUp(twips));
    if (header.sectionSize(i) != width) header.resizeSection(i, width);
  }
}

void ListPane::TakeOverSelection() {
  const ListItem* const selected = list_->SelectedItem();
  const int row = selected ? list_->PositionOf(*selected) : -1;
  QItemSelectionModel& selection = *View().selectionModel();
  const QModelIndexList shown = selection.selectedRows();
  const int shownRow = shown.isEmpty() ? -1 : shown.first().row();
  if (row == shownRow) return;
  if (row < 0) {
    selection.clear();
  } else {
    selection.setCurrentIndex(View().model()->index(row, 0),
                              QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
}

void ListPane::ItemChosen(int row) {
  if (!list_ || row >= list_->Count()) return;
  ListItem& item = list_->ItemAt(row);
  list_->Select(&item);
  seam_.dispatcher.Run([this, &item] {
    if (list_->ItemClick) list_->ItemClick(item);
  });
}

void ListPane::ItemDoubleClicked(int) {
  if (list_) seam_.dispatcher.Run(list_->DblClick);
}

void ListPane::MouseReleased(Qt::MouseButton button) {
  if (!list_ || !list_->MouseUp) return;
  seam_.dispatcher.Run([this, button] { list_->MouseUp(static_cast<int>(button)); });
}

bool ListPane::KeyTyped(int character) {
  if (!list_ || !list_->KeyPress) return true;
  int key = character;
  seam_.dispatcher.Run([this, &key] { list_->KeyPress(key); });
  return key != 0;
}

void ListPane::MenuKeyPressed(const QPoint& screenPosition) {
  seam_.popupPlace = screenPosition;
  MouseReleased(Qt::RightButton);
  seam_.popupPlace.reset();
}

}  // namespace tarvo::qt
