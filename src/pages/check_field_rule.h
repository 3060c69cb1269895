// CheckFieldRule: the rule of a field, applied to a value.
#pragma once

#include <string>

#include "metadata/field_items.h"

namespace dossierkit {

// The message that tells why `value` breaks item.Check, or the empty text. A rule is a kind, a blank
// and values joined by commas: "L 15,18" for the lengths that are allowed, "B 1900-01,2050-12" for two
// bounds; anything else checks nothing. Throws 13 for a length that is no number, 9 for a bound that
// is missing.
std::string CheckFieldRule(const cFieldItem& item, const std::string& value);

}  // namespace dossierkit
