// DossierPage: a page of one information set, as the window, Save and the wrappers see it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/user_control.h"
#include "visit/wh_info.h"

namespace dossierkit {

class cFieldItems;

// What stands behind the key of a field, as in A01_A0101, in the name of the control of its value and in that
// of its caption.
inline constexpr std::string_view kValueEnding = "_v";
inline constexpr std::string_view kCaptionEnding = "_c";

// Whether a control holds the value of a field; and the key of the field of such a control or caption.
inline bool IsValueControl(const toolkit::Control& control) {
  return environment::Right(control.Name(), 2) == kValueEnding;
}
inline std::string KeyOf(const toolkit::Control& control) {
  return control.Name().substr(0, control.Name().size() - kValueEnding.size());
}

class DossierPage : public toolkit::UserControl {
 public:
  using UserControl::UserControl;

  virtual cWhInfo& WhInfo() = 0;
  virtual const std::shared_ptr<cFieldItems>& FieldItems() const = 0;
  virtual void SetFieldItems(std::shared_ptr<cFieldItems> items) = 0;

  // Fills the form from the metadata and values of one record; ends with WhInfo().IsChange false.
  // Throws where a control has no field, or a field's length is no number.
  virtual void setCtrl(const std::shared_ptr<cFieldItems>& Fitems) = 0;
  // Builds the record list of a set of many records per person and fills the form with the first.
  virtual void setDGItems() = 0;
};

}  // namespace dossierkit
