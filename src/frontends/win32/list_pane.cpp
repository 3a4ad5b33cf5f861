#include "frontends/win32/list_pane.h"

#include <algorithm>

#include "frontends/common/twips.h"
#include "frontends/win32/child_window.h"
#include "frontends/win32/fonts.h"
#include "frontends/win32/list_heading.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr DWORD kStyle = WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | LVS_SINGLESEL |
                         LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | LVS_AUTOARRANGE |
                         LVS_NOSORTHEADER;

// In pixels at the standard resolution.
constexpr int kLargeIcon = 48;
constexpr int kSmallIcon = 16;
constexpr int kBesideSmallIcon = 2;
constexpr int kAboveSmallIcon = 1;
constexpr int kLargeCellWidth = 104;
constexpr int kLargeCellMargins = 16;
constexpr int kSmallMargins = 20;
constexpr int kMaxNameWidth = 180;

constexpr DWORD kViews[] = {LV_VIEW_ICON, LV_VIEW_SMALLICON, LV_VIEW_LIST, LV_VIEW_DETAILS};

int At(unsigned dotsPerInch, int pixels) {
  return MulDiv(pixels, static_cast<int>(dotsPerInch), USER_DEFAULT_SCREEN_DPI);
}

}  // namespace

ListPane::ListPane(ListView& list, Seam& seam, HWND parent, int identifier)
    : list_(&list),
      seam_(seam),
      window_(MakeChild(parent, WC_LISTVIEWW, kStyle, identifier)),
      gestures_(window_, seam.loop, *this),
      hook_(window_, seam.loop, [this](const Message& message) { return HandleMessage(message); }),
      generation_(list.Generation() - 1) {
  SetWindowTheme(window_, L"Explorer", nullptr);
  constexpr DWORD kExtended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_INFOTIP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
  AddColumns();
}

void ListPane::AddColumns() {
  for (std::size_t i = 0; i < list_->ColumnHeaders.size(); ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_SUBITEM;
    column.iSubItem = static_cast<int>(i);
    Send(LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
  columns_.assign(list_->ColumnHeaders.size(), {"", -1});
}

void ListPane::SetDotsPerInch(unsigned dotsPerInch, HFONT font) {
  dotsPerInch_ = dotsPerInch;
  font_ = font;
  const int largeSide = At(dotsPerInch, kLargeIcon);
  const int smallSide = At(dotsPerInch, kSmallIcon);
  const SIZE smallCell{smallSide + 2 * At(dotsPerInch, kBesideSmallIcon),
                       smallSide + 2 * At(dotsPerInch, kAboveSmallIcon)};
  auto large = std::make_unique<ListImages>(largeSide, SIZE{largeSide, largeSide}, dotsPerInch);
  auto smaller = std::make_unique<ListImages>(smallSide, smallCell, dotsPerInch);
  Send(LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(large->Get()));
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(smaller->Get()));
  large_ = std::move(large);
  small_ = std::move(smaller);
  SetFont(window_, font);
  view_ = -1;
  for (ColumnHeader& column : columns_) column.Width = -1;
}

void ListPane::Sync(const std::string& accessibleName) {
  if (!list_) return;
  SetText(window_, Wide(accessibleName));
  ShowChild(window_, list_->Visible);
  EnableChild(window_, list_->Enabled);
  if (!IsSynced()) TakeOverItems();
  TakeOverView();
  if (view_ == kDetails && !hasCells_) {
    BeginChanges();
    FillCells();
    EndChanges();
  }
  TakeOverColumns();
  TakeOverSelection();
}

void ListPane::Detach() {
  list_ = nullptr;
  items_.clear();
  Send(LVM_DELETEALLITEMS);
}

// New texts or pictures of the same items leave the user's place in the list as it is. A list that
// has been built anew has pictures of its own: those from before would pile up.
void ListPane::TakeOverItems() {
  generation_ = list_->Generation();
  large_->Clear();
  small_->Clear();
  std::vector<const ListItem*> items;
  std::vector<std::string> names;
  for (int i = 0; i < list_->Count(); ++i) {
    items.push_back(&list_->ItemAt(i));
    names.push_back(list_->ItemAt(i).Text);
  }
  const bool isSame = items == items_ && names == names_;
  items_ = std::move(items);
  names_ = std::move(names);
  if (isSame) {
    InvalidateRect(window_, nullptr, TRUE);
    return;
  }
  BeginChanges();
  FillItems();
  if (view_ != kDetails && view_ >= 0) ArrangeIcons();
  EndChanges();
}

void ListPane::BeginChanges() { Send(WM_SETREDRAW, FALSE); }

// Only now the control gives itself the scroll bars that it needs.
void ListPane::EndChanges() {
  Send(WM_SETREDRAW, TRUE);
  InvalidateRect(window_, nullptr, TRUE);
}

void ListPane::FillItems() {
  Send(LVM_DELETEALLITEMS);
  Send(LVM_SETITEMCOUNT, names_.size());
  for (std::size_t i = 0; i < names_.size(); ++i) {
    std::wstring name = Wide(names_[i]);
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = static_cast<int>(i);
    item.pszText = name.data();
    item.iImage = I_IMAGECALLBACK;
    Send(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
  }
  hasCells_ = false;
}

// Only the details view needs the other columns; long lists of icons are filled faster without.
void ListPane::FillCells() {
  hasCells_ = true;
  for (std::size_t i = 0; i < names_.size(); ++i) {
    for (int column = 1; column <= ListItem::kSubItems; ++column) {
      LVITEMW cell{};
      cell.iSubItem = column;
      cell.pszText = LPSTR_TEXTCALLBACKW;
      Send(LVM_SETITEMTEXTW, i, reinterpret_cast<LPARAM>(&cell));
    }
  }
}

void ListPane::TakeOverView() {
  if (view_ == list_->View()) return;
  view_ = list_->View();
  BeginChanges();
  Send(LVM_SETVIEW, kViews[view_]);
  // A control that paints through a buffer may leave out the strip at the bottom of this view,
  // where the details have had their scroll bar.
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_DOUBLEBUFFER, view_ == kList ? 0 : LVS_EX_DOUBLEBUFFER);
  if (view_ == kDetails) {
    for (ColumnHeader& column : columns_) column.Width = -1;
  } else {
    ArrangeIcons();
  }
  // Some versions of the control keep a scroll bar of the view before; they show it when it is
  // needed.
  ShowScrollBar(window_, SB_BOTH, FALSE);
  EndChanges();
  const ListItem* const selected = list_->SelectedItem();
  if (selected) Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list_->PositionOf(*selected)), FALSE);
}

