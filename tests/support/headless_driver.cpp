// The suite of tests for views on the views without a screen: what shows is what the model says.
#include <stdexcept>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/data_grid.h"
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/shown_text.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/tree_view.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "tests/adapters/views/driver.h"

namespace dossierkit::views {
namespace {

class HeadlessDriver : public Driver {
 public:
  std::string Text(const std::string& name) override {
    if (name == Window().Name()) return Window().Caption();
    const auto box = Find<toolkit::EditBox>(name);
    return box ? box->Text() : Find<toolkit::Control>(name)->OwnCaption();
  }
  toolkit::Selection Selected(const std::string& name) override {
    const auto box = Find<toolkit::EditBox>(name);
    const auto text = std::dynamic_pointer_cast<toolkit::TextBox>(box);
    return toolkit::ShownText(box->Text(), text && text->MultiLine()).ShownSelection(box->GetSelection());
  }
  bool Checked(const std::string& name) override { return Find<toolkit::CheckBox>(name)->Value() != 0; }
  bool InSight(const std::string& name) override {
    const auto control = Find<toolkit::Control>(name);
    for (toolkit::Control* outer = control.get(); outer; outer = outer->Container()) {
      if (!outer->Visible()) return false;
    }
    return !toolkit::OnHiddenTab(*control);
  }
  bool Enabled(const std::string& name) override {
    if (const auto* button = Button(name)) return button->Enabled();
    for (toolkit::Control* outer = Find<toolkit::Control>(name).get(); outer; outer = outer->Container()) {
      if (!outer->Enabled()) return false;
    }
    return true;
  }
  int Row(const std::string& name) override {
    const auto control = Find<toolkit::Control>(name);
    if (auto* list = dynamic_cast<toolkit::ListBox*>(control.get())) return list->ListIndex();
    if (auto* grid = dynamic_cast<toolkit::DataGrid*>(control.get())) return grid->Row() - 1;
    if (auto* menu = dynamic_cast<toolkit::VerticalMenu*>(control.get())) return menu->Marked() - 1;
    if (auto* strip = dynamic_cast<toolkit::TabStrip*>(control.get())) return strip->Tab();
    throw std::logic_error(name + " has no rows");
  }
  int Rows(const std::string& name) override {
    if (const auto list = Find<toolkit::ListBox>(name)) return list->ListCount();
    const auto tree = Find<toolkit::TreeView>(name);
    int rows = 0;
    for (int node = tree->Nodes().FirstChild(toolkit::kNoNode); node != toolkit::kNoNode;
         node = tree->Below(node))
      ++rows;
    return rows;
  }
  std::string Node(const std::string& name) override {
    const auto tree = Find<toolkit::TreeView>(name);
    return tree->SelectedItem() == toolkit::kNoNode ? "" : tree->Nodes().TextOf(tree->SelectedItem());
  }
  std::string Focus() override {
    const auto& focus = Window().ActiveControl();
    return focus ? focus->Name() : "";
  }
  std::string Spoken(const std::string& name) override {
    const auto* button = Button(name);
    return button ? button->AccessibleName() : Find<toolkit::Control>(name)->AccessibleName();
  }

 private:
  const toolkit::ToolbarButton* Button(const std::string& key) {
    for (const auto& control : Window().Controls()) {
      const auto* bar = dynamic_cast<const toolkit::Toolbar*>(control.get());
      if (!bar) continue;
      for (const auto& button : bar->Buttons()) {
        if (button.Key() == key) return &button;
      }
    }
    return nullptr;
  }
};

}  // namespace

std::unique_ptr<Driver> MakeDriver() { return std::make_unique<HeadlessDriver>(); }

}  // namespace dossierkit::views
