#pragma once

// The system's own headers, in the order that they need.
#include <windows.h>
//
#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <uxtheme.h>
#include <windowsx.h>

// A leftover of 16-bit systems that would eat the front end's function of that name.
#undef Yield
