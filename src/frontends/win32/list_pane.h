#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "forms/list_view.h"
#include "frontends/win32/list_gestures.h"
#include "frontends/win32/list_images.h"
#include "frontends/win32/seam.h"

namespace tarvo::win32 {

// A list view with its four views. The control holds the names; it asks for pictures and for the
// texts of the other columns when it draws them.
class ListPane : private ListGestures {
 public:
  ListPane(ListView& list, Seam& seam, HWND parent, int identifier);

  HWND Window() const { return window_; }

  void Sync(const std::string& accessibleName);

  // The state is going away: the list shows nothing from now on.
  void Detach();

  // Takes the font and pictures of the size that belong to the screen.
  void SetDotsPerInch(unsigned dotsPerInch, HFONT font);

  // A notification of the control.
  std::optional<LRESULT> Notified(NMHDR& notification);

 private:
  void ItemChosen(int row) override;
  void ItemDoubleClicked(int row) override;
  void MouseReleased(int button) override;
  bool KeyTyped(int character) override;
  void MenuKeyPressed(POINT screenPosition) override;

  std::optional<LRESULT> HandleMessage(const Message& message);
  std::optional<LRESULT> HeadingNotified(NMHEADERW& notification, const Message& message);
  void AddColumns();
  void TakeOverItems();
  void FillItems();
  void FillCells();
  void BeginChanges();
  void EndChanges();
  void TakeOverView();
  void ArrangeIcons();
  int SmallItemWidth() const;
  void TakeOverColumns();
  void TakeOverSelection();
  void Tell(NMLVDISPINFOW& asked);
  int ImageOf(const ListItem& item);
  bool IsSynced() const { return list_ && generation_ == list_->Generation(); }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(window_, message, wParam, lParam);
  }

  ListView* list_;
  Seam& seam_;
  HWND window_;
  ListGestureHook gestures_;
  MessageHook hook_;
  unsigned dotsPerInch_ = USER_DEFAULT_SCREEN_DPI;
  HFONT font_ = nullptr;
  std::unique_ptr<ListImages> large_, small_;
  unsigned generation_;
  int view_ = -1;
  std::vector<const ListItem*> items_;  // as the control knows them ...
  std::vector<std::string> names_;      // ... and their texts
  std::vector<ColumnHeader> columns_;
  bool hasCells_ = false;  // the control asks for the other columns' texts
  bool settingWidths_ = false;
};

}  // namespace tarvo::win32
