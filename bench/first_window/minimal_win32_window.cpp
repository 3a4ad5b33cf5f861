// The least program for Windows that shows 200 drivers: a list view of 200 icons in a window of
// Tarvo's size.
//
// minimal_win32_window COLOUR            icons of that colour (#rrggbb), drawn in memory
// minimal_win32_window COLOUR FOLDER     each icon read from the file driver.ICO of a folder in
// FOLDER
#include <windows.h>
// After it: uses its types.
#include <commctrl.h>
#include <shellapi.h>

#include <cwchar>
#include <string>

namespace {

constexpr int kDrivers = 200;
constexpr int kWindowSide = 433;  // pixels: 6500 twips
constexpr int kIconSide = 32;

void AddItem(HWND list, const std::wstring& name, int image) {
  std::wstring text = name;
  LVITEMW item{};
  item.mask = LVIF_TEXT | LVIF_IMAGE;
  item.iItem = image;
  item.pszText = text.data();
  item.iImage = image;
  SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void AddDrawnIcons(HWND list, HIMAGELIST images, COLORREF colour) {
  HDC const screen = GetDC(nullptr);
  HDC const memory = CreateCompatibleDC(screen);
  HBRUSH const brush = CreateSolidBrush(colour);
  for (int i = 0; i < kDrivers; ++i) {
    HBITMAP const bitmap = CreateCompatibleBitmap(screen, kIconSide, kIconSide);
    HGDIOBJ const before = SelectObject(memory, bitmap);
    const RECT whole{0, 0, kIconSide, kIconSide};
    FillRect(memory, &whole, brush);
    SelectObject(memory, before);
    AddItem(list, L"Driver " + std::to_wstring(i), ImageList_Add(images, bitmap, nullptr));
    DeleteObject(bitmap);
  }
  DeleteObject(brush);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

void AddIconsOf(HWND list, HIMAGELIST images, const std::wstring& drivers) {
  WIN32_FIND_DATAW found;
  HANDLE const search = FindFirstFileW((drivers + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    const std::wstring path = drivers + L"\\" + name + L"\\driver.ICO";
    if (name.front() == L'.') continue;
    auto* const icon = static_cast<HICON>(
        LoadImageW(nullptr, path.c_str(), IMAGE_ICON, kIconSide, kIconSide, LR_LOADFROMFILE));
    AddItem(list, name, ImageList_ReplaceIcon(images, -1, icon));
    DestroyIcon(icon);
  } while (FindNextFileW(search, &found));
  FindClose(search);
}

LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE program, HINSTANCE, LPSTR, int show) {
  int count = 0;
  LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  if (count < 2 || std::swscanf(arguments[1], L"#%2x%2x%2x", &red, &green, &blue) != 3) return 2;
  InitCommonControls();

  WNDCLASSW description{};
  description.lpfnWndProc = &Handle;
  description.hInstance = program;
  description.lpszClassName = L"MinimalWindow";
  RegisterClassW(&description);
  HWND const window =
      CreateWindowExW(0, description.lpszClassName, L"minimal", WS_OVERLAPPEDWINDOW, 0, 0,
                      kWindowSide, kWindowSide, nullptr, nullptr, program, nullptr);
  RECT inner{};
  GetClientRect(window, &inner);
  HWND const list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_ICON, 0, 0,
                                    inner.right, inner.bottom, window, nullptr, program, nullptr);
  HIMAGELIST const images = ImageList_Create(kIconSide, kIconSide, ILC_COLOR32, kDrivers, 0);
  SendMessageW(list, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(images));
  if (count == 2) {
    AddDrawnIcons(list, images, RGB(red, green, blue));
  } else {
    AddIconsOf(list, images, arguments[2]);
  }
  LocalFree(arguments);
  ShowWindow(window, show);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}
