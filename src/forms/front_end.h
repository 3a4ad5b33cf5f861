#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/controls.h"
#include "forms/form.h"
#include "forms/list_view.h"
#include "platform/help_command.h"

namespace tarvo {

enum class MessageButtons { kOk, kYesNo };
enum class MessageIcon { kNone, kQuestion, kExclamation, kInformation };
enum class Answer { kOk, kYes, kNo };

// What of a help file is to be shown, and how.
struct HelpRequest {
  std::string file;  // path
  HelpCommand command = HelpCommand::kContents;
  std::string key;       // what the search begins with
  std::string language;  // of the user, such as "de"; "" or one that the file lacks gives English
};

// Values of the mouse pointer.
inline constexpr int kDefaultPointer = 0;
inline constexpr int kHourglassPointer = 11;

// The windowing system, as far as the windows need it: the seam between the program and what draws
// it. The life of a window (loading, showing, unloading, the collection of loaded windows) is
// decided here, alike for every front end; the virtual functions are what a front end supplies.
//
// A front end calls the handlers of a shown window and brings what it draws in line with the
// window's state after each of them, and at Repaint, Yield and every dialog. A RuntimeError that
// leaves a handler ends the program with the standard message; none crosses an event loop.
class FrontEnd {
 public:
  virtual ~FrontEnd() = default;

  // Loads a window that is not loaded: enters it in the collection of loaded windows and runs its
  // load handler. When the handler fails the window is taken out again.
  void Load(Form& form);

  // Loads the window if need be and shows it modelessly. At the first show the resize handler and
  // the activation run before this returns; later activations come from the user.
  void Show(Form& form);

  // The same, but returns only when the window has been unloaded; `owner` takes no input meanwhile.
  void ShowModal(Form& form, Form& owner);

  // Runs the unload handler, takes the window off the screen and out of the collection. Nothing for
  // a window that is not loaded or is being unloaded already.
  void Unload(Form& form);

  bool IsLoaded(const Form& form) const;

  // The loaded windows in the order of loading.
  const std::vector<Form*>& LoadedForms() const { return loaded_; }

  // Draws a shown window's present state at once, without running any handler.
  virtual void Repaint(Form& form) = 0;

  // Runs the handlers of all events that wait, then returns. Returns at once, doing nothing, when
  // no window is loaded any more.
  virtual void Yield() = 0;

  // The same, but first waits until an event comes, at most `seconds`.
  virtual void YieldUntilEvent(double seconds) = 0;

  // Whether the lists' pictures can be seen; where they cannot, nobody reads their files.
  virtual bool ShowsPictures() const { return true; }

  // Shows a message and waits for the answer. The text is plain; a carriage return in it is a line
  // break.
  virtual Answer MsgBox(std::string_view text, MessageButtons buttons, MessageIcon icon,
                        std::string_view title) = 0;

  // Lets the user choose a file and puts its path in FileName; error 32755 on cancel.
  virtual void ShowOpen(CommonDialog& dialog) = 0;

  // Pops a menu up at the mouse position, one entry bold, and runs what the user chooses.
  virtual void PopupMenu(MenuItem& menu, const MenuItem* defaultEntry) = 0;

  // Shows the program's help file in a window of its own, which takes input beside `owner` and goes
  // with it; a help window that is open already is used again. Returns at once. Raises what reading
  // the file raises, and 321 for a file that is no help file of the program's.
  virtual void ShowHelp(Form& owner, const HelpRequest& request) = 0;

  // Width of a text in twips, without margin: in the window's own font, and in a given one.
  virtual float TextWidth(std::string_view text) = 0;
  virtual float TextWidth(std::string_view text, const Font& font) = 0;

  // The program's mouse pointer: one value, not a stack.
  void SetMousePointer(int pointer);
  int MousePointer() const { return pointer_; }

  // The inner size of a window, between menu and frame, in twips.
  virtual float ScaleWidth(const Form& form) = 0;
  virtual float ScaleHeight(const Form& form) = 0;

  // Heights of a window's bars in twips, whether they are visible or not.
  virtual float ToolbarHeight(const Form& form) = 0;
  virtual float StatusBarHeight(const Form& form) = 0;

 protected:
  virtual void ShowWindow(Form& form) = 0;
  // Shows the window and runs events until it is no longer loaded.
  virtual void RunModally(Form& form, Form& owner) = 0;
  // Takes the window off the screen for good; nothing when it was never shown.
  virtual void CloseWindow(Form& form) = 0;
  virtual void PointerChanged(int pointer) = 0;

 private:
  void FirstShow(Form& form);
  void TakeOut(Form& form);

  std::vector<Form*> loaded_;
  std::vector<Form*> unloading_;
  std::vector<Form*> activated_;
  int pointer_ = kDefaultPointer;
};

}  // namespace tarvo
