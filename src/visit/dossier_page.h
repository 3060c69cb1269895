// DossierPage: a page of one information set, as the window, Save and the wrappers see it.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/controls/user_control.h"
#include "visit/wh_info.h"

namespace dossierkit {

class cFieldItems;

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
