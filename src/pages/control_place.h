// Where a failure with a control happened.
#pragma once

#include <string>
#include <utility>

#include "platform/environment/placed_failure.h"
#include "visit/dossier_page.h"

namespace dossierkit {

// The field of a value or caption, as in A03_A0302_v.
inline environment::Place PlaceOf(const toolkit::Control& control, std::string doing) {
  const std::string key = KeyOf(control);
  const auto end = key.find('_');
  return {key.substr(0, end), end == std::string::npos ? "" : key.substr(end + 1), std::move(doing)};
}

}  // namespace dossierkit
