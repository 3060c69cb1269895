#include "host/check/reading.h"

#include <algorithm>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::check {
namespace {

// Of the statement itself, not of the file, the network or the rights.
bool IsOfTheStatement(int number) {
  return number == environment::kNoSuchTable || number == environment::kUnknownName ||
         number == environment::kSyntaxError || number == environment::kDataMismatch;
}

}  // namespace

void Findings::Add(const std::string& table, const std::string& row, const std::string& column,
                   const std::string& text) {
  std::string where;
  const auto add = [&where](const char* what, const std::string& name) {
    if (!name.empty()) where += (where.empty() ? "" : "，") + std::string(what) + " " + name;
  };
  add("表", table);
  add("行", row);
  add("列", column);
  faults_.push_back({table, row, column, where + "：" + text + "。"});
}

bool IgnoringCase::operator()(const std::string& left, const std::string& right) const {
  const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::ranges::lexicographical_compare(left, right, {}, small, small);
}

bool Set::Has(const std::string& column) const { return columns && columns->contains(column); }

const CompiledField* Set::FieldOf(const std::string& column) const {
  const auto found = std::ranges::find_if(page->fields, [&](const CompiledField& field) {
    return environment::EqualIgnoringCase(field.column, column);
  });
  return found == page->fields.end() ? nullptr : &*found;
}

bool Set::IsFreeText(const Item& item) const {
  const CompiledField* field = FieldOf(item.column);
  return field && !field->masked && item.code_table.empty() &&
         (IsShortText(item) || environment::EqualIgnoringCase(item.type, "Ntext"));
}

bool IsShortText(const Item& item) { return environment::EqualIgnoringCase(item.type, "Varchar"); }

std::optional<int> LimitOf(const Item& item) {
  const bool has_limit = item.type == "Varchar" || item.type == "Ntext";
  if (!has_limit || item.length.empty() || !Fits16Bits(item.length)) return std::nullopt;
  const int limit = environment::ToInt16(item.length);
  return limit > 0 ? std::optional(limit) : std::nullopt;
}

ado::Snapshot Read(ado::Connection& connection, const std::string& statement) {
  return connection.Run(statement);
}

std::string TextAt(const ado::Snapshot& rows, std::size_t row, std::size_t column) {
  return environment::TextOr(rows.ValueAt(row, column), "");
}

std::optional<Columns> ColumnsOf(ado::Connection& connection, const std::string& table) {
  try {
    const ado::Snapshot none = Read(connection, "select * from " + table + " where 1=0");
    Columns columns;
    for (std::size_t i = 0; i < none.ColumnCount(); ++i)
      columns[none.ColumnAt(i).name] = none.ColumnAt(i).kind;
    return columns;
  } catch (const environment::Failure& failure) {
    if (!IsOfTheStatement(failure.number())) throw;
    return std::nullopt;
  }
}

std::optional<std::string> RefusalOf(ado::Connection& connection, const std::string& statement) {
  try {
    Read(connection, statement);
    return std::nullopt;
  } catch (const environment::Failure& failure) {
    if (!IsOfTheStatement(failure.number())) throw;
    return failure.description();
  }
}

bool Fits16Bits(const environment::Value& value) {
  try {
    environment::ToInt16(value);
    return true;
  } catch (const environment::Failure&) {
    return false;
  }
}

}  // namespace dossierkit::check
