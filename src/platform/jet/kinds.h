// Kinds: what stands on either side of a comparison, and of which kind it is.
#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "platform/ado/snapshot.h"
#include "platform/jet/coerce.h"
#include "platform/jet/tokens.h"

namespace dossierkit::jet {

// True for the name of a function of the dialect.
bool IsFunction(const Token& token);
// True for a word that may stand before "(" and is no function.
bool IsWordBeforeParenthesis(const Token& token);

// One value: a column, a constant, a call or an expression in parentheses; the tokens [begin, end).
struct Operand {
  enum class Form { kNone, kColumn, kText, kNumber, kOther } form = Form::kNone;
  std::size_t begin = 0;
  std::size_t end = 0;
  ado::ColumnKind kind = ado::ColumnKind::kUnknown;
};

// The tables of a statement and the kinds of their columns. Made in one pass over the statement, it answers
// without looking through it again. `tokens` and what `lookup` gives must outlive it.
class Kinds {
 public:
  static constexpr std::size_t kNoSelect = std::numeric_limits<std::size_t>::max();

  Kinds(const std::vector<Token>& tokens, const ColumnLookup& lookup);

  // The value that begins with the token at `begin`, which stands in the `select`-th select of the statement
  // (from 0; 0 as well in an update or a delete). A column is looked for there and in the select around it.
  Operand At(std::size_t begin, std::size_t select) const;

 private:
  struct Table {
    std::string_view alias;
    const TableColumns* columns;
  };
  struct Select {
    std::size_t around = kNoSelect;
    std::vector<Table> tables = {};
  };
  struct Place;

  const Token& TokenAt(std::size_t index) const;
  void FindTables(const ColumnLookup& lookup);
  std::size_t AddTable(std::size_t index, Select& select, const ColumnLookup& lookup);
  // `alias` is empty for a bare name, which is the first table's that has it.
  ado::ColumnKind KindOf(std::string_view alias, std::string_view name, std::size_t select) const;

  const std::vector<Token>& tokens_;
  std::vector<std::size_t> closing_;  // by the token of a "(": that of its ")"
  std::vector<Select> selects_;
};

}  // namespace dossierkit::jet
