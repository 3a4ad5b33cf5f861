#pragma once

#include <string>
#include <vector>

#include "screen_run.h"

namespace tarvo::test {

// A run whose driver list is looked at and used with mouse and keys.
class ListRun : public ScreenRun {
 protected:
  void StartWith(const std::vector<std::string>& drivers) {
    for (const std::string& driver : drivers) Driver(driver);
    Start();
    SetFocus(List());
  }
  void ChooseView(ViewMode mode) { Choose(State().mnuListViewMode[mode]); }

  std::string Cell(int row, int column) {
    wchar_t text[260] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = std::size(text);
    SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return win32::Narrow(item.pszText);
  }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    const auto count = static_cast<int>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) names.push_back(Cell(row, 0));
    return names;
  }
  LPARAM PointOf(int row) {
    RECT rect = {};
    rect.left = LVIR_LABEL;
    SendMessageW(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&rect));
    return MAKELPARAM(rect.left + 8, (rect.top + rect.bottom) / 2);
  }
  LPARAM PointBeside() {
    RECT inner = {};
    GetClientRect(List(), &inner);
    return MAKELPARAM(inner.right - 3, inner.bottom - 3);
  }
  void ClickAt(LPARAM point, bool right = false) {
    SendMessageW(List(), right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, right ? MK_RBUTTON : MK_LBUTTON,
                 point);
    SendMessageW(List(), right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, point);
  }
  void Click(int row, bool right = false) { ClickAt(PointOf(row), right); }
  void DoubleClickAt(LPARAM point) {
    ClickAt(point);
    SendMessageW(List(), WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    SendMessageW(List(), WM_LBUTTONUP, 0, point);
  }
  int SelectedRow() {
    return static_cast<int>(
        SendMessageW(List(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  }
  // Whether anything but the background is on the screen where the row's picture belongs. The
  // place is wiped first, so that what has been there before does not count.
  bool ShowsPicture(int row) {
    RECT place = {};
    place.left = LVIR_ICON;
    SendMessageW(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&place));
    const HDC context = GetDC(List());
    FillRect(context, &place, GetSysColorBrush(COLOR_WINDOW));
    RedrawWindow(List(), &place, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    bool isThere = false;
    for (int y = place.top; y < place.bottom && !isThere; y += 2) {
      for (int x = place.left; x < place.right && !isThere; x += 2)
        isThere = GetPixel(context, x, y) != GetSysColor(COLOR_WINDOW);
    }
    ReleaseDC(List(), context);
    return isThere;
  }
  int ImageOf(int row) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    SendMessageW(List(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
  }
};

}  // namespace tarvo::test
