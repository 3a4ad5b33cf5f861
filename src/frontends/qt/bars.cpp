#include "frontends/qt/bars.h"

#include <QAction>
#include <QDateTime>
#include <QLabel>
#include <QLocale>

#include "frontends/qt/pictures.h"
#include "frontends/qt/text.h"

namespace tarvo::qt {
namespace {

constexpr int kToolIcon = 24;

QString PanelText(const StatusPanel& panel) {
  const QLocale locale = QLocale::system();
  switch (panel.Style) {
    case PanelStyle::kDate:
      return locale.toString(QDate::currentDate(), QLocale::ShortFormat);
    case PanelStyle::kTime:
      return locale.toString(QTime::currentTime(), QLocale::ShortFormat);
    case PanelStyle::kText:
      break;
  }
  return ToText(panel.Text);
}

}  // namespace

ToolbarPane::ToolbarPane(Toolbar& toolbar, Dispatcher& dispatcher, QWidget* parent)
    : QToolBar(parent), toolbar_(toolbar), dispatcher_(dispatcher) {
  setObjectName(ToText(toolbar.Name));
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setIconSize({kToolIcon, kToolIcon});
  for (const ToolbarButton& button : toolbar.Buttons) actions_.push_back(Add(button));
}

QAction* ToolbarPane::Add(const ToolbarButton& button) {
  if (button.IsSeparator) return addSeparator();
  QAction* const action = addAction(OwnQIcon(button.Image), QString());
  action->setObjectName(ToText(button.Key));
  action->setCheckable(button.Group > 0);
  widgetForAction(action)->setObjectName(ToText(button.Key));
  widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
  const std::size_t number = actions_.size();
  connect(action, &QAction::triggered, this, [this, number] {
    dispatcher_.Run([this, number] {
      if (toolbar_.ButtonClick) toolbar_.ButtonClick(toolbar_.Buttons[number]);
    });
  });
  return action;
}

void ToolbarPane::Sync(const QString& name) {
  setAccessibleName(name);
  setVisible(toolbar_.Visible);
  setEnabled(toolbar_.Enabled);
  for (std::size_t i = 0; i < actions_.size() && i < toolbar_.Buttons.size(); ++i) {
    const ToolbarButton& button = toolbar_.Buttons[i];
    if (button.IsSeparator) continue;
    const QString text = ToText(button.ToolTipText);
    actions_[i]->setText(WithoutMeaning(text));
    actions_[i]->setToolTip(ToToolTip(button.ToolTipText));
    actions_[i]->setEnabled(button.Enabled);
    actions_[i]->setChecked(button.Pressed);
    widgetForAction(actions_[i])->setAccessibleName(text);
  }
}

StatusPane::StatusPane(const StatusBar& statusBar, QWidget* parent)
    : QStatusBar(parent), statusBar_(statusBar) {
  setObjectName(ToText(statusBar.Name));
  for (std::size_t i = 0; i < statusBar.Panels.size(); ++i) {
    auto* const label = new QLabel(this);
    label->setObjectName(objectName() + QString::number(i + 1));
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(6, 2, 6, 2);
    if (i == 0) {
      // A long text must not make the bar, and with it the window, wider.
      label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
      addWidget(label, 1);
    } else {
      addPermanentWidget(label);
    }
    panels_.push_back(label);
  }
}

void StatusPane::Sync(const QString& name) {
  setAccessibleName(name);
  setToolTip(ToToolTip(statusBar_.ToolTipText));
  setVisible(statusBar_.Visible);
  for (std::size_t i = 0; i < panels_.size() && i < statusBar_.Panels.size(); ++i)
    panels_[i]->setText(PanelText(statusBar_.Panels[i]));
}

}  // namespace tarvo::qt
