#include "frontends/qt/key_codes.h"

#include <Qt>

namespace tarvo::qt {
namespace {

struct KeyCode {
  int key;
  int code;
};

constexpr KeyCode kKeyCodes[] = {
    {Qt::Key_Backspace, 8},    {Qt::Key_Tab, 9},       {Qt::Key_Backtab, 9},
    {Qt::Key_Return, 13},      {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},     {Qt::Key_Alt, 18},      {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},    {Qt::Key_Escape, 27},   {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},      {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},
    {Qt::Key_Home, 36},        {Qt::Key_Left, 37},     {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},       {Qt::Key_Down, 40},     {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},      {Qt::Key_Delete, 46},   {Qt::Key_Help, 47},
    {Qt::Key_Meta, 91},        {Qt::Key_Menu, 93},     {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
};

constexpr KeyCode kKeypadCodes[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},   {Qt::Key_Slash, 111},
};

template <class Table>
int Find(const Table& table, int key) {
  for (const KeyCode& entry : table) {
    if (entry.key == key) return entry.code;
  }
  return 0;
}

}  // namespace

int ClassicKeyCode(int key, bool fromKeypad) {
  constexpr int kF1 = 112;
  constexpr int kKeypad0 = 96;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return kF1 + key - Qt::Key_F1;
  if (fromKeypad && key >= Qt::Key_0 && key <= Qt::Key_9) return kKeypad0 + key - Qt::Key_0;
  if (fromKeypad && Find(kKeypadCodes, key) != 0) return Find(kKeypadCodes, key);
  if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z)) return key;
  return Find(kKeyCodes, key);
}

}  // namespace tarvo::qt
