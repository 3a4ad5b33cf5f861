// Prints the windows that programs show, for tests that look at a program from outside: a line of
// JSON for each visible top-level window, in the order from the front to the back:
//
//   {"program": "tarvo.exe", "title": "Tarvo", "class": "...", "inFront": true, "controls": [
//     {"class": "SysListView32", "text": "", "enabled": true, "rows": [["Meter", "0"]],
//      "selected": [0], "view": 1}, ...]}
//
// Rows are those of list views (a text for each column), list boxes and status bars (a row for each
// part); of the others there are none. The view is that of a list view (LV_VIEW_...), else -1.
#include <windows.h>
// After it: uses its types.
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

constexpr std::size_t kLongestText = 1024;  // characters

struct CloseKernelHandle {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using KernelHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseKernelHandle>;

std::string Json(std::wstring_view text) {
  std::string json = "\"";
  const int size = static_cast<int>(text.size());
  std::string utf8(static_cast<std::size_t>(size) * 3, '\0');
  utf8.resize(static_cast<std::size_t>(
      ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(),
                            static_cast<int>(utf8.size()), nullptr, nullptr)));
  for (const char character : utf8) {
    if (character == '"' || character == '\\') json += '\\';
    if (static_cast<unsigned char>(character) >= ' ') {
      json += character;
    } else {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", character);
      json += escaped;
    }
  }
  return json + '"';
}

template <class Item, class Write>
std::string JsonList(const std::vector<Item>& items, const Write& write) {
  std::string json = "[";
  for (const Item& item : items) json += (json.size() > 1 ? ", " : "") + write(item);
  return json + "]";
}

// The message's answer; 0 from a window that does not answer soon.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  constexpr UINT kPatience = 2000;  // milliseconds
  DWORD_PTR answer = 0;
  ::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kPatience, &answer);
  return static_cast<LRESULT>(answer);
}

