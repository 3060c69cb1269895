// Statements: what the dialect makes of one text before an engine runs it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/snapshot.h"
#include "platform/environment/value.h"
#include "platform/jet/coerce.h"
#include "platform/jet/renderer.h"

namespace dossierkit::jet {

// What is known of a column of the result beyond what its engine tells.
struct ResultColumn {
  std::string format;                                // the pattern of format(v,p), or empty
  ado::ColumnKind kind = ado::ColumnKind::kUnknown;  // unknown: as the engine tells
  std::string name;                                  // its alias, or empty: as the engine tells
};

// A constant in the text of a statement.
struct Constant {
  std::size_t position = 0;  // byte position in Statement::text
  std::size_t size = 0;      // in bytes
  // Its value in the kind of the column that stores it, or with which it is compared. Unset where there is no
  // such column: Statement::ValueOf then reads it from the text.
  environment::Value value;
};

// A statement as an engine is to run it.
struct Statement {
  enum class Kind { kSelect, kInsert, kUpdate, kDelete } kind = Kind::kSelect;
  // The text as it came, with these differences: "format(v,p)" in a select list is "v"; a constant
  // that insert or update stores is written as its column's kind asks; a ";" at the end is gone; and the
  // renderer's forms stand where it has its own.
  std::string text;
  // What is known of the items of a select list, in their order. It ends with the last one of which anything
  // is known; for the others the engine's own answer counts.
  std::vector<ResultColumn> columns;
  // All constants that stand in the text, in its order.
  std::vector<Constant> constants;

  // The value of one of the constants: that of its column's kind, or else the number or text that it is.
  environment::Value ValueOf(const Constant& constant) const;

  // The text with "?" for each of its constants: equal for statements that differ in nothing else.
  std::string WithParameters() const;
  // The `index`-th column of the result, where the engine tells its name and the type that it was declared
  // with. No type: what the engine made by an expression, of which the statement may tell the kind.
  ado::Column ColumnAt(std::size_t index, std::string_view name,
                       std::optional<std::string_view> declared_type) const;
};

// Takes one statement of the dialect: select .. from, insert into t(c,..) values(v,..), update t set
// c=v,.. [where ..], delete from t [where ..]. Throws a Failure that carries the statement: a syntax
// error for every other shape, for what the tokens refuse and what the renderer cannot write, an unknown
// function, a constant that does not fit its column. Names are not checked against the database; an unknown
// table's constants are left as they are. Selects ask for columns only for a renderer that folds or is
// strict.
Statement Translate(std::string_view statement, const ColumnLookup& lookup, const Renderer& renderer);

}  // namespace dossierkit::jet
