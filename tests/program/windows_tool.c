// A driver's download for Windows: writes "Data\from Windows.csv" beside itself, then shows a
// message until that is closed.
#include <windows.h>

static const char kContent[] = "\"a\",\"b\"\r\n1,2\r\n";

int WINAPI WinMain(HINSTANCE program, HINSTANCE none, LPSTR arguments, int state) {
  char path[2 * MAX_PATH];
  DWORD length = GetModuleFileNameA(NULL, path, MAX_PATH);
  (void)program, (void)none, (void)arguments, (void)state;
  while (length > 0 && path[length - 1] != '\\') --length;
  lstrcpyA(path + length, "Data\\from Windows.csv");
  HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
  DWORD written = 0;
  if (file == INVALID_HANDLE_VALUE) return 1;
  WriteFile(file, kContent, sizeof kContent - 1, &written, NULL);
  CloseHandle(file);
  MessageBoxA(NULL, "The data has been read.", "Download for Windows", MB_OK);
  return written == sizeof kContent - 1 ? 0 : 1;
}
