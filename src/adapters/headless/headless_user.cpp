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

// The character that comes with a key which types none itself, or 0.
char32_t CharacterOf(int key, int shift) {
  if (key == toolkit::kKeyReturn) return shift == toolkit::kCtrl ? U'\n' : U'\r';
  if (key == toolkit::kKeyBack || key == toolkit::kKeyEscape) return static_cast<char32_t>(key);
  const bool control = (shift & toolkit::kCtrl) && key >= 'A' && key <= 'Z';
  return control ? static_cast<char32_t>(key - 'A' + 1) : 0;
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
    if (code >= 0x80 || Window().UserKeyDown(static_cast<int>(environment::UpperCase(character)[0]), 0)) {
      TypeCharacter(code);
    }
  }
}

void HeadlessUser::TypeCharacter(char32_t character) {
  if (!Window().UserKeyPress(character)) return;
  const auto focus = Window().ActiveControl();
  if (auto* box = dynamic_cast<TextBox*>(focus.get())) {
    box->UserReplace(box->SelStart(), box->SelLength(), environment::Encode(character));
  } else if (auto* masked = dynamic_cast<MaskEdBox*>(focus.get())) {
    masked->UserType(environment::Encode(character));
  }
}

void HeadlessUser::Press(int key, int shift) {
  toolkit::Form& window = Window();
  const bool letter_or_digit = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
  if (shift == toolkit::kAlt && letter_or_digit) {
    const auto bar = FindKind<toolkit::Toolbar>(window);
    if (const int index = bar->FindMnemonic(static_cast<char>(key)); index >= 0)
      bar->UserClick(static_cast<std::size_t>(index));
    return;
  }
  if (!window.UserKeyDown(key, shift)) return;
  if (const char32_t character = CharacterOf(key, shift); character && !window.UserKeyPress(character))
    return;
  if (!window.UserEditKey(key, shift)) ActOn(key);
}

// What a native widget does with a key that nobody swallowed.
void HeadlessUser::ActOn(int key) {
  const auto focus = Window().ActiveControl();
  if (auto* box = dynamic_cast<TextBox*>(focus.get())) {
    const std::size_t start = box->SelStart();
    const std::size_t length = box->SelLength();
    const std::size_t size = environment::Length(box->Text());
    if (key == toolkit::kKeyReturn && box->MultiLine()) box->UserReplace(start, length, "\r\n");
    if (key == toolkit::kKeyBack && length > 0) box->UserReplace(start, length, "");
    if (key == toolkit::kKeyBack && length == 0 && start > 0) box->UserReplace(start - 1, 1, "");
    if (key == toolkit::kKeyDelete && (length > 0 || start < size))
      box->UserReplace(start, std::max<std::size_t>(length, 1), "");
    if (key == toolkit::kKeyHome) box->UserSelect(0, 0);
    if (key == toolkit::kKeyEnd) box->UserSelect(size, 0);
  } else if (auto* masked = dynamic_cast<MaskEdBox*>(focus.get())) {
    if (key == toolkit::kKeyBack) masked->UserBackspace();
    if (key == toolkit::kKeyDelete) masked->UserDelete();
    if (key == toolkit::kKeyHome) masked->UserSelect(0, 0);
    if (key == toolkit::kKeyEnd) masked->UserSelect(environment::Length(masked->Text()), 0);
  } else if (auto* grid = dynamic_cast<toolkit::DataGrid*>(focus.get())) {
    if (key == toolkit::kKeyUp) grid->UserSelectRow(grid->Row() - 1);
    if (key == toolkit::kKeyDown) grid->UserSelectRow(grid->Row() + 1);
  } else if (auto* menu = dynamic_cast<toolkit::VerticalMenu*>(focus.get())) {
    if (key == toolkit::kKeyUp) menu->UserMark(menu->Marked() - 1);
    if (key == toolkit::kKeyDown) menu->UserMark(menu->Marked() + 1);
    if (key == toolkit::kKeyReturn) menu->UserClick(menu->Marked());
  } else if (auto* list = dynamic_cast<toolkit::ListBox*>(focus.get())) {
    list->UserArrow(key);
  } else if (auto* tree = dynamic_cast<toolkit::TreeView*>(focus.get())) {
    tree->UserArrow(key);
  } else if (auto* strip = dynamic_cast<toolkit::TabStrip*>(focus.get())) {
    if (key == toolkit::kKeyLeft) strip->UserSelectTab(strip->Tab() - 1);
    if (key == toolkit::kKeyRight) strip->UserSelectTab(strip->Tab() + 1);
  } else if (auto* button = dynamic_cast<toolkit::CommandButton*>(focus.get())) {
    if (key == toolkit::kKeyReturn || key == ' ') button->UserClick();
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
