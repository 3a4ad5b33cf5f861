#include "frontends/win32/dialog_controls.h"

#include <algorithm>

#include "frontends/common/twips.h"
#include "frontends/win32/child_window.h"
#include "frontends/win32/file_list.h"
#include "frontends/win32/fonts.h"
#include "frontends/win32/handles.h"
#include "frontends/win32/pictures.h"
#include "frontends/win32/text.h"

namespace tarvo::win32 {
namespace {

constexpr int kSpareWidth = 2;  // pixels that keep a measured text from losing its end

class LabelControl : public DialogControl {
 public:
  LabelControl(const Label& label, HWND parent, int identifier)
      : DialogControl(MakeChild(parent, WC_STATICW, SS_LEFT | SS_NOPREFIX, identifier), label),
        label_(label) {}

  void Sync(unsigned dotsPerInch, HFONT font) override {
    TakeFont(dotsPerInch, font);
    DialogControl::Sync(dotsPerInch, font);
    const Scale scale(dotsPerInch);
    PixelBounds place = scale.ToPixels(label_.Place);
    place.width = std::max(0, scale.ToPixelsUp(label_.Place.Width)) + kSpareWidth;
    PlaceChild(Window(), place);
    TakeWrapping(place.height);
    SetText(Window(), WideLines(label_.Caption));
  }

  std::string ToolTipText() const override { return label_.ToolTipText; }

 private:
  void TakeFont(unsigned dotsPerInch, HFONT font) {
    if (dotsPerInch == dotsPerInch_ && size_ == label_.Font.Size) return;
    dotsPerInch_ = dotsPerInch;
    size_ = label_.Font.Size;
    FontHandle own = MakeFont(label_.Font, dotsPerInch);
    SetFont(Window(), own ? own.Get() : font);
    font_ = std::move(own);
  }

  void TakeWrapping(int height) {
    const bool wraps = height >= 2 * LineHeight(font_.Get());
    const LONG_PTR style = GetWindowLongPtrW(Window(), GWL_STYLE);
    const LONG_PTR wanted = (style & ~SS_TYPEMASK) | (wraps ? SS_LEFT : SS_LEFTNOWORDWRAP);
    if (wanted == style) return;
    SetWindowLongPtrW(Window(), GWL_STYLE, wanted);
    InvalidateRect(Window(), nullptr, TRUE);
  }

  const Label& label_;
  FontHandle font_;
  unsigned dotsPerInch_ = 0;
  float size_ = 0;
};

class ButtonControl : public DialogControl {
 public:
  ButtonControl(Button& button, HandlerGuard& guard, HWND parent, int identifier)
      : DialogControl(MakeChild(parent, WC_BUTTONW,
                                WS_TABSTOP | (button.IsDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON),
                                identifier),
                      button),
        button_(button),
        guard_(guard) {}

  void Sync(unsigned dotsPerInch, HFONT font) override {
    SetFont(Window(), font);
    DialogControl::Sync(dotsPerInch, font);
    SetText(Window(), WideCaption(button_.Caption));
  }

  void Notified(int code) override {
    if (code == BN_CLICKED) guard_.Run(button_.Click);
  }

  std::string ToolTipText() const override { return button_.ToolTipText; }

 private:
  Button& button_;
  HandlerGuard& guard_;
};

class FrameControl : public DialogControl {
 public:
  FrameControl(const Frame& frame, HWND parent, int identifier)
      : DialogControl(MakeChild(parent, WC_BUTTONW, BS_GROUPBOX, identifier, WS_EX_TRANSPARENT),
                      frame),
        frame_(frame) {}

  void Sync(unsigned dotsPerInch, HFONT font) override {
    SetFont(Window(), font);
    DialogControl::Sync(dotsPerInch, font);
    SetText(Window(), WideCaption(frame_.Caption));
  }

  std::string ToolTipText() const override { return frame_.ToolTipText; }

 private:
  const Frame& frame_;
};

class PictureControl : public DialogControl {
 public:
  PictureControl(const ImageControl& image, HWND parent, int identifier)
      : DialogControl(MakeChild(parent, WC_STATICW, SS_ICON | SS_REALSIZECONTROL, identifier),
                      image),
        image_(image) {}

  void Sync(unsigned dotsPerInch, HFONT font) override {
    DialogControl::Sync(dotsPerInch, font);
    const PixelBounds place = Scale(dotsPerInch).ToPixels(image_.Place);
    const int side = std::min(place.width, place.height);
    if (side <= 0 || (side == side_ && picture_ == image_.Picture)) return;
    side_ = side;
    picture_ = image_.Picture;
    IconHandle icon = MakeIcon(Drawn(picture_.get(), side, dotsPerInch));
    SendMessageW(Window(), STM_SETICON, reinterpret_cast<WPARAM>(icon.Get()), 0);
    icon_ = std::move(icon);
    PlaceChild(Window(), place);
  }

  std::string ToolTipText() const override { return image_.ToolTipText; }

 private:
  const ImageControl& image_;
  PicturePointer picture_;
  IconHandle icon_;
  int side_ = 0;
};

class LineControl : public DialogControl {
 public:
  LineControl(const Line& line, HWND parent, int identifier)
      : DialogControl(MakeChild(parent, WC_STATICW, SS_GRAYRECT, identifier), line), line_(line) {}

  void Sync(unsigned dotsPerInch, HFONT font) override {
    DialogControl::Sync(dotsPerInch, font);
    PixelBounds place = Scale(dotsPerInch).ToPixels(line_.Place);
    place.width = std::max(place.width, 1);
    place.height = std::max(place.height, 1);
    PlaceChild(Window(), place);
  }

 private:
  const Line& line_;
};

}  // namespace

void DialogControl::Sync(unsigned dotsPerInch, HFONT) {
  PlaceChild(window_, Scale(dotsPerInch).ToPixels(state_.Place));
  EnableChild(window_, state_.Enabled);
  ShowChild(window_, state_.Visible);
}

std::unique_ptr<DialogControl> MakeDialogControl(Control& control, HandlerGuard& guard, HWND parent,
                                                 int identifier) {
  if (auto* label = dynamic_cast<Label*>(&control))
    return std::make_unique<LabelControl>(*label, parent, identifier);
  if (auto* button = dynamic_cast<Button*>(&control))
    return std::make_unique<ButtonControl>(*button, guard, parent, identifier);
  if (auto* frame = dynamic_cast<Frame*>(&control))
    return std::make_unique<FrameControl>(*frame, parent, identifier);
  if (auto* image = dynamic_cast<ImageControl*>(&control))
    return std::make_unique<PictureControl>(*image, parent, identifier);
  if (auto* line = dynamic_cast<Line*>(&control))
    return std::make_unique<LineControl>(*line, parent, identifier);
  if (auto* files = dynamic_cast<FileListBox*>(&control))
    return std::make_unique<FileList>(*files, guard, parent, identifier);
  return nullptr;
}

}  // namespace tarvo::win32
