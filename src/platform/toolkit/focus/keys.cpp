// The part of a window that decides what a key passes through and where it goes.
#include "platform/environment/text.h"
#include "platform/toolkit/controls/mnemonic.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

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

bool Form::UserKey(const KeyStroke& stroke) {
  const auto keep = shared_from_this();
  if (desktop_.Composing() && stroke.code == kKeyReturn) return false;  // it only ends the composition
  if (stroke.code == kKeyTab && !(stroke.shift & (kCtrl | kAlt))) {
    UserTab(!(stroke.shift & kShift));
    return false;
  }
  if (const char letter = MnemonicKeyOf(stroke); letter && loaded_ && ClickMnemonicIn(*controls_, letter))
    return false;
  if (stroke.code != 0 && !UserKeyDown(stroke.code, stroke.shift)) return false;
  for (const char32_t character : CharactersOf(stroke)) {
    if (!UserKeyPress(character)) return false;
  }
  const auto target = KeyTarget();
  return !target || !target->ActOnKey(stroke);
}

void Form::UserCompose(bool composing) { desktop_.SetComposing(composing); }

std::string Form::UserCommit(const std::string& text) {
  const auto keep = shared_from_this();
  const auto target = focus_;
  std::string passed;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = environment::NextCharacter(text, position);
    if (UserKeyPress(character)) passed += environment::Encode(character);
    if (target && target->Removed()) return {};
  }
  return passed;
}

// A control that was disabled or hidden while it has the focus keeps it, but gets no keys.
std::shared_ptr<Control> Form::KeyTarget() const { return focus_ && focus_->Reachable() ? focus_ : nullptr; }

bool Form::UserKeyDown(int key, int shift) {
  bool passed = false;
  std::shared_ptr<Control> target;
  Deliver([&] {
    target = KeyTarget();
    if (shift == 0 && ClickButtonOf(key)) return;
    if (target) {
      if (UserControl* page = target->Page(); page && page->KeyPreview()) {
        const auto keep = page->shared_from_this();
        page->UserControl_KeyDown(key, shift);
      }
      if (key != 0) target->Raise(target->KeyDown, key, shift);
      if (ChoosesByKey(key, shift) && KeyTarget() == target) {
        if (auto* box = dynamic_cast<TextBox*>(target.get())) {
          key = 0;
          box->Raise(box->DblClick);
        }
      }
    }
    passed = key != 0;
  });
  return passed && KeyTarget() == target;
}

// Enter clicks the window's default button and Esc its cancel button, where it has one.
bool Form::ClickButtonOf(int key) {
  if (key != kKeyReturn && key != kKeyEscape) return false;
  for (const auto& control : *controls_) {
    auto* button = dynamic_cast<CommandButton*>(control.get());
    if (!button || !button->Reachable() || !(key == kKeyReturn ? button->Default() : button->Cancel()))
      continue;
    // A button that has the focus takes Enter itself.
    if (key == kKeyReturn && focus_ && focus_->GetKind() == Kind::kCommandButton) {
      button = static_cast<CommandButton*>(focus_.get());
    }
    button->UserClick();
    return true;
  }
  return false;
}

bool Form::UserKeyPress(char32_t character) {
  bool passed = false;
  std::shared_ptr<Control> target;
  Deliver([&] {
    target = KeyTarget();
    if (key_preview_) Form_KeyPress(character);
    if (target && character != 0) {
      if (UserControl* page = target->Page(); page && page->KeyPreview()) {
        const auto keep = page->shared_from_this();
        page->UserControl_KeyPress(character);
      }
      if (character != 0) target->Raise(target->KeyPress, character);
    }
    passed = character != 0;
  });
  return passed && KeyTarget() == target;
}

}  // namespace dossierkit::toolkit
