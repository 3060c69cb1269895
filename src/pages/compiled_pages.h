// CompiledPages: which sets have a page, and which fields each page shows. For hosts that look after their
// metadata: the rows of s_infoitem must name at least these.
#pragma once

#include <string>
#include <vector>

#include "platform/environment/export.h"

namespace dossierkit {

struct CompiledField {
  std::string column;   // as in A0301: the itemname of its row, and the column of the set's table
  bool masked = false;  // entered through a mask, else as free text
};

struct CompiledPage {
  // What the design has room for: the fields alone, a list of records, or a list that stays hidden where the
  // set has one record per person.
  enum class Records { kOne, kMany, kEither };
  std::string set;  // as in A03: the tblname of its rows, and the name of its table
  Records records = Records::kOne;
  std::vector<CompiledField> fields;
};

// All of them, in the order of the sets. Throws nothing but for want of memory.
DOSSIERKIT_EXPORT std::vector<CompiledPage> CompiledPages();

}  // namespace dossierkit
