// DemoForm: a window with a control of every kind, laid out like the program's own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/environment/event.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/data_grid.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {

class DemoPage : public toolkit::UserControl {
 public:
  explicit DemoPage(const std::string& name);

  std::shared_ptr<toolkit::DataGrid> grid;
  std::shared_ptr<toolkit::Label> name_label, help;
  std::shared_ptr<toolkit::TextBox> name, coded, notes;
  std::shared_ptr<toolkit::MaskEdBox> date;
  std::shared_ptr<toolkit::CheckBox> check;
  std::shared_ptr<toolkit::CommandButton> button;
  std::shared_ptr<toolkit::Image> photo;
  std::vector<std::pair<int, int>> keys;  // that the page previewed, with their shift masks
  std::u32string characters;

 protected:
  void UserControl_Show() override;
  void UserControl_KeyDown(int& key, int shift) override;
  void UserControl_KeyPress(char32_t& key) override;

 private:
  void BuildFields();
  void BuildHelp();
};

class DemoForm : public toolkit::Form {
 public:
  explicit DemoForm(toolkit::Desktop& desktop, std::string name = "frmDemo", int width = 15240,
                    int height = 11115);

  // As page; drops the present one.
  void NewPage();
  void DropPage();

  std::shared_ptr<toolkit::Toolbar> bar;
  std::shared_ptr<toolkit::VerticalMenu> menu;
  std::shared_ptr<toolkit::Frame> area;
  std::shared_ptr<DemoPage> page;
  std::shared_ptr<ado::Recordset> rows;
  int row_count = 25;
  int resizes = 0;
  int activations = 0;
  std::function<void()> on_activate;

 protected:
  void BuildDesign() override;
  void Form_Resize() override { ++resizes; }
  void Form_Activate() override;
};

// A recordset of three columns: number, name, date.
std::shared_ptr<ado::Recordset> DemoRows(int count);

}  // namespace dossierkit::qt
