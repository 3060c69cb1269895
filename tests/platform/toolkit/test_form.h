// A small window with a toolbar, a menu and one page, and the fixture of the tests that use them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/environment/event.h"
#include "platform/toolkit/controls/data_grid.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "tests/platform/toolkit/form_test.h"

namespace dossierkit::toolkit {

// In tab order: txtName, mskDate (####年##月), txtNote of several lines, chkFlag, and txtInner inside the
// frame frmInner; besides, a label and a grid that is no tab stop.
class TestPage : public UserControl {
 public:
  TestPage(std::string name, Log& log) : UserControl(std::move(name)), log_(log) {
    SetKeyPreview(true);
    Place(Controls().Make<Label>("labName"), 9)->SetCaption("姓名");
    Place(Controls().Make<TextBox>("txtName"), 0);
    Place(Controls().Make<MaskEdBox>("mskDate"), 1)->SetMask("####年##月");
    Place(Controls().Make<TextBox>("txtNote", true), 2);
    Place(Controls().Make<CheckBox>("chkFlag"), 3);
    auto frame = Controls().Make<Frame>("frmInner");
    Place(Controls().Make<TextBox>("txtInner"), 4)->SetContainer(*frame);
    Place(Controls().Make<DataGrid>("grid"), 5)->SetTabStop(false);
    for (const auto& control : Controls()) Watch(*control);
  }
  ~TestPage() override { log_.push_back(Name() + ".gone"); }

  std::function<void()> on_show;
  std::function<void()> on_terminate;
  std::function<void(int&, int)> on_key_down;
  std::function<void(char32_t&)> on_key_press;

 protected:
  void UserControl_Initialize() override { log_.push_back(Name() + ".Initialize"); }
  void UserControl_Show() override {
    log_.push_back(Name() + ".Show");
    if (on_show) on_show();
  }
  void UserControl_Terminate() override {
    log_.push_back(Name() + ".Terminate");
    if (on_terminate) on_terminate();
  }
  void UserControl_KeyDown(int& key, int shift) override {
    if (on_key_down) on_key_down(key, shift);
  }
  void UserControl_KeyPress(char32_t& key) override {
    if (on_key_press) on_key_press(key);
  }

 private:
  template <typename T>
  static std::shared_ptr<T> Place(std::shared_ptr<T> control, int tab_index) {
    control->SetTabIndex(tab_index);
    return control;
  }

  void Watch(Control& control) {
    const auto note = [this, name = control.Name()](const std::string& event) {
      log_.push_back(name + event);
    };
    hooks_.push_back(control.GotFocus.Subscribe([note] { note(".GotFocus"); }));
    hooks_.push_back(control.LostFocus.Subscribe([note] { note(".LostFocus"); }));
    hooks_.push_back(control.Validate.Subscribe([note](bool&) { note(".Validate"); }));
    hooks_.push_back(control.MouseDown.Subscribe([note](int, int, int, int) { note(".MouseDown"); }));
  }

  Log& log_;
  std::vector<environment::Subscription> hooks_;
};

// The toolbar "Add", "Delete", "Save", a separator, "Exit"; a menu of three items; a frame for the page.
class TestForm : public Form {
 public:
  TestForm(Desktop& desktop, Log& log, std::string name = "frmTest")
      : Form(desktop, std::move(name)), log_(log) {
    SetCaption("测试窗口");
  }

  // Puts a new page in place of the one on show, as a click on the menu does.
  std::shared_ptr<TestPage> LoadPage(const std::string& name = "page") {
    RemovePage();
    auto page = std::dynamic_pointer_cast<TestPage>(Controls().Add("TestPage", name));
    page->SetContainer(*Controls().Find("frmCtrl"));
    return page;
  }
  void RemovePage() {
    for (std::size_t i = 0; i < Controls().Count(); ++i) {
      if (Controls().At(i)->GetKind() == Kind::kUserControl) return Controls().Remove(i);
    }
  }
  std::shared_ptr<TestPage> Page() {
    for (const auto& control : Controls()) {
      if (auto page = std::dynamic_pointer_cast<TestPage>(control)) return page;
    }
    return nullptr;
  }
  template <typename T = Control>
  std::shared_ptr<T> Get(const std::string& name) {
    auto found = Controls().Find(name);
    if (!found && Page()) found = Page()->Controls().Find(name);
    return std::dynamic_pointer_cast<T>(found);
  }
  using Form::SetKeyPreview;

  std::function<void()> on_load;
  std::function<void()> on_activate;
  std::function<void()> on_resize;
  std::function<void(char32_t&)> on_key_press;
  int variable = 0;  // survives the unloading

 protected:
  void BuildDesign() override {
    SetDesignSize(9000, 6000);
    auto bar = Controls().Make<Toolbar>("TbMain");
    bar->AddButton("Add", "增加(&N)", 3, true);
    bar->AddButton("Delete", "删除(&D)", 5);
    bar->AddButton("Save", "保存(&S)", 6, true);
    bar->AddSeparator();
    bar->AddButton("Exit", "退出(&X)", 9);
    Controls().Make<VerticalMenu>("VMenu1", "菜单", 3)->SetTabIndex(1);
    Controls().Make<Frame>("frmCtrl");
  }
  void Form_Load() override {
    log_.push_back(Name() + ".Load");
    if (on_load) on_load();
  }
  void Form_Activate() override {
    log_.push_back(Name() + ".Activate");
    if (on_activate) on_activate();
  }
  void Form_Resize() override {
    if (on_resize) on_resize();
  }
  void Form_KeyPress(char32_t& key) override {
    if (on_key_press) on_key_press(key);
  }

 private:
  Log& log_;
};

// The fixture of the tests that use a TestForm with a TestPage, on views of their own.
template <typename Views>
class ToolkitTestOn : public FormTest<TestForm, Views> {
 protected:
  ToolkitTestOn() {
    this->desktop.RegisterClass(
        "TestPage", [this](const std::string& name) { return std::make_shared<TestPage>(name, this->log); });
    this->form->on_load = [this] { this->form->LoadPage(); };
  }
};

class ToolkitTest : public ToolkitTestOn<headless::HeadlessPlatform> {
 protected:
  // Runs `action` as one event of the user.
  void InEvent(const std::function<void()>& action) { form->Deliver(action); }

  static std::size_t CountOf(const Log& noted, const std::string& entry) {
    std::size_t count = 0;
    for (const auto& item : noted) count += item == entry ? 1 : 0;
    return count;
  }
};

}  // namespace dossierkit::toolkit
