// The part of a window that decides where the focus is.
#include <algorithm>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/text_box.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {
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
