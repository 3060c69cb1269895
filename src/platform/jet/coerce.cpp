#include "platform/jet/coerce.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "platform/environment/dates.h"
#include "platform/environment/failure.h"
#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;
using environment::DateTime;
using environment::MakeFailure;
using environment::Value;

// Whole numbers up to here are exact in a double.
constexpr double kWholeNumbers = 9007199254740992.0;

double NumberOf(std::string_view text) {
  const auto number = environment::ParseNumber(text);
  if (!number) throw MakeFailure(environment::kDataMismatch);
  return *number;
}

Value CoerceDate(std::string_view text) {
  const auto date = environment::ParseDate(text);
  if (!date) throw MakeFailure(environment::kDataMismatch);
  return *date;
}

Value CoerceBoolean(std::string_view text) {
  if (environment::EqualIgnoringCase(text, "True")) return true;
  if (environment::EqualIgnoringCase(text, "False")) return false;
  return NumberOf(text) != 0;
}

Value CoerceInteger(std::string_view text, bool is_short) {
  const double number = NumberOf(text);
  return std::int64_t{is_short ? environment::ToInt16(number) : environment::ToInt32(number)};
}

}  // namespace

TableColumn ColumnOfDeclaration(std::string name, std::string_view declared_type) {
  struct Meaning {
    std::string_view part;
    ColumnKind kind;
  };
  // The first part that occurs decides.
  static constexpr std::array<Meaning, 19> kMeanings{{{"bool", ColumnKind::kBoolean},
                                                      {"bit", ColumnKind::kBoolean},
                                                      {"yesno", ColumnKind::kBoolean},
                                                      {"date", ColumnKind::kDate},
                                                      {"time", ColumnKind::kDate},
                                                      {"char", ColumnKind::kText},
                                                      {"text", ColumnKind::kText},
                                                      {"memo", ColumnKind::kText},
                                                      {"clob", ColumnKind::kText},
                                                      {"guid", ColumnKind::kText},
                                                      {"int", ColumnKind::kInteger},
                                                      {"long", ColumnKind::kInteger},
                                                      {"short", ColumnKind::kInteger},
                                                      {"counter", ColumnKind::kInteger},
                                                      {"real", ColumnKind::kFloating},
                                                      {"floa", ColumnKind::kFloating},
                                                      {"doub", ColumnKind::kFloating},
                                                      {"num", ColumnKind::kFloating},
                                                      {"dec", ColumnKind::kFloating}}};
  const std::string declared = environment::LowerCase(declared_type);
  TableColumn column{std::move(name), ColumnKind::kUnknown, false};
  for (const Meaning& meaning : kMeanings) {
    if (declared.find(meaning.part) == std::string::npos) continue;
    column.kind = meaning.kind;
    break;
  }
  column.is_short = column.kind == ColumnKind::kInteger && (declared.find("smallint") != std::string::npos ||
                                                            declared.find("short") != std::string::npos);
  return column;
}

Value Coerce(std::string_view text, const TableColumn& column) {
  switch (column.kind) {
    case ColumnKind::kDate: return CoerceDate(text);
    case ColumnKind::kBoolean: return CoerceBoolean(text);
    case ColumnKind::kInteger: return CoerceInteger(text, column.is_short);
    case ColumnKind::kFloating: return NumberOf(text) + 0.0;  // no negative zero
    case ColumnKind::kText:
    case ColumnKind::kUnknown: break;
  }
  return std::string(text);
}

Value CoerceToCompare(std::string_view text, ColumnKind kind) {
  const bool is_number = kind == ColumnKind::kInteger || kind == ColumnKind::kFloating;
  if (!is_number) return Coerce(text, {{}, kind, false});
  const double number = NumberOf(text);
  const auto whole = static_cast<std::int64_t>(std::clamp(number, -kWholeNumbers, kWholeNumbers));
  return static_cast<double>(whole) == number ? Value(whole) : Value(number);
}

std::string TextOfNumber(double number) {
  std::array<char, 400> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  return std::string(digits.data(), end.ptr);
}

std::string TextOfDate(const DateTime& date) {
  const bool has_time = date.hour != 0 || date.minute != 0 || date.second != 0;
  return environment::Format(date, has_time ? "yyyy-mm-dd hh:nn:ss" : "yyyy-mm-dd");
}

}  // namespace dossierkit::jet
