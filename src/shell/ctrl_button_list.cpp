#include "shell/ctrl_button_list.h"

namespace dossierkit {

ctrlButtonList::ctrlButtonList(std::string name) : UserControl(std::move(name)) {
  Toolbar1_ = UserControl::Controls().Make<toolkit::Toolbar>("Toolbar1");
  Toolbar1_->AddButton("PrePerson", "上一人", 1);
  Toolbar1_->AddButton("NextPerson", "下一人", 2);
  Toolbar1_->AddSeparator();
  Toolbar1_->AddButton("Add", "增加", 3);
  Toolbar1_->AddButton("Modify", "修改", 4);
  Toolbar1_->AddButton("Delete", "删除", 5);
  Toolbar1_->AddButton("Save", "保存", 6);
  Toolbar1_->AddButton("Cancel", "取消", 7);
  Toolbar1_->AddSeparator();
  Toolbar1_->AddButton("PreItem", "上一条", 1);
  Toolbar1_->AddButton("NextItem", "下一条", 2);
  // Required: the strip carries out no command by itself.
  click_ =
      Toolbar1_->ButtonClick.Subscribe([this](toolkit::ToolbarButton& button) { ButtonClick.Raise(button); });
}

}  // namespace dossierkit
