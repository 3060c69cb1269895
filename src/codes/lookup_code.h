// LookupCode: a typed text resolved to exactly one code, without a window.
#pragma once

#include <string>

#include "metadata/field_items.h"

namespace dossierkit {

// Looks `text` up in item.CodeTable: a code, caption or shorthand that is exactly it, else the one
// caption or shorthand that holds its characters in their order. Sets item.Dmcod and item.Dmcpt and
// returns the caption; an exact row without a code gives its caption alone. Returns the empty text
// where not exactly one row was found, or a failure was shown.
std::string LookupCode(cFieldItem& item, const std::string& text);

// The condition for rows whose caption or shorthand holds the characters of `text` in their order.
// A "%" or "_" in it stays a wildcard.
std::string MatchCondition(const std::string& text);

}  // namespace dossierkit
