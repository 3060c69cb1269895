// Dates, numbers, Format and the constants of a statement. The first line is a pattern, the rest a text.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "fuzz/fuzz.h"
#include "platform/environment/dates.h"
#include "platform/environment/failure.h"
#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"
#include "platform/jet/coerce.h"
#include "platform/jet/renderer.h"
#include "platform/jet/tokens.h"

namespace dossierkit::environment {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool Exists(int year, int month, int day) {
  return year >= 100 && std::chrono::year_month_day(std::chrono::year(year),
                                                    std::chrono::month(static_cast<unsigned>(month)),
                                                    std::chrono::day(static_cast<unsigned>(day)))
                            .ok();
}

// A text that is read as a date is one of the calendar, and is read as the same one in every way of
// writing it.
void CheckParsedDate(const std::string& text, const DateTime& date) {
  REQUIRE(Exists(date.year, date.month, date.day));
  REQUIRE(date.hour >= 0 && date.hour < 24 && date.minute >= 0 && date.minute < 60 && date.second >= 0 &&
          date.second < 60);
  REQUIRE(text.find('_') == std::string::npos);
  REQUIRE(std::count_if(text.begin(), text.end(), IsDigit) >= 5);
  for (const char* pattern :
       {"yyyy-mm-dd hh:nn:ss", "yyyy/m/d h:nn:ss", "yyyy.mm.dd hh:nn:ss", "YYYY年MM月DD日 HH:NN:SS"}) {
    REQUIRE(ParseDate(Format(text, pattern)) == date);
    REQUIRE(Format(text, pattern) == Format(date, pattern));
  }
  REQUIRE(ParseDate(TextOf(date)) == date);
  REQUIRE(ParseDate(Format(date, "yyyymmdd")) == std::nullopt);
  const DateTime month{date.year, date.month, 1};
  for (const char* pattern : {"yyyy-mm", "yyyy.mm", "yyyy年mm月", "yyyy年m月"}) {
    REQUIRE(ParseDate(Format(date, pattern)) == month);
  }
}

// Three numbers, written as a date, are read exactly if there is such a day.
void CheckWrittenDate(std::string_view bytes) {
  if (bytes.size() < 4) return;
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const int year = (byte(0) * 256 + byte(1)) % 10000;
  const int month = byte(2) % 14;
  const int day = byte(3) % 33;
  for (const char* form :
       {"%04d-%02d-%02d", "%04d/%d/%d", "%04d.%02d.%d", "%04d年%d月%d日", " %04d年%02d月%02d "}) {
    char text[64];
    std::snprintf(text, sizeof text, form, year, month, day);
    const auto date = ParseDate(text);
    REQUIRE(date.has_value() == Exists(year, month, day));
    if (date) REQUIRE(*date == (DateTime{year, month, day}));
  }
}

// Outer blanks, a sign, digits with at most one point: the reference of the number test.
bool LooksLikeNumber(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return false;
  text = text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
  if (text[0] == '-' || text[0] == '+') text.remove_prefix(1);
  return std::any_of(text.begin(), text.end(), IsDigit) && std::count(text.begin(), text.end(), '.') <= 1 &&
         std::all_of(text.begin(), text.end(), [](char c) { return IsDigit(c) || c == '.'; });
}

template <typename Convert>
void CheckInteger(double number, double lowest, double highest, Convert convert) {
  const double rounded = std::nearbyint(number);  // halves to even
  try {
    REQUIRE(static_cast<double>(convert(number)) == rounded);
  } catch (const Failure& failure) {
    REQUIRE(failure.number() == kOverflow && (rounded < lowest || rounded > highest));
  }
}

void CheckNumber(const std::string& text) {
  const auto number = ParseNumber(text);
  REQUIRE(IsNumeric(text) == number.has_value());
  const double reference = std::strtod(text.c_str(), nullptr);
  REQUIRE(number.has_value() == (LooksLikeNumber(text) && std::isfinite(reference)));
  if (!number) return;
  REQUIRE(*number == reference);

  CheckInteger(*number, -32768, 32767, [](double value) { return ToInt16(value); });
  CheckInteger(*number, -2147483648.0, 2147483647.0, [](double value) { return ToInt32(value); });

  const std::string shown = TextOf(*number);
  const auto read = ParseNumber(shown);
  REQUIRE(read && std::abs(*read - *number) <= std::abs(*number) * 1e-14 && TextOf(*read) == shown);

  const std::string whole = Format(*number, "0");
  const std::string cents = Format(*number, "0.00");
  REQUIRE(Replace(Format(*number, "#,##0"), ",", "") == whole);
  if (std::abs(*number) < 1e12) {
    REQUIRE(std::abs(*ParseNumber(whole) - *number) <= 0.501);
    // Half a cent, and half a unit of the fifteenth digit, to which every number is rounded first.
    REQUIRE(std::abs(*ParseNumber(cents) - *number) <= 0.00501 + std::abs(*number) * 5e-15);
  }
  REQUIRE(cents.size() - cents.find('.') == 3);
  if (cents.size() <= 15) REQUIRE(Format(cents, "0.00") == cents);
}

// What a pattern copies stays; what it cannot format comes back unchanged.
void CheckFormat(const std::string& text, std::string_view pattern) {
  const std::string result = Format(text, pattern);
  const std::string small = LowerCase(pattern);
  const bool date_pattern =
      small.find_first_of("mdhns") != std::string::npos || small.find("yy") != std::string::npos;
  const bool number_pattern = !date_pattern && pattern.find_first_of("0#") != std::string_view::npos;
  const auto date = ParseDate(text);
  if (!(date_pattern && date) && !(number_pattern && IsNumeric(text))) REQUIRE(result == text);
  if (date_pattern && date) {
    const auto copied = [](std::string_view from, std::string_view without) {
      std::string rest;
      for (const char c : from) {
        if (without.find(c) == std::string_view::npos) rest += c;
      }
      return rest;
    };
    REQUIRE(copied(result, "0123456789yY") == copied(pattern, "0123456789ymdhnsYMDHNS"));
    REQUIRE(result == Format(*date, pattern));
  }
  Format(1234567.891, pattern);
  Format(DateTime{1990, 3, 5, 7, 8, 9}, pattern);
  REQUIRE(Format(Null(), pattern).empty() && Format(Value(), pattern).empty());
}

// A constant is stored as what the tests of dates and numbers make of it, or is refused.
void CheckCoerce(const std::string& text) {
  const auto coerced = [&](const char* declared, std::string_view from) -> std::optional<std::string> {
    try {
      return jet::ConstantOf(jet::Coerce(from, jet::ColumnOfDeclaration("c", declared)), {});
    } catch (const Failure& failure) {
      REQUIRE(failure.number() == kDataMismatch || failure.number() == kOverflow);
      return std::nullopt;
    }
  };
  const auto constant = [](const std::string& sql) { return sql[0] == '\'' ? jet::TextOfLiteral(sql) : sql; };
  for (const char* declared : {"datetime", "integer", "smallint", "double", "bit", "varchar(50)"}) {
    const auto sql = coerced(declared, text);
    if (sql) REQUIRE(coerced(declared, constant(*sql)) == sql);
  }
  REQUIRE(constant(*coerced("varchar(50)", text)) == text);
  const auto date = coerced("datetime", text);
  REQUIRE(date.has_value() == IsDate(text));
  if (date) REQUIRE(ParseDate(constant(*date)) == ParseDate(text));
  const auto floating = coerced("double", text);
  REQUIRE(floating.has_value() == IsNumeric(text));
  if (floating) REQUIRE(ParseNumber(*floating) == ParseNumber(text));  // with all its digits
  const auto integer = coerced("integer", text);
  if (integer) REQUIRE(*integer == std::to_string(ToInt32(*ParseNumber(text))));
}

void Check(const std::string& text, std::string_view pattern) {
  const auto date = ParseDate(text);
  REQUIRE(IsDate(text) == date.has_value());
  if (date) CheckParsedDate(text, *date);
  CheckWrittenDate(text);
  if (text.find('\0') == std::string::npos) CheckNumber(text);
  CheckFormat(text, pattern);
  CheckCoerce(text);
}

}  // namespace
}  // namespace dossierkit::environment

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text = dossierkit::fuzz::TextOf(data, size);
  const std::string_view pattern = dossierkit::fuzz::TakeLine(text);
  dossierkit::environment::Check(std::string(text), pattern);
  return 0;
}
