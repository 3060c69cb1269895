#include "platform/jet/coerce.h"

#include <array>
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
using environment::MakeFailure;

std::string CoerceDate(std::string_view text) {
  const auto date = environment::ParseDate(text);
  if (!date) throw MakeFailure(environment::kDataMismatch);
  const bool has_time = date->hour != 0 || date->minute != 0 || date->second != 0;
  return LiteralOf(environment::Format(*date, has_time ? "yyyy-mm-dd hh:nn:ss" : "yyyy-mm-dd"));
}

std::string CoerceBoolean(std::string_view text) {
  if (environment::EqualIgnoringCase(text, "True")) return "1";
  if (environment::EqualIgnoringCase(text, "False")) return "0";
  const auto number = environment::ParseNumber(text);
  if (!number) throw MakeFailure(environment::kDataMismatch);
  return *number != 0 ? "1" : "0";
}

std::string CoerceInteger(std::string_view text, bool is_short) {
  const auto number = environment::ParseNumber(text);
  if (!number) throw MakeFailure(environment::kDataMismatch);
  return is_short ? std::to_string(environment::ToInt16(*number))
                  : std::to_string(environment::ToInt32(*number));
}

std::string CoerceFloating(std::string_view text) {
  const auto number = environment::ParseNumber(text);
  if (!number) throw MakeFailure(environment::kDataMismatch);
  return environment::TextOf(*number);
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

std::string Coerce(std::string_view text, const TableColumn& column) {
  switch (column.kind) {
    case ColumnKind::kDate: return CoerceDate(text);
    case ColumnKind::kBoolean: return CoerceBoolean(text);
    case ColumnKind::kInteger: return CoerceInteger(text, column.is_short);
    case ColumnKind::kFloating: return CoerceFloating(text);
    case ColumnKind::kText:
    case ColumnKind::kUnknown: break;
  }
  return LiteralOf(text);
}

}  // namespace dossierkit::jet
