// A window with two tabs, a tree on the first, a box and a list on the second, and the fixture of the
// tests that use it.
#pragma once

#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/tree_view.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {

// In tab order: Tab1, tree, txtDm, list, cmdOK.
class PickerForm : public Form {
 public:
  explicit PickerForm(Desktop& desktop) : Form(desktop, "frmPicker") {}

  std::shared_ptr<TabStrip> strip;
  std::shared_ptr<TreeView> tree;
  std::shared_ptr<TextBox> box;
  std::shared_ptr<ListBox> list;
  std::shared_ptr<CommandButton> button;

 protected:
  void BuildDesign() override {
    strip = Controls().Make<TabStrip>("Tab1");
    strip->AddTab("浏览查询");
    strip->AddTab("录入查询");
    tree = Controls().Make<TreeView>("tree");
    box = Controls().Make<TextBox>("txtDm");
    list = Controls().Make<ListBox>("list");
    button = Controls().Make<CommandButton>("cmdOK");
    strip->SetTabPage(*tree, 0);
    strip->SetTabPage(*box, 1);
    strip->SetTabPage(*list, 1);
    int index = 0;
    for (const auto& control : Controls()) control->SetTabIndex(index++);
  }
};

class PickerTest : public testing::Test {
 protected:
  // Shows the window, runs `scene` while it is open, and leaves it by the close box.
  void Visit(const std::function<void()>& scene) {
    platform.WillRun([scene](Form&) { scene(); });
    form->ShowModal();
  }
  template <typename... Arguments, typename Handler>
  void On(environment::Event<Arguments...>& event, Handler handler) {
    hooks.push_back(event.Subscribe(handler));
  }
  std::string Focus() const { return form->ActiveControl() ? form->ActiveControl()->Name() : ""; }

  // G1 (G11 (G111), G12), G2, all closed.
  void FillTree() {
    auto& nodes = form->tree->Nodes();
    const int first = nodes.Add("G1", "高等教育").Index();
    nodes.Add("G2", "中等教育");
    const int inner = nodes.Add(first, Relation::kChild, "G11", "研究生").Index();
    nodes.Add(first, Relation::kChild, "G12", "本科");
    nodes.Add(inner, Relation::kChild, "G111", "博士");
  }
  void FillList(int rows) {
    for (int i = 0; i < rows; ++i) form->list->AddItem("第" + std::to_string(i) + "行");
  }
  std::string Selected() { return form->tree->SelectedItem() < 0 ? "" : form->tree->SelectedNode().Key(); }

  headless::HeadlessPlatform platform;
  Desktop desktop{platform};
  headless::HeadlessUser user{desktop};
  std::vector<environment::Subscription> hooks;
  std::shared_ptr<PickerForm> form = std::make_shared<PickerForm>(desktop);
};

}  // namespace dossierkit::toolkit
