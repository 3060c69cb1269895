#include "platform/toolkit/controls/tab_strip.h"

#include <algorithm>

#include "platform/environment/failure.h"

namespace dossierkit::toolkit {

void TabStrip::Check(int tab) const {
  if (tab < 0 || tab >= TabCount()) throw environment::MakeFailure(environment::kInvalidPropertyValue);
}

void TabStrip::AddTab(std::string caption) {
  captions_.push_back(std::move(caption));
  ShowAspect(Aspect::kContent);
}

const std::string& TabStrip::TabCaption(int tab) const {
  Check(tab);
  return captions_[static_cast<std::size_t>(tab)];
}

void TabStrip::SetTabCaption(int tab, std::string caption) {
  Check(tab);
  captions_[static_cast<std::size_t>(tab)] = std::move(caption);
  ShowAspect(Aspect::kContent);
}

void TabStrip::SetTab(int tab) {
  Check(tab);
  BringToFront(tab);
}

void TabStrip::BringToFront(int tab) {
  const int before = std::exchange(tab_, tab);
  ShowAspect(Aspect::kSelection);
  if (before == tab) return;
  const auto placed = placed_;
  for (const auto& [weak, page] : placed) {
    const auto control = weak.lock();
    if (control && (page == before || page == tab)) control->ShowAspect(Aspect::kState);
  }
}

void TabStrip::SetTabPage(Control& control, int tab) {
  Check(tab);
  std::erase_if(placed_, [&](const Placed& placed) {
    const auto present = placed.control.lock();
    return !present || present.get() == &control;
  });
  placed_.push_back({control.weak_from_this(), tab});
  control.SetContainer(*this);
  control.ShowAspect(Aspect::kState);
}

int TabStrip::TabPage(const Control& control) const {
  const auto found = std::find_if(placed_.begin(), placed_.end(), [&](const Placed& placed) {
    return placed.control.lock().get() == &control;
  });
  return found == placed_.end() ? -1 : found->tab;
}

void TabStrip::UserSelectTab(int tab) {
  Report(Aspect::kSelection, [&] {
    if (tab < 0 || tab >= TabCount() || !TakeFocus()) return;
    if (!Removed()) BringToFront(tab);
  });
}

bool TabStrip::ActOnKey(const KeyStroke& stroke) {
  if (stroke.code != kKeyLeft && stroke.code != kKeyRight) return false;
  UserSelectTab(tab_ + (stroke.code == kKeyLeft ? -1 : 1));
  return true;
}

bool OnHiddenTab(const Control& control) {
  const Control* inner = &control;
  for (const Control* container = inner->Container(); container; container = inner->Container()) {
    if (container->GetKind() == Kind::kTabStrip) {
      const auto& strip = static_cast<const TabStrip&>(*container);
      if (const int tab = strip.TabPage(*inner); tab >= 0 && tab != strip.Tab()) return true;
    }
    inner = container;
  }
  return false;
}

}  // namespace dossierkit::toolkit
