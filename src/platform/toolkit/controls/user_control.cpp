#include "platform/toolkit/controls/user_control.h"

#include <exception>

#include "platform/toolkit/controls/control_window.h"

namespace dossierkit::toolkit {

UserControl::UserControl(std::string name) : Control(Kind::kUserControl, std::move(name)), controls_(*this) {}

UserControl::~UserControl() { ReleaseControls(); }

// Whoever still holds one of the page's controls finds it removed.
void UserControl::ReleaseControls() {
  for (const auto& control : controls_) {
    control->removed_ = true;
    control->owner_ = nullptr;
  }
}

void UserControl::Move(const Rect& place) {
  const bool resized = place.width != Place().width || place.height != Place().height;
  Control::Move(place);
  if (resized) UserControl_Resize();
}

void UserControl::PreviewKeyDown(int& key, int shift) {
  const KeepAlive keep(*this);
  if (key_preview_) UserControl_KeyDown(key, shift);
}

void UserControl::PreviewKeyPress(char32_t& key) {
  const KeepAlive keep(*this);
  if (key_preview_) UserControl_KeyPress(key);
}

void UserControl::Appear() {
  const KeepAlive keep(*this);
  UserControl_Show();
}

void UserControl::OnRemoved() {
  // The page counts as removed before its Terminate, so that nothing done there raises its events or
  // brings the focus back; and it goes also if Terminate fails.
  if (ControlWindow* window = Window()) window->ForgetFocusOf(*this);
  removed_ = true;
  for (const auto& control : controls_) control->removed_ = true;
  std::exception_ptr failure;
  try {
    UserControl_Terminate();
  } catch (...) {
    failure = std::current_exception();
  }
  Control::OnRemoved();
  ReleaseControls();
  if (failure) std::rethrow_exception(failure);
}

void UserControl::CreateViews() {
  Control::CreateViews();
  for (const auto& control : controls_) control->CreateViews();
}

void UserControl::DestroyViews() {
  for (const auto& control : controls_) control->DestroyViews();
  Control::DestroyViews();
}

}  // namespace dossierkit::toolkit