std::wstring TextOf(HWND window) {
  std::wstring text(kLongestText, L'\0');
  text.resize(static_cast<std::size_t>(
      Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[256] = L"";
  ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

KernelHandle ProcessOf(HWND window, DWORD access) {
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  return KernelHandle(::OpenProcess(access, FALSE, process));
}

std::wstring ProgramOf(HWND window) {
  const KernelHandle process = ProcessOf(window, PROCESS_QUERY_LIMITED_INFORMATION);
  std::wstring path(kLongestText, L'\0');
  DWORD size = kLongestText;
  if (!process || !::QueryFullProcessImageNameW(process.get(), 0, path.data(), &size)) return {};
  path.resize(size);
  return path.substr(path.rfind(L'\\') + 1);
}

// Memory of the process that a window belongs to: controls put texts only there.
class ForeignMemory {
 public:
  ForeignMemory(HWND window, std::size_t size)
      : process_(ProcessOf(window, PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE)),
        memory_(process_
                    ? ::VirtualAllocEx(process_.get(), nullptr, size, MEM_COMMIT, PAGE_READWRITE)
                    : nullptr) {}
  ~ForeignMemory() {
    if (memory_) ::VirtualFreeEx(process_.get(), memory_, 0, MEM_RELEASE);
  }
  ForeignMemory(const ForeignMemory&) = delete;
  ForeignMemory& operator=(const ForeignMemory&) = delete;

  char* Start() const { return static_cast<char*>(memory_); }
  void Write(const void* bytes, std::size_t size) const {
    ::WriteProcessMemory(process_.get(), memory_, bytes, size, nullptr);
  }
  std::wstring Text(std::size_t offset) const {
    wchar_t text[kLongestText] = L"";
    ::ReadProcessMemory(process_.get(), Start() + offset, text, sizeof text, nullptr);
    text[kLongestText - 1] = L'\0';
    return text;
  }

 private:
  KernelHandle process_;
  void* memory_;
};

using Rows = std::vector<std::vector<std::wstring>>;

struct List {
  Rows rows;
  std::vector<int> selected;
  LRESULT view = -1;
};

List ReadListView(HWND window) {
  constexpr std::size_t kTextSize = kLongestText * sizeof(wchar_t);
  const ForeignMemory memory(window, sizeof(LVITEMW) + kTextSize);
  const auto header = reinterpret_cast<HWND>(Ask(window, LVM_GETHEADER));
  const LRESULT columns = header ? Ask(header, HDM_GETITEMCOUNT) : 1;
  List list;
  list.view = Ask(window, LVM_GETVIEW);
  const LRESULT count = Ask(window, LVM_GETITEMCOUNT);
  for (LRESULT row = 0; row < count; ++row) {
    list.rows.emplace_back();
    for (int column = 0; column < columns; ++column) {
      LVITEMW item{};
      item.iSubItem = column;
      item.pszText = reinterpret_cast<wchar_t*>(memory.Start() + sizeof item);
      item.cchTextMax = kLongestText;
      memory.Write(&item, sizeof item);
      const LRESULT length = Ask(window, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                                 reinterpret_cast<LPARAM>(memory.Start()));
      list.rows.back().push_back(length > 0 ? memory.Text(sizeof item) : std::wstring());
    }
    if (Ask(window, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) & LVIS_SELECTED)
      list.selected.push_back(static_cast<int>(row));
  }
  return list;
}

List ReadListBox(HWND window) {
  List list;
  const LRESULT count = Ask(window, LB_GETCOUNT);
  for (LRESULT row = 0; row < count; ++row) {
    std::wstring text(kLongestText, L'\0');
    const LRESULT length =
        Ask(window, LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(std::max<LRESULT>(0, length)));
    list.rows.push_back({text});
    if (Ask(window, LB_GETSEL, static_cast<WPARAM>(row)) > 0)
      list.selected.push_back(static_cast<int>(row));
  }
  return list;
}

List ReadStatusBar(HWND window) {
  const ForeignMemory memory(window, kLongestText * sizeof(wchar_t));
  List list;
  const LRESULT count = Ask(window, SB_GETPARTS);
  for (LRESULT part = 0; part < count; ++part) {
    const LRESULT length = Ask(window, SB_GETTEXTW, static_cast<WPARAM>(part),
                               reinterpret_cast<LPARAM>(memory.Start()));
    list.rows.push_back({LOWORD(length) > 0 ? memory.Text(0) : std::wstring()});
  }
  return list;
}

List ReadList(HWND window, const std::wstring& name) {
  if (name == WC_LISTVIEWW) return ReadListView(window);
  if (name == WC_LISTBOXW) return ReadListBox(window);
  if (name == STATUSCLASSNAMEW) return ReadStatusBar(window);
  return {};
}

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
  if (::IsWindowVisible(window)) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

std::string JsonOfControl(HWND window) {
  const std::wstring name = ClassOf(window);
  const List list = ReadList(window, name);
  return "{\"class\": " + Json(name) + ", \"text\": " + Json(TextOf(window)) +
         ", \"enabled\": " + (::IsWindowEnabled(window) ? "true" : "false") + ", \"rows\": " +
         JsonList(list.rows,
                  [](const auto& row) {
                    return JsonList(row, [](const std::wstring& text) { return Json(text); });
                  }) +
         ", \"selected\": " + JsonList(list.selected, [](int row) { return std::to_string(row); }) +
         ", \"view\": " + std::to_string(list.view) + "}";
}

}  // namespace

int main() {
  std::vector<HWND> windows;
  ::EnumWindows(&Collect, reinterpret_cast<LPARAM>(&windows));
  for (HWND window : windows) {
    std::vector<HWND> controls;
    ::EnumChildWindows(window, &Collect, reinterpret_cast<LPARAM>(&controls));
    const std::string line =
        "{\"program\": " + Json(ProgramOf(window)) + ", \"title\": " + Json(TextOf(window)) +
        ", \"class\": " + Json(ClassOf(window)) +
        ", \"inFront\": " + (window == ::GetForegroundWindow() ? "true" : "false") +
        ", \"controls\": " + JsonList(controls, &JsonOfControl) + "}";
    std::printf("%s\n", line.c_str());
  }
  return 0;
}
