// Coerce: a constant of a statement as a value of the column that it is stored in.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/snapshot.h"

namespace dossierkit::jet {

// A column as its table declares it.
struct TableColumn {
  std::string name;
  ado::ColumnKind kind = ado::ColumnKind::kUnknown;
  bool is_short = false;  // an integer of 16 bits
};

using TableColumns = std::vector<TableColumn>;

// The columns of a table, its name in any case, or nullptr for a table that does not exist. The
// answer is used before the next call.
using Catalogue = std::function<const TableColumns*(std::string_view table)>;

// What a declared type such as varchar(50), smallint or datetime means.
TableColumn ColumnOfDeclaration(std::string name, std::string_view declared_type);

// The text of a literal or of a bare number, as SQL to be stored in `column`: a date as an ISO
// literal, a number as digits, a Boolean as 0 or 1, anything else as a literal. Throws a Failure with
// 标准表达式中数据类型不匹配 where the text is no such value (the empty text is none), 溢出 where it is an
// integer out of range.
std::string Coerce(std::string_view text, const TableColumn& column);

}  // namespace dossierkit::jet
