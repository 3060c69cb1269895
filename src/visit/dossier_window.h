// DossierWindow: the main window, as its pages, the wrappers and Save see it.
#pragma once

#include <cstdint>
#include <string>

#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "platform/toolkit/loop/form.h"
#include "visit/dossier_page.h"

namespace dossierkit {

class DossierWindow : public toolkit::Form {
 public:
  using Form::Form;

  // The variables of a visit; they survive the window's unloading.
  std::string personID;
  std::int32_t OperationType = 0;  // 0 new person, 3 existing person
  std::int16_t PersonType = 0;
  bool IsSaved = false;
  std::string PhotoPath;      // folder of the photographs
  std::int32_t DealType = 0;  // 0 the person is not stored yet, 3 stored

  // The controls; each throws 364 while the window is unloaded.
  virtual toolkit::Toolbar& TbMain() = 0;
  virtual toolkit::VerticalMenu& VMenu1() = 0;
  virtual toolkit::Label& labPersonName() = 0;

  // Carries out the command of a toolbar button, whether it is enabled or not.
  virtual void TbMain_ButtonClick(const toolkit::ToolbarButton& Button) = 0;
  // Checks and writes the record on the page. False: not written, and the user was told why.
  virtual bool Save(DossierPage& ctrl) = 0;
};

}  // namespace dossierkit
