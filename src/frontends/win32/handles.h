#pragma once

#include <utility>

#include "frontends/win32/system.h"

namespace tarvo::win32 {

// Owns an object of the system's and releases it with its own function.
template <class Value, auto Release>
class Handle {
 public:
  Handle() = default;
  explicit Handle(Value value) : value_(value) {}
  Handle(Handle&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Handle() {
    if (value_) Release(value_);
  }

  Value Get() const { return value_; }
  explicit operator bool() const { return value_ != nullptr; }

 private:
  Value value_ = nullptr;
};

using FontHandle = Handle<HFONT, &DeleteObject>;
using BitmapHandle = Handle<HBITMAP, &DeleteObject>;
using IconHandle = Handle<HICON, &DestroyIcon>;
using MenuHandle = Handle<HMENU, &DestroyMenu>;
using ImagesHandle = Handle<HIMAGELIST, &ImageList_Destroy>;
using MemoryContext = Handle<HDC, &DeleteDC>;
using WindowHandle = Handle<HWND, &DestroyWindow>;
using ThemeHandle = Handle<HTHEME, &CloseThemeData>;

// Has an object selected in a drawing context while it lives.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object)
      : context_(context), before_(SelectObject(context, object)) {}
  ~Selected() { SelectObject(context_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

}  // namespace tarvo::win32
