// ControlItem, ControlItems: the wrappers of a page's controls, and the few events they become.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/environment/event.h"
#include "platform/environment/value.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/data_grid.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"

namespace dossierkit {

class ControlItems;

// Free-form named values of a wrapper.
using PropertyBag = std::map<std::string, environment::Value>;

// Wraps one control: hears its events and hands them, by name, to its ControlItems.
class ControlItem {
 public:
  std::string CtrlType;  // name of the typed member that took the control; empty for other kinds
  PropertyBag Properties;
  std::shared_ptr<toolkit::Control> Ctrl;

  ControlItem() = default;
  ControlItem(const ControlItem&) = delete;
  ControlItem& operator=(const ControlItem&) = delete;

  void Init(std::shared_ptr<toolkit::Control> ctrl, ControlItems& parent);

  // The property of that name, else the default, else unset.
  environment::Value GetProperty(const std::string& PropName,
                                 const std::optional<environment::Value>& DefaultValue = std::nullopt) const;

  // The control by its kind; at most one is set.
  std::shared_ptr<toolkit::Image> controli;
  std::shared_ptr<toolkit::TextBox> controlt;
  std::shared_ptr<toolkit::Label> controll;
  std::shared_ptr<toolkit::CheckBox> controlc;
  std::shared_ptr<toolkit::DataGrid> controldg;  // required: never set, a grid stays silent
  std::shared_ptr<toolkit::MaskEdBox> controlMe;

 private:
  void Forward(environment::Event<>& event, const char* name);
  void ForwardFocus(toolkit::Control& control);
  void ForwardValidate(toolkit::Control& control);
  void ForwardButtons(toolkit::Control& control);
  void ForwardMouseMove(toolkit::Control& control);
  void HearEnter(toolkit::Control& control, void (ControlItem::*rule)(char32_t&));
  void MoveOn(char32_t& key);
  void PlainEnterRule(char32_t& key);
  void TextBoxEnterRule(char32_t& key);

  ControlItems* parent_ = nullptr;
  std::vector<environment::Subscription> hooks_;
};

// The wrappers of a page, by position from 1.
class ControlItems {
 public:
  std::shared_ptr<ControlItem> AddControl(std::shared_ptr<toolkit::Control> ctrl);
  // Both throw 9 where there is no such position.
  void remove(std::size_t index);
  const std::shared_ptr<ControlItem>& Item(std::size_t index) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
  void Clear() { items_.clear(); }

  environment::Event<toolkit::Control&, PropertyBag&> LButtonDown;
  environment::Event<toolkit::Control&> GotFocus;
  environment::Event<toolkit::Control&, bool&> Validate;
  environment::Event<toolkit::Control&> LostFocus;
  environment::Event<toolkit::Control&> DblClick;
  environment::Event<toolkit::Control&> Change;
  environment::Event<toolkit::Control&, PropertyBag&> RButtonDown;
  environment::Event<toolkit::Control&> ColResize;
  environment::Event<toolkit::Control&> MouseMove;

 private:
  friend class ControlItem;
  // Raises the event of that exact name; nothing for another name.
  void FireEvent(ControlItem& item, PropertyBag& extra, const std::string& eventName);
  void FireValidate(ControlItem& item, bool& Cancel);

  std::vector<std::shared_ptr<ControlItem>> items_;
};

}  // namespace dossierkit
