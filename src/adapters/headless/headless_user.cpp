#include "adapters/headless/headless_user.h"

#include <algorithm>
#include <stdexcept>

#include "adapters/headless/headless_platform.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/data_grid.h"
#include "platform/toolkit/controls/list_box.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/tree_view.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/controls/vertical_menu.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::headless {
namespace {

using toolkit::Control;
using toolkit::MaskEdBox;
using toolkit::TextBox;

template <typename T>
std::shared_ptr<T> FindKind(toolkit::Form& form) {
  for (const auto& control : form.Controls()) {
    if (auto found = std::dynamic_pointer_cast<T>(control)) return found;
    if (const auto* page = dynamic_cast<const toolkit::UserControl*>(control.get())) {
      for (const auto& inner : page->Controls()) {
        if (auto found = std::dynamic_pointer_cast<T>(inner)) return found;
      }
    }
  }
  throw std::logic_error("no control of that kind in " + form.Name());
}

void RequireSight(const Control& control) {
  if (toolkit::OnHiddenTab(control)) throw std::logic_error(control.Name() + " is on a hidden tab");
}

}  // namespace

toolkit::Form& HeadlessUser::Window() {
  toolkit::Form* form = desktop_.TopmostForm();
  if (!form) throw std::logic_error("no window is open");
  return *form;
}

std::shared_ptr<Control> HeadlessUser::Find(const std::string& name) {
  for (const auto& control : Window().Controls()) {
    if (control->Name() == name) return control;
    if (const auto* page = dynamic_cast<const toolkit::UserControl*>(control.get())) {
      if (auto found = page->Controls().Find(name)) return found;
    }
  }
  throw std::logic_error("no control " + name);
}

void HeadlessUser::Click(const std::string& name, int button) {
  const auto control = Find(name);
  if (!control->UserMouseDown(button, 0, 15, 15)) return;
  if (auto* command = dynamic_cast<toolkit::CommandButton*>(control.get())) command->UserClick();
  if (auto* box = dynamic_cast<toolkit::CheckBox*>(control.get())) box->UserToggle();
}

void HeadlessUser::DoubleClick(const std::string& name) {
  const auto control = Find(name);
  if (!control->UserMouseDown(toolkit::kLeftButton, 0, 15, 15)) return;
  if (auto* box = dynamic_cast<TextBox*>(control.get())) box->UserDblClick();
  if (auto* list = dynamic_cast<toolkit::ListBox*>(control.get())) list->UserDblClick();
  if (auto* tree = dynamic_cast<toolkit::TreeView*>(control.get())) tree->UserDblClick();
}

void HeadlessUser::ClickToolbar(const std::string& key) {
  const auto bar = FindKind<toolkit::Toolbar>(Window());
  const auto& buttons = bar->Buttons();
  const auto button =
      std::find_if(buttons.begin(), buttons.end(), [&](const auto& b) { return b.Key() == key; });
  if (button == buttons.end()) throw std::logic_error("no button " + key);
  bar->UserClick(static_cast<std::size_t>(button - buttons.begin()));
}

void HeadlessUser::ClickMenu(int item) { FindKind<toolkit::VerticalMenu>(Window())->UserClick(item); }

void HeadlessUser::ClickRow(int row) { FindKind<toolkit::DataGrid>(Window())->UserSelectRow(row); }

void HeadlessUser::ClickListRow(const std::string& name, int row) {
  const auto control = Find(name);
  RequireSight(*control);
  auto& list = dynamic_cast<toolkit::ListBox&>(*control);
  if (list.UserMouseDown(toolkit::kLeftButton, 0, 15, row * kRowHeight + kRowHeight / 2))
    list.UserSelect(row);
}

void HeadlessUser::ClickNode(const std::string& name, const std::string& key) {
  const auto control = Find(name);
  RequireSight(*control);
  auto& tree = dynamic_cast<toolkit::TreeView&>(*control);
  const int node = tree.Nodes().Find(key).Index();
  if (!tree.InSight(node)) throw std::logic_error("node " + key + " is not in sight");
  if (tree.UserMouseDown(toolkit::kLeftButton, 0, 15, 15)) tree.UserSelect(node);
}

void HeadlessUser::FoldNode(const std::string& name, const std::string& key) {
  const auto control = Find(name);
  RequireSight(*control);
  auto& tree = dynamic_cast<toolkit::TreeView&>(*control);
  const auto node = tree.Nodes().Find(key);
  if (!tree.InSight(node.Index())) throw std::logic_error("node " + key + " is not in sight");
  if (tree.UserMouseDown(toolkit::kLeftButton, 0, 15, 15)) tree.UserExpand(node.Index(), !node.Expanded());
}

