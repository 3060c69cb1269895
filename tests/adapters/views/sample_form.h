// SampleForm: a window with a control of nearly every kind, for the suite of tests for views.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ado/snapshot.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/data_grid.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::views {

// In tab order: txtName (姓名), txtCode, mskDate (####年##月), txtNote of several lines, chkFlag (Alt+Z),
// cmdPhoto (Alt+U), and txtInner inside frmInner; besides, a grid of five rows.
class SamplePage : public toolkit::UserControl {
 public:
  SamplePage() : UserControl("page") {
    SetKeyPreview(true);
    auto label = Controls().Make<toolkit::Label>("labName");
    label->SetCaption("姓名");
    label->Move({120, 120, 900, 300});
    auto name = Controls().Make<toolkit::TextBox>("txtName");
    name->Move({1200, 120, 2400, 330});
    name->SetLabelledBy(*label);
    Controls().Make<toolkit::TextBox>("txtCode")->Move({1200, 600, 2400, 330});
    auto date = Controls().Make<toolkit::MaskEdBox>("mskDate");
    date->SetMask("####年##月");
    date->Move({1200, 1080, 2400, 330});
    Controls().Make<toolkit::TextBox>("txtNote", true)->Move({1200, 1560, 2400, 900});
    auto flag = Controls().Make<toolkit::CheckBox>("chkFlag");
    flag->SetCaption("在职(&Z)");
    flag->Move({1200, 2580, 1500, 300});
    auto button = Controls().Make<toolkit::CommandButton>("cmdPhoto");
    button->SetCaption("更新(&U)");
    button->Move({1200, 3000, 1500, 390});
    auto frame = Controls().Make<toolkit::Frame>("frmInner");
    frame->Move({3900, 120, 3000, 1200});
    auto inner = Controls().Make<toolkit::TextBox>("txtInner");
    inner->SetContainer(*frame);
    inner->Move({120, 360, 2400, 330});
    auto grid = Controls().Make<toolkit::DataGrid>("DGItems");
    grid->Move({3900, 1500, 3000, 2700});
    grid->SetTabStop(false);
    int index = 0;
    for (const auto& control : Controls()) control->SetTabIndex(index++);
  }
  std::function<void(int&, int)> on_key_down;
  std::function<void(char32_t&)> on_key_press;

 protected:
  void UserControl_KeyDown(int& key, int shift) override {
    if (on_key_down) on_key_down(key, shift);
  }
  void UserControl_KeyPress(char32_t& key) override {
    if (on_key_press) on_key_press(key);
  }
};

class SampleForm : public toolkit::Form {
 public:
  explicit SampleForm(toolkit::Desktop& desktop) : Form(desktop, "frmSample") {
    SetCaption("测试窗口");
    SetDesignSize(9300, 6000);
  }

  template <typename T = toolkit::Control>
  std::shared_ptr<T> Get(const std::string& name) {
    auto found = Controls().Find(name);
    if (!found) found = page->Controls().Find(name);
    return std::dynamic_pointer_cast<T>(found);
  }
  void RemovePage() {
    for (std::size_t i = 0; i < Controls().Count(); ++i) {
      if (Controls().At(i) == page) return Controls().Remove(i);
    }
  }

  std::shared_ptr<SamplePage> page;
  std::shared_ptr<ado::Recordset> rows;
  std::function<void()> on_load;

 protected:
  void BuildDesign() override {
    auto bar = Controls().Make<toolkit::Toolbar>("TbMain");
    bar->AddButton("Add", "增加(&N)", 0, true);
    bar->AddButton("Delete", "删除(&D)", 0);
    bar->Move({0, 0, 9300, 450});
    auto menu = Controls().Make<toolkit::VerticalMenu>("VMenu1", "信息集", 4);
    menu->SetTabIndex(1);
    menu->Move({0, 450, 1800, 5500});
    auto area = Controls().Make<toolkit::Frame>("frmCtrl");
    area->SetBorder(false);
    area->Move({1900, 500, 7300, 5400});
    page = Controls().Make<SamplePage>();
    page->SetContainer(*area);
    page->Move({0, 0, 7300, 5400});
    ado::Snapshot data;
    data.AddColumn({"序号", ado::ColumnKind::kInteger, {}});
    data.AddColumn({"院校", ado::ColumnKind::kText, {}});
    for (int i = 1; i <= 5; ++i) {
      data.AppendInteger(i);
      data.AppendText("院校" + std::to_string(i));
    }
    rows = std::make_shared<ado::Recordset>(std::move(data));
    Get<toolkit::DataGrid>("DGItems")->SetDataSource(rows);
  }
  void Form_Load() override {
    if (on_load) on_load();
  }
  void ForgetDesign() override {
    page.reset();
    rows.reset();
  }
};

}  // namespace dossierkit::views
