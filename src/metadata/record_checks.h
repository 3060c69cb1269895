// RecordChecks: the checks of a whole record on saving, and the text that tells of them.
#pragma once

#include <string>

#include "metadata/field_items.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/text_box.h"

namespace dossierkit {

// Which of its three walks Save takes.
enum class Walk {
  kInsert,   // a new person
  kUpdate,   // the basic data of a stored person
  kReplace,  // a record of any other set: deleted, checked, inserted
};

// Gathers the messages of one walk over the controls of a page.
class RecordChecks {
 public:
  explicit RecordChecks(Walk walk) : walk_(walk) {}

  // Throws 6 for a number beyond 16 bits, which ends the walk.
  void CheckText(const cFieldItem& item, const std::string& text);
  void CheckMasked(const cFieldItem& item, const toolkit::MaskEdBox& box);
  // After the walk: the identity number against the birth date, on a person's basic data alone.
  void CheckBirthDate();

  // All messages so far, one per line; empty if the record is good.
  const std::string& ErrorText() const { return error_text_; }

 private:
  void Add(const std::string& first_form, const std::string& later_form);
  void CheckIdNumberLength(const std::string& text);

  Walk walk_;
  std::string error_text_;
  std::string id_number_;
  std::string birth_date_;
};

// True for a masked field in which something stands besides the blank mask.
bool IsFilled(const toolkit::MaskEdBox& box);

}  // namespace dossierkit
