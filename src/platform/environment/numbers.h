// Numbers as the environment reads them in a text.
#pragma once

#include <optional>
#include <string_view>

namespace dossierkit::environment {

// The number in `text`, or nothing: outer blanks, one sign, digits with at most one point.
std::optional<double> ParseNumber(std::string_view text);

// The environment's number test.
bool IsNumeric(std::string_view text);

}  // namespace dossierkit::environment