void HeadlessUser::SelectTab(const std::string& name, int tab) {
  const auto control = Find(name);
  RequireSight(*control);
  auto& strip = dynamic_cast<toolkit::TabStrip&>(*control);
  if (strip.UserMouseDown(toolkit::kLeftButton, 0, 15, 15)) strip.UserSelectTab(tab);
}

void HeadlessUser::Type(const std::string& text) {
  for (const auto& character : environment::Characters(text)) {
    std::size_t position = 0;
    const char32_t code = environment::NextCharacter(character, position);
    // Beyond ASCII it is the committed text of an input method: no key goes down.
    if (code >= 0x80) {
      Enter(Window().UserCommit(character));
    } else if (Window().UserKey({toolkit::KeyCodeOfCharacter(code), 0, {code}})) {
      Edit({toolkit::KeyCodeOfCharacter(code), 0, {code}});
    }
  }
}

void HeadlessUser::Press(int key, int shift) {
  const toolkit::KeyStroke stroke{key, shift, {}};
  if (Window().UserKey(stroke)) Edit(stroke);
}

// What a native widget does with a text that an input method hands over.
void HeadlessUser::Enter(const std::string& text) {
  const auto focus = Window().ActiveControl();
  if (text.empty()) return;
  if (auto* box = dynamic_cast<TextBox*>(focus.get())) {
    box->UserReplace(box->SelStart(), box->SelLength(), text);
  } else if (auto* masked = dynamic_cast<MaskEdBox*>(focus.get())) {
    masked->UserType(text);
  }
}

// What a native widget does with a key that the model leaves to it.
void HeadlessUser::Edit(const toolkit::KeyStroke& stroke) {
  const auto focus = Window().ActiveControl();
  if (auto* button = dynamic_cast<toolkit::CommandButton*>(focus.get())) {
    if (stroke.code == ' ') button->UserClick();
  } else if (auto* check = dynamic_cast<toolkit::CheckBox*>(focus.get())) {
    if (stroke.code == ' ') check->UserToggle();
  }
  auto* box = dynamic_cast<toolkit::EditBox*>(focus.get());
  if (!box) return;
  const std::size_t size = environment::Length(box->Text());
  if (stroke.code == toolkit::kKeyHome) box->UserSelect(0, 0);
  if (stroke.code == toolkit::kKeyEnd) box->UserSelect(size, 0);
  auto* text = dynamic_cast<TextBox*>(focus.get());
  if (!text) return;
  const std::size_t start = box->SelStart();
  const std::size_t length = box->SelLength();
  switch (stroke.code) {
    case toolkit::kKeyReturn:
      if (text->MultiLine()) text->UserReplace(start, length, "\r\n");
      break;
    case toolkit::kKeyBack:
      if (length > 0 || start > 0)
        text->UserReplace(length > 0 ? start : start - 1, std::max<std::size_t>(length, 1), "");
      break;
    case toolkit::kKeyDelete:
      if (length > 0 || start < size) text->UserReplace(start, std::max<std::size_t>(length, 1), "");
      break;
    default: {
      std::string typed;
      for (const char32_t character : toolkit::CharactersOf(stroke)) {
        if (character >= 32) typed += environment::Encode(character);
      }
      if (!typed.empty()) text->UserReplace(start, length, typed);
    }
  }
}

void HeadlessUser::Paste(const std::string& text) {
  desktop_.GetPlatform().SetClipboardText(text);
  Press('V', toolkit::kCtrl);
}

std::vector<toolkit::EditMenuItem> HeadlessUser::OpenMenu(const std::string& name) {
  const auto box = Find<toolkit::EditBox>(name);
  if (!box) throw std::logic_error(name + " has no menu");
  if (!box->UserMouseDown(toolkit::kRightButton, 0, 15, 15)) return {};
  return box->ContextMenu();
}

void HeadlessUser::ChooseFromMenu(const std::string& name, const std::string& caption) {
  for (const auto& item : OpenMenu(name)) {
    if (item.caption == caption && item.enabled)
      return Find<toolkit::EditBox>(name)->UserCommand(item.command);
  }
  throw std::logic_error(caption + " cannot be chosen");
}

}  // namespace dossierkit::headless
