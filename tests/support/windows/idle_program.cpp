// A program for windows that does nothing and ends at once.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) { return 0; }
