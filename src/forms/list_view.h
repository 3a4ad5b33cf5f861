#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "forms/control.h"
#include "forms/picture.h"

namespace tarvo {

// Pictures of one size, numbered from 1, each with an optional key. Keys ignore letter case.
class ImageList : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {}; }

  // Puts a picture at `index`, moving those from there on up by one. Error 35600 unless the index
  // is 1 to Count() + 1, error 35602 when the key is taken; then nothing is changed.
  void Add(int index, std::string_view key, PicturePointer picture);
  void Clear();
  int Count() const { return static_cast<int>(pictures_.size()); }

  // The picture at an index; none when the index is out of range, which draws as nothing.
  PicturePointer At(int index) const;

 private:
  std::vector<PicturePointer> pictures_;
  std::unordered_set<std::string> keys_;  // in lower case
};

enum ViewMode : int { kLargeIcons = 0, kSmallIcons = 1, kList = 2, kDetails = 3 };

struct ColumnHeader {
  std::string Text;
  float Width = 0;  // twips
};

struct ListItem {
  static constexpr int kSubItems = 6;

  std::string Key;  // stays as it was added
  std::string Text;
  int Icon = 0;                                 // index in the large image list; 0 for none
  int SmallIcon = 0;                            // index in the small image list; 0 for none
  std::array<std::string, kSubItems> SubItems;  // columns 2 to 7
  bool StandsFirst = false;                     // before all others, whatever the order
};

enum class Arrangement { kNone, kAutoLeft, kAutoTop };

// A list with four views. Items keep their address until the list is cleared.
class ListView : public Control {
 public:
  std::vector<std::string*> TranslatableTexts() override { return {&ToolTipText}; }

  // Adds an item at its place in the order, else at the end. Error 35602 when the key, letter case
  // ignored, is taken; then nothing is changed.
  ListItem& Add(std::string_view key, std::string_view text, int icon, int smallIcon);
  void Clear();
  int Count() const { return static_cast<int>(items_.size()); }

  // Items from top to bottom, numbered from 0.
  ListItem& ItemAt(int position) { return *items_[static_cast<std::size_t>(position)]; }
  const ListItem& ItemAt(int position) const { return *items_[static_cast<std::size_t>(position)]; }
  int PositionOf(const ListItem& item) const;

  // The selected item; null when nothing is selected. Selecting by program runs no handler.
  ListItem* SelectedItem() const { return selected_; }
  void Select(ListItem* item) { selected_ = item; }

  // Sorts by the name column: ordinal, letter case ignored, items that stand first before all
  // others. From then on new items are added in order.
  void Sort();
  bool Sorted() const { return sorted_; }

  // The view mode; error 380 outside 0 to 3.
  int View() const { return view_; }
  void SetView(int view);

  // The height in twips; error 380 when negative.
  void SetHeight(float height);

  // Grows whenever items are added, removed or put in another order, so that a front end knows when
  // to draw the list anew.
  unsigned Generation() const { return generation_; }
  // To be called after texts or icons of items have been changed.
  void Touch() { ++generation_; }

  std::string ToolTipText;
  std::vector<ColumnHeader> ColumnHeaders;
  ImageList* Icons = nullptr;  // attached image lists; null for none
  ImageList* SmallIcons = nullptr;
  int SortKey = 0;  // column, 0 for the name
  Arrangement Arrange = Arrangement::kNone;

  std::function<void()> DblClick;
  std::function<void(int& keyAscii)> KeyPress;  // 0 swallows the key
  std::function<void(int button)> MouseUp;      // 1 left, 2 right
  std::function<void(ListItem&)> ItemClick;

 private:
  std::vector<std::unique_ptr<ListItem>> items_;
  std::unordered_set<std::string> keys_;  // in lower case
  ListItem* selected_ = nullptr;
  bool sorted_ = false;
  int view_ = kLargeIcons;
  unsigned generation_ = 0;
};

}  // namespace tarvo
