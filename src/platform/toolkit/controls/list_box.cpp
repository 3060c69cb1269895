#include "platform/toolkit/controls/list_box.h"

#include <algorithm>

#include "platform/environment/failure.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::toolkit {

void ListBox::AddItem(std::string text) {
  items_.push_back(std::move(text));
  ShowAspect(Aspect::kContent);
}

void ListBox::Clear() {
  items_.clear();
  selected_ = -1;
  ShowAspect(Aspect::kContent);
}

const std::string& ListBox::List(int row) const {
  static const std::string kNone;
  return Has(row) ? items_[static_cast<std::size_t>(row)] : kNone;
}

void ListBox::SetListIndex(int row) {
  if (row != -1 && !Has(row)) throw environment::MakeFailure(environment::kInvalidPropertyValue);
  selected_ = row;
  ShowAspect(Aspect::kSelection);
}

int ListBox::RowAt(int x, int y) const {
  const View* view = GetView();
  return view ? view->RowAt(x, y) : -1;
}

void ListBox::UserSelect(int row) {
  Form* window = Window();
  if (!window) return;
  const KeepAlive keep(*this);
  window->Deliver([&] {
    if (!Reachable() || !Has(row) || !window->MoveFocus(*this)) return;
    // Getting the focus may have brought other rows.
    if (!Removed() && Has(row)) selected_ = row;
  });
  ShowAspect(Aspect::kSelection);
}

void ListBox::UserArrow(int key) {
  const int last = ListCount() - 1;
  if (last < 0) return;
  const auto select = [&](int row) { UserSelect(std::clamp(row, 0, last)); };
  switch (key) {
    case kKeyUp:
    case kKeyLeft: select(selected_ - 1); break;
    case kKeyDown:
    case kKeyRight: select(selected_ + 1); break;
    case kKeyHome: select(0); break;
    case kKeyEnd: select(last); break;
    default: break;
  }
}

void ListBox::UserDblClick() {
  Form* window = Window();
  if (!window) return;
  const KeepAlive keep(*this);
  window->Deliver([&] {
    if (Reachable() && window->MoveFocus(*this)) Raise(DblClick);
  });
}

}  // namespace dossierkit::toolkit
