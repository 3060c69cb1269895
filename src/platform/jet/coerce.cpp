#include "platform/jet/coerce.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "platform/environment/dates.h"
#include "platform/environment/failure.h"
#include "platform/environment/format.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"
#include "platform/jet/tokens.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;
using environment::DateTime;
using environment::MakeFailure;
using environment::Value;

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

// With every digit that tells it from its neighbours, and no exponent.
std::string TextOfDouble(double number) {
  std::array<char, 400> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  return std::string(digits.data(), end.ptr);
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

std::string ConstantOf(const Value& value) {
  if (const auto* held = value.As<bool>()) return *held ? "1" : "0";
  if (const auto* held = value.As<double>()) return TextOfDouble(*held);
  if (const auto* held = value.As<DateTime>()) return LiteralOf(TextOfDate(*held));
  return value.As<std::int64_t>() ? environment::TextOf(value) : LiteralOf(environment::TextOf(value));
}

std::string TextOfDate(const DateTime& date) {
  const bool has_time = date.hour != 0 || date.minute != 0 || date.second != 0;
  return environment::Format(date, has_time ? "yyyy-mm-dd hh:nn:ss" : "yyyy-mm-dd");
}

}  // namespace dossierkit::jet
