#include "platform/jet/kinds.h"

#include <algorithm>
#include <array>

#include "platform/environment/text.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;

template <std::size_t count>
bool IsOneOf(const Token& token, const std::array<std::string_view, count>& words) {
  return std::any_of(words.begin(), words.end(), [&](auto word) { return token.Is(word); });
}

constexpr std::array<std::string_view, 8> kFunctions{"iif", "len", "format", "count",
                                                     "max", "min", "sum",    "avg"};
constexpr std::array<std::string_view, 11> kNoFunctions{"and",  "or",    "not",  "in",     "from", "on",
                                                        "join", "where", "like", "select", "by"};
// What may follow the name of a table that has no alias.
constexpr std::array<std::string_view, 12> kBehindTable{"on",    "left",  "right", "inner", "join",  "where",
                                                        "order", "group", "set",   "cross", "outer", "union"};

}  // namespace

bool IsFunction(const Token& token) { return IsOneOf(token, kFunctions); }
bool IsWordBeforeParenthesis(const Token& token) { return IsOneOf(token, kNoFunctions); }

// Where the search for tables is: one for each "(" that is open.
struct Kinds::Place {
  std::size_t open;    // the token of the "("
  std::size_t select;  // the select that it stands in
  bool in_from;        // between from and where
};

Kinds::Kinds(const std::vector<Token>& tokens, const ColumnLookup& lookup)
    : tokens_(tokens), closing_(tokens.size(), tokens.size()) {
  FindTables(lookup);
}

const Token& Kinds::TokenAt(std::size_t index) const {
  static const Token kNone;
  return index < tokens_.size() ? tokens_[index] : kNone;
}

void Kinds::FindTables(const ColumnLookup& lookup) {
  std::vector<Place> places{{tokens_.size(), kNoSelect, false}};
  bool table_next = false;
  if (!TokenAt(0).Is("select")) {
    selects_.emplace_back();
    places[0].select = 0;
    table_next = TokenAt(0).Is("update");
  }
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    const Token& token = tokens_[i];
    if (token.Is("(")) {
      places.push_back({i, places.back().select, table_next});
    } else if (token.Is(")")) {
      if (places.size() == 1) return;
      closing_[places.back().open] = i;
      places.pop_back();
      table_next = false;
    } else if (token.Is("select")) {
      selects_.push_back({places.back().select});
      places.back() = {places.back().open, selects_.size() - 1, false};
      table_next = false;
    } else if (token.Is("from") || token.Is("join")) {
      places.back().in_from = true;
      table_next = places.back().select != kNoSelect;
    } else if (token.Is("where") || token.Is("order") || token.Is("group")) {
      places.back().in_from = false;
    } else if (token.Is(",")) {
      table_next = places.back().in_from;
    } else if (table_next && token.kind == TokenKind::kWord && i > 0) {
      table_next = false;
      i = AddTable(i, selects_[places.back().select], lookup);
    }
  }
}

// Adds the table whose name is the token at `index`; gives the last token of its name and alias.
std::size_t Kinds::AddTable(std::size_t index, Select& select, const ColumnLookup& lookup) {
  const std::string_view name = tokens_[index].Name();
  std::size_t last = index;
  if (TokenAt(last + 1).Is("as")) ++last;
  if (TokenAt(last + 1).kind == TokenKind::kWord && !IsOneOf(TokenAt(last + 1), kBehindTable)) ++last;
  const TableColumns* columns = lookup(name);
  if (columns == nullptr) return last;
  select.tables.push_back({tokens_[last].Name(), columns});
  return last;
}

ColumnKind Kinds::KindOf(std::string_view alias, std::string_view name, std::size_t select) const {
  for (int level = 0; level < 2 && select < selects_.size(); ++level) {
    for (const Table& table : selects_[select].tables) {
      if (!alias.empty() && !environment::EqualIgnoringCase(alias, table.alias)) continue;
      for (const TableColumn& column : *table.columns) {
        if (environment::EqualIgnoringCase(column.name, name)) return column.kind;
      }
    }
    select = selects_[select].around;
  }
  return ColumnKind::kUnknown;
}

Operand Kinds::At(std::size_t begin, std::size_t select) const {
  using Form = Operand::Form;
  const Token& first = TokenAt(begin);
  if (first.kind == TokenKind::kLiteral) return {Form::kText, begin, begin + 1, ColumnKind::kText};
  if (first.kind == TokenKind::kNumber) return {Form::kNumber, begin, begin + 1};
  if (first.Is("-") && TokenAt(begin + 1).kind == TokenKind::kNumber) {
    return {Form::kNumber, begin, begin + 2};
  }
  if (first.Is("(")) return {Form::kOther, begin, closing_[begin] + 1};
  if (first.kind != TokenKind::kWord || IsWordBeforeParenthesis(first)) return {};
  if (TokenAt(begin + 1).Is("(")) {
    const bool counts = first.Is("len") || first.Is("count");
    return {Form::kOther, begin, closing_[begin + 1] + 1,
            counts ? ColumnKind::kInteger : ColumnKind::kUnknown};
  }
  if (first.Is("true") || first.Is("false")) return {Form::kOther, begin, begin + 1, ColumnKind::kBoolean};
  const std::size_t end = begin + 1;
  if (TokenAt(end).Is(".") && TokenAt(end + 1).kind == TokenKind::kWord)
    return {Form::kColumn, begin, end + 2, KindOf(first.Name(), TokenAt(end + 1).Name(), select)};
  return {Form::kColumn, begin, end, KindOf({}, first.Name(), select)};
}

}  // namespace dossierkit::jet
