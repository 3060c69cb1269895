// Coerce: a constant of a statement as a value of the column that it is stored in.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/snapshot.h"
#include "platform/environment/failure.h"
#include "platform/environment/value.h"

namespace dossierkit::jet {

// A column as its table declares it.
struct TableColumn {
  std::string name;
  ado::ColumnKind kind = ado::ColumnKind::kUnknown;
  bool is_short = false;  // an integer of 16 bits
};

using TableColumns = std::vector<TableColumn>;

// The columns of a table, its name in any case, or nullptr for a table that does not exist. The
// answer stays while a statement is translated.
using ColumnLookup = std::function<const TableColumns*(std::string_view table)>;

// What a declared type such as varchar(50), smallint or datetime means.
TableColumn ColumnOfDeclaration(std::string name, std::string_view declared_type);

// The text of a literal or of a bare number, as the value to be stored in `column`: a date, a number, a
// Boolean, anything else as it stands. Throws a Failure with 标准表达式中数据类型不匹配 where the text is no
// such value (the empty text is none), 溢出 where it is an integer out of range.
environment::Value Coerce(std::string_view text, const TableColumn& column);

// The same for a text that is compared with a column of that kind: a number stays as exact as it is.
environment::Value CoerceToCompare(std::string_view text, ado::ColumnKind kind);

// What `make` gives; a Failure of it then carries the statement.
template <typename Make>
auto InStatement(std::string_view statement, Make make) {
  try {
    return make();
  } catch (const environment::Failure& failure) {
    throw environment::Failure(failure.number(), failure.description(), std::string(statement));
  }
}

// A number in plain decimal, with every digit that tells it from its neighbours.
std::string TextOfNumber(double number);

// The text of such a date, as it is stored: yyyy-mm-dd, with hh:nn:ss behind a blank if it has a time.
std::string TextOfDate(const environment::DateTime& date);

}  // namespace dossierkit::jet
