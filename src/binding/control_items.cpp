#include "binding/control_items.h"

#include <utility>

#include "platform/environment/failure.h"
#include "platform/toolkit/loop/form.h"
#include "visit/dossier_window.h"
#include "visit/runtime.h"

namespace dossierkit {

void ControlItem::Init(std::shared_ptr<toolkit::Control> ctrl, ControlItems& parent) {
  using toolkit::Control;
  Ctrl = std::move(ctrl);
  parent_ = &parent;
  if ((controlt = std::dynamic_pointer_cast<toolkit::TextBox>(Ctrl))) {
    CtrlType = "controlt";
    Forward(controlt->Change, "Change");
    ForwardFocus(*controlt);
    Forward(controlt->DblClick, "DblClick");
    ForwardButtons(*controlt);
    ForwardMouseMove(*controlt);
    ForwardValidate(*controlt);
    HearEnter(*controlt, &ControlItem::TextBoxEnterRule);
  }
  if ((controll = std::dynamic_pointer_cast<toolkit::Label>(Ctrl))) {
    CtrlType = "controll";
    ForwardButtons(*controll);
  }
  if ((controlc = std::dynamic_pointer_cast<toolkit::CheckBox>(Ctrl))) {
    CtrlType = "controlc";
    HearEnter(*controlc, &ControlItem::PlainEnterRule);
    ForwardButtons(*controlc);
    ForwardMouseMove(*controlc);
  }
  if ((controli = std::dynamic_pointer_cast<toolkit::Image>(Ctrl))) {
    CtrlType = "controli";
    ForwardButtons(*controli);
  }
  if ((controlMe = std::dynamic_pointer_cast<toolkit::MaskEdBox>(Ctrl))) {
    CtrlType = "controlMe";
    Forward(controlMe->Change, "Change");
    ForwardFocus(*controlMe);
    ForwardValidate(*controlMe);
    HearEnter(*controlMe, &ControlItem::PlainEnterRule);
  }
}

environment::Value ControlItem::GetProperty(const std::string& PropName,
                                            const std::optional<environment::Value>& DefaultValue) const {
  const auto found = Properties.find(PropName);
  if (found != Properties.end()) return found->second;
  return DefaultValue ? *DefaultValue : environment::Value();
}

void ControlItem::Forward(environment::Event<>& event, const char* name) {
  hooks_.push_back(event.Subscribe([this, name] { parent_->FireEvent(*this, Properties, name); }));
}

void ControlItem::ForwardFocus(toolkit::Control& control) {
  Forward(control.GotFocus, "GotFocus");
  Forward(control.LostFocus, "LostFocus");
}

void ControlItem::ForwardValidate(toolkit::Control& control) {
  hooks_.push_back(
      control.Validate.Subscribe([this](bool& cancel) { parent_->FireValidate(*this, cancel); }));
}

void ControlItem::ForwardButtons(toolkit::Control& control) {
  hooks_.push_back(control.MouseDown.Subscribe([this](int button, int, int, int) {
    if (button == toolkit::kLeftButton) parent_->FireEvent(*this, Properties, "LButtonDown");
    if (button == toolkit::kRightButton) parent_->FireEvent(*this, Properties, "RButtonDown");
  }));
}

void ControlItem::ForwardMouseMove(toolkit::Control& control) {
  hooks_.push_back(control.MouseMove.Subscribe(
      [this](int, int, int, int) { parent_->FireEvent(*this, Properties, "MouseMove"); }));
}

void ControlItem::HearEnter(toolkit::Control& control, void (ControlItem::*rule)(char32_t&)) {
  hooks_.push_back(control.KeyPress.Subscribe([this, rule](char32_t& key) {
    if (key == toolkit::kKeyReturn) (this->*rule)(key);
  }));
}

// On to the next control in tab order, with its whole text selected.
void ControlItem::MoveOn(char32_t& key) {
  key = 0;
  if (toolkit::ControlWindow* window = Ctrl->Window()) {
    window->SendKeys("{tab}");
    window->SendKeys("{Home}+{End}");
  }
}

void ControlItem::PlainEnterRule(char32_t& key) { MoveOn(key); }

void ControlItem::TextBoxEnterRule(char32_t& key) {
  const auto window = TheRuntime().window;
  const std::string set = window->VMenu1().menuitemkey();
  // The long texts of these sets take a line break.
  if (set == "B01" || set == "B02" || set == "B03") return;
  if (controlt->Tag() != "End") {
    MoveOn(key);
    return;
  }
  // The last field of a page: save, and go on with a new record where one is allowed.
  window->TbMain_ButtonClick(window->TbMain().Button("Save"));
  auto& add = window->TbMain().Button("Add");
  if (add.Enabled()) window->TbMain_ButtonClick(add);
}

std::shared_ptr<ControlItem> ControlItems::AddControl(std::shared_ptr<toolkit::Control> ctrl) {
  auto item = std::make_shared<ControlItem>();
  item->Init(std::move(ctrl), *this);
  items_.push_back(item);
  return item;
}

const std::shared_ptr<ControlItem>& ControlItems::Item(std::size_t index) const {
  if (index < 1 || index > items_.size()) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  return items_[index - 1];
}

void ControlItems::remove(std::size_t index) {
  Item(index);
  items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index - 1));
}

void ControlItems::FireEvent(ControlItem& item, PropertyBag& extra, const std::string& eventName) {
  toolkit::Control& ctl = *item.Ctrl;
  if (eventName == "LButtonDown") LButtonDown.Raise(ctl, extra);
  if (eventName == "GotFocus") GotFocus.Raise(ctl);
  if (eventName == "LostFocus") LostFocus.Raise(ctl);
  if (eventName == "DblClick") DblClick.Raise(ctl);
  if (eventName == "Change") Change.Raise(ctl);
  if (eventName == "RButtonDown") RButtonDown.Raise(ctl, extra);
  if (eventName == "ColResize") ColResize.Raise(ctl);
  if (eventName == "MouseMove") MouseMove.Raise(ctl);
}

void ControlItems::FireValidate(ControlItem& item, bool& Cancel) { Validate.Raise(*item.Ctrl, Cancel); }

}  // namespace dossierkit
