#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/start/tarvo.h"
#include "frontends/common/twips.h"
#include "frontends/win32/text.h"
#include "frontends/win32/win32_front_end.h"
#include "support/program_run.h"

namespace tarvo::test {

// Runs messages until the condition holds; false when it does not within ten seconds.
bool WaitFor(const std::function<bool()>& condition);

// Lets `answer` have the next dialog or popup menu of this program that waits for the user.
void WhenDialogAppears(const std::function<void(HWND)>& answer);

// Presses a button (IDOK, IDYES, IDNO) of the next message; its text is put in `text`.
void AnswerMessage(int button, std::string* text = nullptr);

std::string TextOf(HWND window);

// The control of a dialog that shows a text; null when none does.
HWND WithText(HWND dialog, const std::string& text);

std::string ClassOf(HWND window);

// The outer bounds of a window on the screen, or of a control on its window.
PixelBounds BoundsOf(HWND window);
PixelBounds PlaceOf(HWND control);

// A whole run with the system's real controls.
class ScreenRun : public ProgramRun {
 protected:
  ScreenRun();
  ~ScreenRun() override;

  // Runs the start procedure in the guard; the main window is on the screen afterwards.
  void Start(const std::string& arguments = {});

  frmDrivers& State() { return run->MainForm(); }
  HWND Window() { return screen.WindowShowing(State()); }
  HWND Child(const wchar_t* windowClass) {
    return FindWindowExW(Window(), nullptr, windowClass, nullptr);
  }
  HWND List() { return Child(WC_LISTVIEWW); }
  HWND Bar() { return Child(TOOLBARCLASSNAMEW); }
  HWND Status() { return Child(STATUSCLASSNAMEW); }

  // What the system knows of an entry of the menu bar; the entry must be in it.
  MENUITEMINFOW Shown(const MenuItem& entry, std::wstring* caption = nullptr);
  bool IsShown(const MenuItem& entry);

  // Chooses an entry as the user does: nothing happens when it is disabled or not there.
  void Choose(const MenuItem& entry);

  // Presses a toolbar button by its key, if it can be pressed.
  void Press(const char* key);
  bool IsPressed(const char* key);

  // Runs a key, or a character, through the program's message loop to the control with the focus.
  void Key(WPARAM key);
  void Type(wchar_t character);

  std::string Stored(std::string_view key);
  void Store(std::string_view key, std::string_view value);

  win32::Win32FrontEnd screen;
  std::unique_ptr<Tarvo> run;

 private:
  int CommandOf(const char* key);
};

}  // namespace tarvo::test
