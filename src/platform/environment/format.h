// Format: a value as text by a pattern. The one formatter of masks, checks and the record list.
#pragma once

#include <string>
#include <string_view>

#include "platform/environment/value.h"

namespace dossierkit::environment {

// `value` by `pattern`. Date patterns know yyyy yy mm m dd d hh h nn n ss s in any case, number
// patterns 0 # . , and %; every other character is copied. What is no date (for a date pattern) or
// no number (for a number pattern) comes back as its text, unchanged; Null and unset give "". An
// empty pattern gives the text of the value.
std::string Format(const Value& value, std::string_view pattern);

}  // namespace dossierkit::environment
