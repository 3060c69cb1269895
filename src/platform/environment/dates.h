// Dates as the environment reads them in a text.
#pragma once

#include <optional>
#include <string_view>

#include "platform/environment/value.h"

namespace dossierkit::environment {

// The date in `text`, or nothing. A four-digit year from 0100 to 9999, a month, optionally a day,
// written with 年 月 日, "-", "/" or "."; a time h:nn[:ss] may follow a full date behind a blank. The
// date must exist; without a day it is the first of the month. Outer blanks are ignored.
std::optional<DateTime> ParseDate(std::string_view text);

// The environment's date test.
bool IsDate(std::string_view text);

// Days in a month of a year (1 to 12, 100 to 9999).
int DaysInMonth(int year, int month);

}  // namespace dossierkit::environment
