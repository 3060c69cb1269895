// cWhInfo: the operation record of the page on show.
#pragma once

#include <cstdint>
#include <string>

namespace dossierkit {

// A plain record; nothing is derived or validated.
struct cWhInfo {
  std::string FldOrder;   // sort expression of the record list
  bool IsChange = false;  // the page holds edits that are not saved
  bool IsMult = false;    // the set holds many records per person
  std::string TabId;      // set identifier, as in A05
  std::string personID;   // A00 of the person on show
  std::int16_t id = 0;    // number of the record on show; 0 in a set of one record per person
};

}  // namespace dossierkit