void ListPane::ArrangeIcons() {
  if (view_ == kLargeIcons) {
    const int height = At(dotsPerInch_, kLargeIcon + kLargeCellMargins) + 2 * LineHeight(font_);
    Send(LVM_SETICONSPACING, 0, MAKELPARAM(At(dotsPerInch_, kLargeCellWidth), height));
  } else if (view_ == kList) {
    settingWidths_ = true;
    Send(LVM_SETCOLUMNWIDTH, 0, SmallItemWidth());
    settingWidths_ = false;
  }
  Send(LVM_ARRANGE, LVA_DEFAULT);
}

// As wide as the longest name, within reason.
int ListPane::SmallItemWidth() const {
  const int widest = At(dotsPerInch_, kMaxNameWidth);
  int width = 0;
  for (const std::string& name : names_) {
    width = std::max(width, TextWidth(font_, Wide(name)));
    if (width > widest) break;
  }
  return std::min(width, widest) + At(dotsPerInch_, kSmallIcon + kSmallMargins);
}

void ListPane::TakeOverColumns() {
  settingWidths_ = true;
  for (std::size_t i = 0; i < columns_.size() && i < list_->ColumnHeaders.size(); ++i) {
    const ColumnHeader& wanted = list_->ColumnHeaders[i];
    if (columns_[i].Text != wanted.Text) {
      std::wstring text = Wide(wanted.Text);
      LVCOLUMNW column{};
      column.mask = LVCF_TEXT;
      column.pszText = text.data();
      Send(LVM_SETCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
      columns_[i].Text = wanted.Text;
    }
    if (view_ != kDetails || columns_[i].Width == wanted.Width) continue;
    Send(LVM_SETCOLUMNWIDTH, i, std::max(0, Scale(dotsPerInch_).ToPixelsUp(wanted.Width)));
    columns_[i].Width = wanted.Width;
  }
  settingWidths_ = false;
}

void ListPane::TakeOverSelection() {
  const ListItem* const selected = list_->SelectedItem();
  const int row = selected ? list_->PositionOf(*selected) : -1;
  const auto shown =
      static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  if (row == shown) return;
  LVITEMW item{};
  item.stateMask = LVIS_SELECTED | (row < 0 ? 0U : LVIS_FOCUSED);
  item.state = row < 0 ? 0 : item.stateMask;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  if (row >= 0) Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

std::optional<LRESULT> ListPane::Notified(NMHDR& notification) {
  if (notification.code != LVN_GETDISPINFOW) return std::nullopt;
  Tell(reinterpret_cast<NMLVDISPINFOW&>(notification));
  return 0;
}

// Between a change of the list and the next Sync the control may ask for items that are gone.
void ListPane::Tell(NMLVDISPINFOW& asked) {
  LVITEMW& item = asked.item;
  const bool isThere = IsSynced() && item.iItem >= 0 && item.iItem < list_->Count();
  if (item.mask & LVIF_TEXT && item.cchTextMax > 0) {
    const int column = item.iSubItem;
    std::wstring text;
    if (isThere && column > 0 && column <= ListItem::kSubItems)
      text = Wide(list_->ItemAt(item.iItem).SubItems[static_cast<std::size_t>(column) - 1]);
    lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
  }
  if (item.mask & LVIF_IMAGE) item.iImage = isThere ? ImageOf(list_->ItemAt(item.iItem)) : -1;
}

int ListPane::ImageOf(const ListItem& item) {
  const bool isLarge = view_ == kLargeIcons;
  const ImageList* const images = isLarge ? list_->Icons : list_->SmallIcons;
  if (!images) return -1;
  return (isLarge ? large_ : small_)->IndexOf(images->At(isLarge ? item.Icon : item.SmallIcon));
}

// The headings tell their list, not the list's window.
std::optional<LRESULT> ListPane::HandleMessage(const Message& message) {
  if (message.id != WM_NOTIFY) return std::nullopt;
  auto& notification = *FromNumber<NMHEADERW*>(message.lParam);
  const auto header = FromNumber<HWND>(Send(LVM_GETHEADER));
  if (notification.hdr.hwndFrom != header) return std::nullopt;
  return HeadingNotified(notification, message);
}

std::optional<LRESULT> ListPane::HeadingNotified(NMHEADERW& notification, const Message& message) {
  if (notification.hdr.code == NM_CUSTOMDRAW) {
    const auto& drawing = *FromNumber<const NMCUSTOMDRAW*>(message.lParam);
    if (drawing.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (drawing.dwDrawStage != CDDS_ITEMPREPAINT) return std::nullopt;
    DrawHeading(drawing);
    return CDRF_SKIPDEFAULT;
  }
  if (notification.hdr.code != HDN_ITEMCHANGEDW || settingWidths_ || !list_ || view_ != kDetails)
    return std::nullopt;
  const LRESULT result = hook_.Default(message);
  const auto column = static_cast<std::size_t>(notification.iItem);
  if (notification.pitem && notification.pitem->mask & HDI_WIDTH && column < columns_.size()) {
    // A width that the user gives a column is the column's from then on.
    const float width = Scale(dotsPerInch_).ToTwips(notification.pitem->cxy);
    list_->ColumnHeaders[column].Width = columns_[column].Width = width;
  }
  return result;
}

void ListPane::ItemChosen(int row) {
  if (!IsSynced() || row >= list_->Count()) return;
  ListItem& item = list_->ItemAt(row);
  list_->Select(&item);
  TakeOverSelection();
  seam_.loop.Run([this, &item] {
    if (list_->ItemClick) list_->ItemClick(item);
  });
}

void ListPane::ItemDoubleClicked(int) {
  if (list_) seam_.loop.Run(list_->DblClick);
}

void ListPane::MouseReleased(int button) {
  if (!list_ || !list_->MouseUp) return;
  seam_.loop.Run([this, button] { list_->MouseUp(button); });
}

bool ListPane::KeyTyped(int character) {
  if (!list_ || !list_->KeyPress) return true;
  int key = character;
  seam_.loop.Run([this, &key] { list_->KeyPress(key); });
  return key != 0;
}

void ListPane::MenuKeyPressed(POINT screenPosition) {
  seam_.popupPlace = screenPosition;
  MouseReleased(2);
  seam_.popupPlace.reset();
}

}  // namespace tarvo::win32
