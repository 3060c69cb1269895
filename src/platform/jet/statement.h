// Statements: what the dialect makes of one text before an engine runs it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/snapshot.h"
#include "platform/environment/value.h"
#include "platform/jet/coerce.h"

namespace dossierkit::jet {

// What is known of a column of the result beyond what its engine tells.
struct ResultColumn {
  std::string format;                                // the pattern of format(v,p), or empty
  ado::ColumnKind kind = ado::ColumnKind::kUnknown;  // unknown: as the engine tells
};

// A constant in the text of an update, to be bound in its place.
struct Constant {
  std::size_t position = 0;  // byte position in Statement::text
  std::size_t size = 0;      // in bytes
  environment::Value value;  // by the kind of the column that stores it; elsewhere a number or a text
};

// A statement as an engine is to run it.
struct Statement {
  enum class Kind { kSelect, kInsert, kUpdate, kDelete } kind = Kind::kSelect;
  // The text as it came, with these differences: "format(v,p)" in a select list is "v"; a constant
  // that insert or update stores is written as its column's kind asks; a ";" at the end is gone.
  std::string text;
  // One for each item of a select list up to the last of which something is known; the rest is as the
  // engine tells.
  std::vector<ResultColumn> columns;
  // The constants of an update, in the order of the text.
  std::vector<Constant> constants;
};

// Takes one statement of the dialect: select .. from, insert into t(c,..) values(v,..), update t set
// c=v,.. [where ..], delete from t [where ..]. Throws a Failure that carries the statement: a syntax
// error for every other shape and what the tokens refuse, an unknown function, a constant that does
// not fit its column. Names are not checked against the database; an unknown table's constants are
// left as they are.
Statement Translate(std::string_view statement, const Catalogue& catalogue);

}  // namespace dossierkit::jet
