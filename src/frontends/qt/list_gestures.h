#pragma once

#include <QContextMenuEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace tarvo::qt {

// What the user does to a list. Rows are counted from 0. The list may be gone after each of these.
class ListGestures {
 public:
  virtual ~ListGestures() = default;
  virtual void ItemChosen(int row) = 0;
  virtual void ItemDoubleClicked(int row) = 0;
  virtual void MouseReleased(Qt::MouseButton button) = 0;
  virtual bool KeyTyped(int character) = 0;  // false when the key is swallowed
  virtual void MenuKeyPressed(const QPoint& screenPosition) = 0;
};

// A list of the toolkit that tells gestures from everything else that selects items: the program,
// the focus, a screen reader. One item is selected at most, and only another takes its place.
template <class View>
class GestureView : public View {
 public:
  explicit GestureView(ListGestures& gestures, QWidget* parent)
      : View(parent), gestures_(gestures) {
    View::setSelectionMode(QAbstractItemView::SingleSelection);
    View::setSelectionBehavior(QAbstractItemView::SelectRows);
    View::setEditTriggers(QAbstractItemView::NoEditTriggers);
    View::setDragDropMode(QAbstractItemView::NoDragDrop);
    View::setFrameShape(QFrame::NoFrame);
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    View::mousePressEvent(event);
    const QModelIndex index = View::indexAt(event->position().toPoint());
    if (index.isValid()) gestures_.ItemChosen(index.row());
  }

  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return mousePressEvent(event);
    const QModelIndex index = View::indexAt(event->position().toPoint());
    if (index.isValid()) gestures_.ItemDoubleClicked(index.row());
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    View::mouseReleaseEvent(event);
    gestures_.MouseReleased(event->button());
  }

  // Moving with a button held down selects nothing.
  void mouseMoveEvent(QMouseEvent* event) override {
    if (event->buttons() == Qt::NoButton) View::mouseMoveEvent(event);
  }

  void keyPressEvent(QKeyEvent* event) override {
    const QString text = event->text();
    const QPointer<QWidget> self(this);
    if (!text.isEmpty() && !gestures_.KeyTyped(text.at(0).unicode())) return event->accept();
    if (!self) return;
    const int before = SelectedRow();
    View::keyPressEvent(event);
    if (SelectedRow() < 0 && IsForMoving(event->key())) SelectCurrent();
    const int after = SelectedRow();
    if (after >= 0 && after != before) gestures_.ItemChosen(after);
  }

  void contextMenuEvent(QContextMenuEvent* event) override {
    if (event->reason() == QContextMenuEvent::Mouse) return;  // comes with the button's release
    const QModelIndex index = View::currentIndex();
    const QPoint place = index.isValid() ? View::visualRect(index).center() : QPoint();
    gestures_.MenuKeyPressed(View::viewport()->mapToGlobal(place));
  }

  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent*) const override {
    if (!index.isValid()) return QItemSelectionModel::NoUpdate;
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
  }

 private:
  static bool IsForMoving(int key) {
    return key == Qt::Key_Space || (key >= Qt::Key_Home && key <= Qt::Key_PageDown);
  }

  // The focus alone makes an item current but selects nothing; a key that would move to that very
  // item selects it.
  void SelectCurrent() {
    View::selectionModel()->select(View::currentIndex(),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }

  int SelectedRow() const {
    const QModelIndexList rows = View::selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
  }

  ListGestures& gestures_;
};

}  // namespace tarvo::qt
