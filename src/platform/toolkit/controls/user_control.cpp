#include "platform/toolkit/controls/user_control.h"

#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

UserControl::UserControl(std::string name) : Control(Kind::kUserControl, std::move(name)), controls_(*this) {}

UserControl::~UserControl() = default;

void UserControl::Move(const Rect& place) {
  const bool resized = place.width != Place().width || place.height != Place().height;
  Control::Move(place);
  if (resized) UserControl_Resize();
}

void UserControl::OnRemoved() {
  // The page loses the focus first, so that nothing that Terminate does can raise its events.
  if (Form* window = Window()) window->ForgetFocusOf(*this);
  UserControl_Terminate();
  Control::OnRemoved();
  for (const auto& control : controls_) control->removed_ = true;
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
