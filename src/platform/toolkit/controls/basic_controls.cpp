#include "platform/toolkit/controls/basic_controls.h"

#include "platform/environment/failure.h"
#include "platform/toolkit/controls/control_window.h"

namespace dossierkit::toolkit {

void CaptionedControl::SetCaption(std::string caption) {
  if (caption_ == caption) return;
  caption_ = std::move(caption);
  CaptionChanged();
}

void Label::SetFontBold(bool bold) {
  Font font = GetFont();
  font.bold = bold;
  SetFont(font);
}

void Label::SetStyle(bool& style, bool on) {
  style = on;
  ShowAspect(Aspect::kStyle);
}

void Frame::SetBorder(bool border) {
  border_ = border;
  ShowAspect(Aspect::kStyle);
}

void Image::SetBorder(bool border) {
  border_ = border;
  ShowAspect(Aspect::kStyle);
}

void Image::SetPicture(Picture picture) {
  picture_ = std::move(picture);
  ShowAspect(Aspect::kContent);
}

void CommandButton::SetDefault(bool on) {
  default_ = on;
  ShowAspect(Aspect::kStyle);
}

void CommandButton::UserClick() {
  Report([&] {
    if (TakeFocus()) Raise(Click);
  });
}

bool CommandButton::ActOnKey(const KeyStroke& stroke) {
  if (stroke.code != kKeyReturn) return false;
  UserClick();
  return true;
}

void CheckBox::SetValue(int value) {
  if (value_ == value) return;
  value_ = value;
  ShowAspect(Aspect::kText);
  Raise(Click);
}

void CheckBox::UserToggle() {
  bool toggled = false;
  Report([&] {
    if (!TakeFocus()) return;
    toggled = true;
    SetValue(value_ == 0 ? 1 : 0);
  });
  // The native widget may have toggled itself.
  if (!toggled) ShowAspect(Aspect::kText);
}

void CommonDialog::ShowOpen() {
  ControlWindow* window = Window();
  if (!window) throw environment::MakeFailure(environment::kObjectUnloaded);
  file_name = window->ChooseFile(*this);
}

}  // namespace dossierkit::toolkit
