#include "platform/toolkit/focus/key_input.h"

#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/mnemonic.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit::toolkit {
namespace {

// The keys that do at the keyboard what a double click does.
bool ChoosesByKey(int key, int shift) {
  return (key == kKeyF4 && shift == 0) || (key == kKeyDown && shift == kAlt);
}

bool ClickMnemonicIn(const Controls& controls, char letter) {
  for (const auto& control : controls) {
    if (!control->Reachable() || OnHiddenTab(*control)) continue;
    if (auto* bar = dynamic_cast<Toolbar*>(control.get())) {
      if (const int index = bar->FindMnemonic(letter); index >= 0) {
        bar->UserClick(static_cast<std::size_t>(index));
        return true;
      }
    } else if (auto* button = dynamic_cast<CommandButton*>(control.get())) {
      if (MnemonicOf(button->Caption()) == letter) {
        button->UserClick();
        return true;
      }
    } else if (auto* box = dynamic_cast<CheckBox*>(control.get())) {
      if (MnemonicOf(box->Caption()) == letter) {
        box->UserToggle();
        return true;
      }
    } else if (auto* page = dynamic_cast<UserControl*>(control.get())) {
      if (ClickMnemonicIn(page->Controls(), letter)) return true;
    }
  }
  return false;
}

}  // namespace

bool KeyInput::Key(const KeyStroke& stroke) {
  const auto keep = window_.AsControl().shared_from_this();
  if (window_.Composing() && stroke.code == kKeyReturn) return false;  // it only ends the composition
  if (stroke.code == kKeyTab && !(stroke.shift & (kCtrl | kAlt))) {
    Tab(!(stroke.shift & kShift));
    return false;
  }
  if (const char letter = MnemonicKeyOf(stroke); letter != 0) {
    if (const Controls* controls = window_.LoadedControls(); controls && ClickMnemonicIn(*controls, letter))
      return false;
  }
  if (stroke.code != 0 && !KeyDown(stroke.code, stroke.shift)) return false;
  const std::u32string characters = CharactersOf(stroke);
  for (const char32_t character : characters) {
    if (!KeyPress(character)) return false;
  }
  // A text for which no KeyPress came, as of Alt and an apostrophe, is entered by no widget either.
  if (characters.empty() && std::any_of(stroke.text.begin(), stroke.text.end(), [](char32_t character) {
        return character >= 32 && character != 127;
      }))
    return false;
  const auto target = focus_.KeyTarget();
  return !target || !target->ActOnKey(stroke);
}

std::string KeyInput::Commit(const std::string& text) {
  const auto keep = window_.AsControl().shared_from_this();
  const auto target = focus_.Present();
  std::string passed;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = environment::NextCharacter(text, position);
    if (KeyPress(character)) passed += environment::Encode(character);
    if (target && target->Removed()) return {};
  }
  return passed;
}

void KeyInput::Tab(bool forward) {
  window_.Deliver([&] {
    const Controls* controls = window_.LoadedControls();
    const auto next = controls ? focus_.NextTabStop(*controls, forward) : nullptr;
    if (!next || !focus_.Move(*next)) return;
    // As on every desktop; what is typed replaces the text.
    if (auto* box = dynamic_cast<TextBox*>(next.get()); box && !box->MultiLine())
      box->Select(0, environment::Length(box->Text()));
  });
}

bool KeyInput::KeyDown(int key, int shift) {
  bool passed = false;
  std::shared_ptr<Control> target;
  window_.Deliver([&] {
    target = focus_.KeyTarget();
    if (shift == 0 && ClickButtonOf(key)) return;
    if (target) {
      if (UserControl* page = target->Page()) page->PreviewKeyDown(key, shift);
      if (key != 0) target->Raise(target->KeyDown, key, shift);
      if (ChoosesByKey(key, shift) && focus_.KeyTarget() == target) {
        if (auto* box = dynamic_cast<TextBox*>(target.get())) {
          key = 0;
          box->Raise(box->DblClick);
        }
      }
    }
    passed = key != 0;
  });
  return passed && focus_.KeyTarget() == target;
}

// Enter clicks the window's default button and Esc its cancel button, where it has one.
bool KeyInput::ClickButtonOf(int key) {
  const Controls* controls = window_.LoadedControls();
  if (!controls || (key != kKeyReturn && key != kKeyEscape)) return false;
  for (const auto& control : *controls) {
    auto* button = dynamic_cast<CommandButton*>(control.get());
    if (!button || !button->Reachable() || !(key == kKeyReturn ? button->Default() : button->Cancel()))
      continue;
    // A button that has the focus takes Enter itself.
    const auto& focus = focus_.Present();
    if (key == kKeyReturn && focus && focus->GetKind() == Kind::kCommandButton) {
      button = static_cast<CommandButton*>(focus.get());
    }
    button->UserClick();
    return true;
  }
  return false;
}

bool KeyInput::KeyPress(char32_t character) {
  bool passed = false;
  std::shared_ptr<Control> target;
  window_.Deliver([&] {
    target = focus_.KeyTarget();
    window_.PreviewKeyPress(character);
    if (target && character != 0) {
      if (UserControl* page = target->Page()) page->PreviewKeyPress(character);
      if (character != 0) target->Raise(target->KeyPress, character);
    }
    passed = character != 0;
  });
  return passed && focus_.KeyTarget() == target;
}

void KeyInput::Send(const std::string& keys) {
  if (keys == "{tab}") {
    const Controls* controls = window_.LoadedControls();
    if (const auto next = controls ? focus_.NextTabStop(*controls, true) : nullptr) focus_.Move(*next);
    return;
  }
  // {Home}+{End}: the whole text.
  if (auto* box = dynamic_cast<EditBox*>(focus_.Present().get()))
    box->Select(0, environment::Length(box->Text()));
}

}  // namespace dossierkit::toolkit
