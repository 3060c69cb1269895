// cFieldItem, cFieldItems: the fields of an information set, with the values of one record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/environment/value.h"

namespace dossierkit {

class cFieldItems;

// A row of s_infoitem. A coded value is the pair Dmcod and Dmcpt, which change together.
class cFieldItem {
 public:
  std::string TblName;        // set identifier
  std::string ItemName;       // column in the set's table
  std::string ItemDesc;       // label
  std::string FieldType;      // as stored, in any case
  std::string FieldLength;    // number of characters, as text
  std::string CodeTable;      // empty for a field without codes
  environment::Value Dmcod;   // stored value: the code, or the plain value; unset before a record is read
  std::string Dmcpt;          // caption of the code
  bool IsNUll = false;        // the field may stay empty
  std::string Style;          // format pattern
  std::string Check;          // check rule
  std::int16_t FldWidth = 0;  // column width in the record list, twips
  std::string FldOrder;       // position in the record list
  std::string FldExplain;     // help text

  // A sub-collection, empty at first.
  const std::shared_ptr<dossierkit::cFieldItems>& cFieldItems();
  void SetcFieldItems(std::shared_ptr<dossierkit::cFieldItems> items) { items_ = std::move(items); }

 private:
  std::shared_ptr<dossierkit::cFieldItems> items_;
};

// Ordered by insertion, numbered from 1, with an optional key per member; keys are unique and
// compared without regard to case.
class cFieldItems {
 public:
  using Member = std::shared_ptr<cFieldItem>;

  // Adds the member, under the key unless that is empty, gives it back and clears the caller's
  // variable. Throws 457 where the key is taken.
  Member Add(Member& objNewMember, const std::string& sKey = {});
  // Throws 9 for an index out of range, 5 for an unknown key.
  const Member& Item(std::size_t vntIndexKey) const;
  const Member& Item(std::string_view vntIndexKey) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(members_.size()); }
  void remove(std::size_t vntIndexKey);
  void remove(std::string_view vntIndexKey);

  // Enumerates in insertion order.
  auto begin() const { return members_.begin(); }
  auto end() const { return members_.end(); }

 private:
  std::size_t Find(std::string_view key) const;  // position from 0, or Count

  std::vector<Member> members_;
  std::vector<std::string> keys_;
  std::set<std::string> taken_;  // the keys in small letters
};

}  // namespace dossierkit
