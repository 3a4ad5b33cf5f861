#include "screen_run.h"

#include <chrono>
#include <stdexcept>

namespace tarvo::test {
namespace {

constexpr auto kDeadline = std::chrono::seconds(10);
constexpr UINT kLookAgain = 5;  // milliseconds

std::function<void(HWND)> pendingAnswer;

// The dialog on top of this thread's windows, or a menu that pops up.
HWND WaitingDialog() {
  HWND found = nullptr;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM result) -> BOOL {
        const std::string name = ClassOf(window);
        const bool isDialog = name == "#32770" && IsWindowEnabled(window);
        if ((!isDialog && name != "#32768") || !IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR timer, DWORD) noexcept {
  const HWND dialog = WaitingDialog();
  if (!dialog || !pendingAnswer) return;
  KillTimer(nullptr, timer);
  const auto answer = std::exchange(pendingAnswer, nullptr);
  answer(dialog);
}

void RunMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

bool WaitFor(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + kDeadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    MsgWaitForMultipleObjectsEx(0, nullptr, kLookAgain, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    RunMessages();
  }
  return true;
}

void WhenDialogAppears(const std::function<void(HWND)>& answer) {
  pendingAnswer = answer;
  SetTimer(nullptr, 0, kLookAgain, &LookForDialog);
}

void AnswerMessage(int button, std::string* text) {
  WhenDialogAppears([button, text](HWND box) {
    constexpr int kText = 0xFFFF;  // the identifier of a message's text
    if (text) *text = TextOf(GetDlgItem(box, kText));
    SendMessageW(GetDlgItem(box, button), BM_CLICK, 0, 0);
  });
}

std::string TextOf(HWND window) {
  wchar_t text[1024] = {};
  SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
  return win32::Narrow(text);
}

HWND WithText(HWND dialog, const std::string& text) {
  HWND child = nullptr;
  while ((child = FindWindowExW(dialog, child, nullptr, nullptr))) {
    if (TextOf(child) == text) return child;
  }
  return nullptr;
}

std::string ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, std::size(name));
  return win32::Narrow(name);
}

PixelBounds BoundsOf(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

PixelBounds PlaceOf(HWND control) {
  PixelBounds place = BoundsOf(control);
  POINT corner{place.left, place.top};
  ScreenToClient(GetParent(control), &corner);
  place.left = corner.x;
  place.top = corner.y;
  return place;
}

ScreenRun::ScreenRun() { std::filesystem::current_path(folder.MakeFolder("start")); }

ScreenRun::~ScreenRun() {
  pendingAnswer = nullptr;
  screen.DiscardWindows();
}

void ScreenRun::Start(const std::string& arguments) {
  run = std::make_unique<Tarvo>(platform, screen, arguments);
  // The question about the viewer of CSV files is another test's.
  Store("Tarvo_Association_Asked", "Yes");
  screen.RunGuarded([this] { run->Start(); });
  ASSERT_EQ(screen.Failure(), "");
  ASSERT_TRUE(WaitFor([this] { return IsWindowVisible(Window()) != FALSE; }));
}

bool ScreenRun::IsShown(const MenuItem& entry) {
  for (const MenuItem* menu : State().MenuBar) {
    for (const MenuItem* item : menu->Items) {
      if (item == &entry) return Shown(entry).cbSize != 0;
    }
  }
  return false;
}

MENUITEMINFOW ScreenRun::Shown(const MenuItem& entry, std::wstring* caption) {
  static wchar_t text[256];
  for (std::size_t i = 0; i < State().MenuBar.size(); ++i) {
    const HMENU menu = GetSubMenu(GetMenu(Window()), static_cast<int>(i));
    UINT position = 0;
    for (const MenuItem* item : State().MenuBar[i]->Items) {
      MENUITEMINFOW info{};
      info.cbSize = sizeof info;
      info.fMask = MIIM_STRING | MIIM_STATE | MIIM_ID | MIIM_FTYPE;
      info.dwTypeData = text;
      info.cch = std::size(text);
      if (item == &entry) {
        const bool isThere = item->Visible && GetMenuItemInfoW(menu, position, TRUE, &info);
        if (caption) *caption = std::wstring(text, isThere ? info.cch : 0);
        return isThere ? info : MENUITEMINFOW{};
      }
      if (item->Visible) ++position;
    }
  }
  throw std::runtime_error("there is no menu entry " + entry.Name);
}

void ScreenRun::Choose(const MenuItem& entry) {
  const MENUITEMINFOW shown = Shown(entry);
  if (shown.cbSize == 0 || shown.fState & MFS_DISABLED) return;
  SendMessageW(Window(), WM_COMMAND, shown.wID, 0);
}

int ScreenRun::CommandOf(const char* key) {
  const auto& buttons = State().tbToolBar.Buttons;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    TBBUTTON button{};
    SendMessageW(Bar(), TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
    if (buttons[i].Key == key) return button.idCommand;
  }
  throw std::runtime_error(std::string("there is no button ") + key);
}

void ScreenRun::Press(const char* key) {
  const auto command = static_cast<WPARAM>(CommandOf(key));
  if (!SendMessageW(Bar(), TB_ISBUTTONENABLED, command, 0)) return;
  SendMessageW(Window(), WM_COMMAND, command, reinterpret_cast<LPARAM>(Bar()));
}

bool ScreenRun::IsPressed(const char* key) {
  return SendMessageW(Bar(), TB_ISBUTTONCHECKED, static_cast<WPARAM>(CommandOf(key)), 0) != 0;
}

void ScreenRun::Key(WPARAM key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  screen.Yield();
}

void ScreenRun::Type(wchar_t character) { SendMessageW(GetFocus(), WM_CHAR, character, 1); }

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
