// The part of a window that decides where the focus is and where a key goes.
#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {
namespace {

// The keys that do at the keyboard what a double click does.
bool ChoosesByKey(int key, int shift) {
  return (key == kKeyF4 && shift == 0) || (key == kKeyDown && shift == kAlt);
}

}  // namespace

bool Form::CheckFocus() {
  // A check that moves the focus itself is not asked again.
  if (!focus_ || checking_) return true;
  struct Checking {
    bool& flag;
    explicit Checking(bool& checking) : flag(checking) { flag = true; }
    ~Checking() { flag = false; }
  } checking(checking_);
  const auto checked = focus_;
  bool cancel = false;
  checked->Raise(checked->Validate, cancel);
  if (cancel && focus_ == checked) checked->ShowAspect(Aspect::kFocus);
  return !cancel;
}

bool Form::MoveFocus(Control& to) {
  if (focus_.get() == &to) return true;
  const auto target = to.shared_from_this();
  if (!CheckFocus()) return false;
  if (!target->Reachable()) return false;
  if (focus_ == target) return true;
  const auto from = focus_;
  focus_ = target;
  if (from) from->Raise(from->LostFocus);
  if (focus_ != target) return false;
  target->OnFocus();
  target->ShowAspect(Aspect::kFocus);
  target->Raise(target->GotFocus);
  return focus_ == target;
}

// A window that set no focus itself starts on its first tab stop.
void Form::FocusFirstStop() {
  if (const auto first = NextTabStop(true)) MoveFocus(*first);
}

void Form::ForgetFocusOf(const Control& removed) {
  for (Control* control = focus_.get(); control; control = control->Owner()) {
    if (control == &removed) {
      focus_.reset();
      return;
    }
  }
}

std::vector<std::shared_ptr<Control>> Form::TabOrder() const {
  const auto by_tab_index = [](const auto& a, const auto& b) { return a->TabIndex() < b->TabIndex(); };
  std::vector<std::shared_ptr<Control>> order;
  if (!loaded_) return order;
  std::vector<std::shared_ptr<Control>> own(controls_->begin(), controls_->end());
  std::stable_sort(own.begin(), own.end(), by_tab_index);
  for (const auto& control : own) {
    if (const auto* page = dynamic_cast<const UserControl*>(control.get())) {
      std::vector<std::shared_ptr<Control>> inner(page->Controls().begin(), page->Controls().end());
      std::stable_sort(inner.begin(), inner.end(), by_tab_index);
      order.insert(order.end(), inner.begin(), inner.end());
    } else {
      order.push_back(control);
    }
  }
  return order;
}

std::shared_ptr<Control> Form::NextTabStop(bool forward) {
  auto order = TabOrder();
  if (!forward) std::reverse(order.begin(), order.end());
  const auto present = std::find(order.begin(), order.end(), focus_);
  if (present != order.end()) std::rotate(order.begin(), present + 1, order.end());
  const auto next = std::find_if(order.begin(), order.end(), [](const auto& control) {
    return control->TabStop() && control->Reachable() && !OnHiddenTab(*control);
  });
  return next == order.end() ? nullptr : *next;
}

void Form::UserTab(bool forward) {
  Deliver([&] {
    const auto next = NextTabStop(forward);
    if (!next || !MoveFocus(*next)) return;
    // As on every desktop; what is typed replaces the text.
    if (auto* box = dynamic_cast<TextBox*>(next.get()); box && !box->MultiLine())
      box->Select(0, environment::Length(box->Text()));
  });
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

bool Form::UserEditKey(int key, int shift) {
  const auto command = EditCommandOf(key, shift);
  const auto target = KeyTarget();
  auto* box = command ? dynamic_cast<EditBox*>(target.get()) : nullptr;
  if (!box) return false;
  box->UserCommand(*command);
  return true;
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

void Form::DeliverSentKeys(const SentKeys& sent) {
  const auto page = sent.page.lock();
  if (sent.had_page && (!page || page->Removed())) return;
  if (sent.keys == "{tab}") {
    if (const auto next = NextTabStop(true)) MoveFocus(*next);
    return;
  }
  // {Home}+{End}: the whole text.
  if (auto* box = dynamic_cast<EditBox*>(focus_.get())) box->Select(0, environment::Length(box->Text()));
}

}  // namespace dossierkit::toolkit
