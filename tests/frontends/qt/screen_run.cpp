#include "screen_run.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <stdexcept>

namespace tarvo::test {
namespace {

constexpr int kDeadline = 10000;  // milliseconds
constexpr int kLookAgain = 5;

}  // namespace

bool WaitFor(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(kDeadline);
  QTimer awake;
  awake.start(kLookAgain);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

void WhenDialogAppears(const std::function<void(QWidget&)>& answer) {
  auto* const timer = new QTimer(QCoreApplication::instance());
  QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog) dialog = QApplication::activePopupWidget();
    if (!dialog || !dialog->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    answer(*dialog);
  });
  timer->start(kLookAgain);
}

void AnswerMessage(QMessageBox::StandardButton button, QString* text) {
  WhenDialogAppears([button, text](QWidget& dialog) {
    auto& box = dynamic_cast<QMessageBox&>(dialog);
    if (text) *text = box.text();
    box.button(button)->click();
  });
}

ScreenRun::ScreenRun() { std::filesystem::current_path(folder.MakeFolder("start")); }

ScreenRun::~ScreenRun() {
  screen.DiscardWindows();
  QApplication::restoreOverrideCursor();
}

void ScreenRun::Start(const std::string& arguments) {
  run = std::make_unique<Tarvo>(platform, screen, arguments);
  screen.RunGuarded([this] { run->Start(); });
  ASSERT_EQ(screen.Failure(), "");
  ASSERT_TRUE(WaitFor([this] { return Window().isVisible() && Window().isActiveWindow(); }));
}

QMainWindow& ScreenRun::Window() { return dynamic_cast<QMainWindow&>(*screen.WidgetOf(State())); }

QAction& ScreenRun::Entry(const char* name) { return Find<QAction>(name); }

QToolButton& ScreenRun::Tool(const char* key) { return Find<QToolButton>(key); }

QAbstractItemView& ScreenRun::List() {
  for (auto* view : Window().findChildren<QAbstractItemView*>()) {
    if (view->isVisible()) return *view;
  }
  throw std::runtime_error("no list can be seen");
}

std::vector<std::string> ScreenRun::ShownNames() {
  std::vector<std::string> names;
  const QAbstractItemModel& model = *List().model();
  for (int row = 0; row < model.rowCount(); ++row)
    names.push_back(model.index(row, 0).data().toString().toStdString());
  return names;
}

std::vector<std::string> ScreenRun::ShownRow(int row) {
  std::vector<std::string> texts;
  const QAbstractItemModel& model = *List().model();
  for (int column = 0; column < model.columnCount(); ++column)
    texts.push_back(model.index(row, column).data().toString().toStdString());
  return texts;
}

std::string ScreenRun::Stored(std::string_view key) {
  RegistryReplacement store(platform);
  store.OpenLocalRegistry(kCompanyName);
  return store.GetSetting(key, "absent");
}

void ScreenRun::Store(std::string_view key, std::string_view value) {
  RegistryReplacement store(platform);
  store.OpenLocalRegistry(kCompanyName);
  store.SaveSetting(key, value);
}

}  // namespace tarvo::test
