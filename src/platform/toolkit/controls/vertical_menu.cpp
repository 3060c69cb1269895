#include "platform/toolkit/controls/vertical_menu.h"

#include <algorithm>

#include "platform/environment/failure.h"

namespace dossierkit::toolkit {

VerticalMenu::VerticalMenu(std::string name, std::string caption, int items)
    : Control(Kind::kVerticalMenu, std::move(name)), caption_(std::move(caption)) {
  for (int i = 1; i <= items; ++i) items_.push_back({"Item" + std::to_string(i), {}, {}});
}

void VerticalMenu::set_menucur(std::int32_t group) {
  if (group != 1) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  group_ = group;
}

void VerticalMenu::set_menuitemcur(std::int32_t item) {
  if (item < 1 || item > menuitemsmax()) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  item_ = item;
  marked_ = item;
  ShowAspect(Aspect::kSelection);
}

void VerticalMenu::set_menucaption(std::string caption) {
  caption_ = std::move(caption);
  ShowAspect(Aspect::kContent);
}

void VerticalMenu::set_menuitemsmax(std::int32_t count) {
  if (count < 0) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  items_.resize(static_cast<std::size_t>(count));
  item_ = std::clamp(item_, 1, std::max(count, 1));
  marked_ = item_;
  ShowAspect(Aspect::kContent);
}

void VerticalMenu::set_menuitemcaption(std::string caption) {
  Current().caption = std::move(caption);
  ShowAspect(Aspect::kContent);
}

void VerticalMenu::set_menuitemkey(std::string key) { Current().key = std::move(key); }

void VerticalMenu::set_menuitemicon(std::string path) {
  Current().icon = std::move(path);
  ShowAspect(Aspect::kContent);
}

const MenuItem& VerticalMenu::Current() const {
  if (item_ < 1 || item_ > menuitemsmax()) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  return items_[static_cast<std::size_t>(item_ - 1)];
}

MenuItem& VerticalMenu::Current() { return const_cast<MenuItem&>(std::as_const(*this).Current()); }

void VerticalMenu::UserClick(std::int32_t item) {
  Report(Aspect::kSelection, [&] {
    if (item < 1 || item > menuitemsmax() || !TakeFocus()) return;
    std::int32_t group = group_;
    std::int32_t clicked = item;
    marked_ = item;
    Raise(MenuItemClick, group, clicked);
  });
}

void VerticalMenu::UserMark(std::int32_t item) {
  Report(Aspect::kSelection, [&] {
    if (item >= 1 && item <= menuitemsmax() && TakeFocus()) marked_ = item;
  });
}

bool VerticalMenu::ActOnKey(const KeyStroke& stroke) {
  const std::int32_t last = menuitemsmax();
  const auto mark = [&](std::int32_t item) {
    if (last > 0) UserMark(std::clamp(item, 1, last));
    return true;
  };
  switch (stroke.code) {
    case kKeyUp: return mark(marked_ - 1);
    case kKeyDown: return mark(marked_ + 1);
    case kKeyHome: return mark(1);
    case kKeyEnd: return mark(last);
    case kKeyPageUp: return mark(marked_ - RowsOfAPage());
    case kKeyPageDown: return mark(marked_ + RowsOfAPage());
    case kKeyReturn: UserClick(marked_); return true;
    default: return false;
  }
}

}  // namespace dossierkit::toolkit
