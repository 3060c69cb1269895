// ctrlButtonList: a strip of buttons that no window places; it only reports its clicks.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit {

class ctrlButtonList : public toolkit::UserControl {
 public:
  explicit ctrlButtonList(std::string name);

  const std::shared_ptr<toolkit::Control>& UControl() const { return u_control_; }
  void SetUControl(std::shared_ptr<toolkit::Control> control) { u_control_ = std::move(control); }
  const toolkit::Controls& Controls() const { return UserControl::Controls(); }

  environment::Event<> Resize;
  environment::Event<const toolkit::ToolbarButton&> ButtonClick;

 protected:
  void UserControl_Resize() override { Resize.Raise(); }

 private:
  std::shared_ptr<toolkit::Toolbar> Toolbar1_;
  std::shared_ptr<toolkit::Control> u_control_;
  environment::Subscription click_;
};

}  // namespace dossierkit
