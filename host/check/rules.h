// Styles and check rules of fields: whether the component can read them.
#pragma once

#include <string>

#include "host/check/reading.h"

namespace dossierkit::check {

// Whether every letter of the style stands for a part of a date, or the style is a number's.
bool IsReadable(const std::string& style);

// What is wrong with the rule of a field and what comes of it, or the empty text.
std::string RuleProblem(const Item& item);

}  // namespace dossierkit::check
