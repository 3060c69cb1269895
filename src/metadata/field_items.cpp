#include "metadata/field_items.h"

#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit {

const std::shared_ptr<cFieldItems>& cFieldItem::cFieldItems() {
  if (!items_) items_ = std::make_shared<dossierkit::cFieldItems>();
  return items_;
}

std::size_t cFieldItems::Find(std::string_view key) const {
  std::size_t position = 0;
  while (position < keys_.size() &&
         (keys_[position].empty() || !environment::EqualIgnoringCase(keys_[position], key))) {
    ++position;
  }
  return position;
}

cFieldItems::Member cFieldItems::Add(Member& objNewMember, const std::string& sKey) {
  if (!sKey.empty() && !taken_.insert(environment::LowerCase(sKey)).second)
    throw environment::MakeFailure(environment::kDuplicateKey);
  members_.push_back(std::move(objNewMember));  // which clears the caller's variable
  keys_.push_back(sKey);
  return members_.back();
}

const cFieldItems::Member& cFieldItems::Item(std::size_t vntIndexKey) const {
  if (vntIndexKey < 1 || vntIndexKey > members_.size()) {
    throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  }
  return members_[vntIndexKey - 1];
}

const cFieldItems::Member& cFieldItems::Item(std::string_view vntIndexKey) const {
  const std::size_t position = Find(vntIndexKey);
  if (position == members_.size()) throw environment::MakeFailure(environment::kInvalidCall);
  return members_[position];
}

void cFieldItems::remove(std::size_t vntIndexKey) {
  Item(vntIndexKey);
  const auto offset = static_cast<std::ptrdiff_t>(vntIndexKey - 1);
  taken_.erase(environment::LowerCase(keys_[vntIndexKey - 1]));
  members_.erase(members_.begin() + offset);
  keys_.erase(keys_.begin() + offset);
}

void cFieldItems::remove(std::string_view vntIndexKey) {
  Item(vntIndexKey);
  remove(Find(vntIndexKey) + 1);
}

}  // namespace dossierkit
