#include "platform/toolkit/focus/focus.h"

#include <algorithm>

#include "platform/environment/during.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit::toolkit {
namespace {

// By their tab index, those of a page in the page's place.
std::vector<std::shared_ptr<Control>> TabOrder(const Controls& all) {
  const auto sorted = [](const Controls& controls) {
    std::vector<std::shared_ptr<Control>> order(controls.begin(), controls.end());
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a->TabIndex() < b->TabIndex(); });
    return order;
  };
  std::vector<std::shared_ptr<Control>> order;
  for (const auto& control : sorted(all)) {
    if (const auto* page = dynamic_cast<const UserControl*>(control.get())) {
      const auto inner = sorted(page->Controls());
      order.insert(order.end(), inner.begin(), inner.end());
    } else {
      order.push_back(control);
    }
  }
  return order;
}

}  // namespace

std::shared_ptr<Control> Focus::KeyTarget() const {
  return present_ && present_->Reachable() ? present_ : nullptr;
}

bool Focus::Check() {
  // A check that moves the focus itself is not asked again.
  if (!present_ || checking_) return true;
  const environment::During checking(checking_);
  const auto checked = present_;
  bool cancel = false;
  checked->Raise(checked->Validate, cancel);
  if (cancel && present_ == checked) checked->ShowAspect(Aspect::kFocus);
  return !cancel;
}

bool Focus::Move(Control& to) {
  if (present_.get() == &to) return true;
  const auto target = to.shared_from_this();
  if (!Check()) return false;
  if (!target->Reachable()) return false;
  if (present_ == target) return true;
  const auto from = present_;
  present_ = target;
  if (from) from->Raise(from->LostFocus);
  if (present_ != target) return false;
  target->ReceiveFocus();
  return present_ == target;
}

void Focus::ForgetOf(const Control& removed) {
  for (Control* control = present_.get(); control; control = control->Owner()) {
    if (control == &removed) {
      present_.reset();
      return;
    }
  }
}

std::shared_ptr<Control> Focus::NextTabStop(const Controls& all, bool forward) const {
  auto order = TabOrder(all);
  if (!forward) std::reverse(order.begin(), order.end());
  const auto present = std::find(order.begin(), order.end(), present_);
  if (present != order.end()) std::rotate(order.begin(), present + 1, order.end());
  const auto next = std::find_if(order.begin(), order.end(), [](const auto& control) {
    return control->TabStop() && control->Reachable() && !OnHiddenTab(*control);
  });
  return next == order.end() ? nullptr : *next;
}

}  // namespace dossierkit::toolkit
