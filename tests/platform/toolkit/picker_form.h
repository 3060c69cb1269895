// PickerForm: a window with two tabs, a tree on the first, a box and a list on the second.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/tree_view.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

// In tab order: Tab1, tree, txtDm, list, cmdOK.
class PickerForm : public Form {
 public:
  explicit PickerForm(Desktop& desktop) : Form(desktop, "frmPicker") {
    SetCaption("代码帮助窗口");
    SetDesignSize(5055, 6555);
  }

  std::shared_ptr<TabStrip> strip;
  std::shared_ptr<TreeView> tree;
  std::shared_ptr<TextBox> box;
  std::shared_ptr<ListBox> list;
  std::shared_ptr<CommandButton> button;

  // G1 (G11 (G111), G12), G2, all closed.
  void FillTree() {
    auto& nodes = tree->Nodes();
    const int first = nodes.Add("G1", "高等教育").Index();
    nodes.Add("G2", "中等教育");
    const int inner = nodes.Add(first, Relation::kChild, "G11", "研究生").Index();
    nodes.Add(first, Relation::kChild, "G12", "本科");
    nodes.Add(inner, Relation::kChild, "G111", "博士");
  }
  void FillList(int rows) {
    for (int i = 0; i < rows; ++i) list->AddItem("第" + std::to_string(i) + "行");
  }
  // The key of the selected node, or nothing.
  std::string Selected() { return tree->SelectedItem() < 0 ? "" : tree->SelectedNode().Key(); }

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
    strip->Move({60, 60, 4935, 5940});
    tree->Move({75, 420, 4785, 5445});
    box->Move({75, 420, 4785, 315});
    list->Move({75, 780, 4785, 5085});
    button->Move({2600, 6090, 1100, 390});
    button->SetCaption("确定");
    tree->SetAccessibleName("代码树");
    list->SetAccessibleName("代码列表");
    strip->SetAccessibleName("查询方式");
    int index = 0;
    for (const auto& control : Controls()) control->SetTabIndex(index++);
  }
};

}  // namespace dossierkit::toolkit
