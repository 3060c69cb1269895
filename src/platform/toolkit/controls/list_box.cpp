#include "platform/toolkit/controls/list_box.h"

#include <algorithm>

#include "platform/environment/failure.h"

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
  Report(Aspect::kSelection, [&] {
    if (!Has(row) || !TakeFocus()) return;
    // Getting the focus may have brought other rows.
    if (!Removed() && Has(row)) selected_ = row;
  });
}

bool ListBox::ActOnKey(const KeyStroke& stroke) {
  const int last = ListCount() - 1;
  const auto select = [&](int row) {
    if (last >= 0) UserSelect(std::clamp(row, 0, last));
    return true;
  };
  switch (stroke.code) {
    case kKeyUp:
    case kKeyLeft: return select(selected_ - 1);
    case kKeyDown:
    case kKeyRight: return select(selected_ + 1);
    case kKeyHome: return select(0);
    case kKeyEnd: return select(last);
    case kKeyPageUp: return select(selected_ - RowsOfAPage());
    case kKeyPageDown: return select(selected_ + RowsOfAPage());
    default: return false;
  }
}

void ListBox::UserDblClick() {
  Report([&] {
    if (TakeFocus()) Raise(DblClick);
  });
}

}  // namespace dossierkit::toolkit
