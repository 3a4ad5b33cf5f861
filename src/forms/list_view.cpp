#include "forms/list_view.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "base/text.h"

namespace tarvo {
namespace {

bool StandsBefore(const std::unique_ptr<ListItem>& a, const std::unique_ptr<ListItem>& b) {
  if (a->StandsFirst != b->StandsFirst) return a->StandsFirst;
  const int order = CompareIgnoringCase(a->Text, b->Text);
  return order != 0 ? order < 0 : a->Text < b->Text;
}

}  // namespace

void ImageList::Add(int index, std::string_view key, PicturePointer picture) {
  if (index < 1 || index > Count() + 1) throw RuntimeError(kIndexOutOfBounds);
  if (!key.empty() && !keys_.insert(LowerCase(key)).second) throw RuntimeError(kKeyNotUnique);
  pictures_.insert(pictures_.begin() + index - 1, std::move(picture));
}

void ImageList::Clear() {
  pictures_.clear();
  keys_.clear();
}

PicturePointer ImageList::At(int index) const {
  return index < 1 || index > Count() ? nullptr : pictures_[static_cast<std::size_t>(index) - 1];
}

ListItem& ListView::Add(std::string_view key, std::string_view text, int icon, int smallIcon) {
  if (!keys_.insert(LowerCase(key)).second) throw RuntimeError(kKeyNotUnique);
  auto item = std::make_unique<ListItem>();
  item->Key = key;
  item->Text = text;
  item->Icon = icon;
  item->SmallIcon = smallIcon;
  const auto place =
      sorted_ ? std::upper_bound(items_.begin(), items_.end(), item, StandsBefore) : items_.end();
  ++generation_;
  return **items_.insert(place, std::move(item));
}

void ListView::Clear() {
  selected_ = nullptr;
  items_.clear();
  keys_.clear();
  ++generation_;
}

int ListView::PositionOf(const ListItem& item) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const auto& candidate) { return candidate.get() == &item; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ListView::Sort() {
  std::stable_sort(items_.begin(), items_.end(), StandsBefore);
  sorted_ = true;
  ++generation_;
}

void ListView::SetView(int view) {
  if (view < kLargeIcons || view > kDetails) throw RuntimeError(kInvalidPropertyValue);
  view_ = view;
}

void ListView::SetHeight(float height) {
  if (height < 0) throw RuntimeError(kInvalidPropertyValue);
  Place.Height = height;
}

}  // namespace tarvo
