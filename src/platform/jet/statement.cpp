#include "platform/jet/statement.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <system_error>
#include <utility>

#include "platform/environment/failure.h"
#include "platform/environment/numbers.h"
#include "platform/environment/text.h"
#include "platform/jet/kinds.h"
#include "platform/jet/tokens.h"
#include "platform/jet/writer.h"

namespace dossierkit::jet {
namespace {

// A number as an engine takes it: whole where 64 bits hold it.
environment::Value NumberOf(std::string_view digits) {
  std::int64_t whole = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
  if (error == std::errc{} && end == digits.data() + digits.size()) return whole;
  return environment::ParseNumber(digits).value_or(std::numeric_limits<double>::infinity());
}

class Translator {
 public:
  Translator(std::string_view statement, const ColumnLookup& lookup, const Renderer& renderer)
      : statement_(statement),
        lookup_(lookup),
        renderer_(renderer),
        tokens_(Tokenize(statement)),
        writer_(statement, tokens_, renderer, lookup, result_) {
    // Most statements then take each of them at once: a renumbering sends one for every row of a table.
    result_.text.reserve(statement.size() + 16);
    result_.constants.reserve(4);
  }

  Statement Run() {
    RequireBalancedParentheses();
    if (At(0).Is("select")) {
      TakeSelect();
    } else if (At(0).Is("insert")) {
      TakeInsert();
    } else if (At(0).Is("update")) {
      TakeUpdate();
    } else if (At(0).Is("delete")) {
      TakeDelete();
    } else {
      RefuseSyntax("只允许 SELECT、INSERT、UPDATE 或 DELETE", statement_);
    }
    writer_.Finish();
    return std::move(result_);
  }

 private:
  // The token at `index`; behind the last one an operator that is no token's.
  const Token& At(std::size_t index) const {
    static const Token kNone;
    return index < tokens_.size() ? tokens_[index] : kNone;
  }
  bool IsWord(std::size_t index) const { return At(index).kind == TokenKind::kWord; }

  void Require(bool condition, const std::string& reason) const {
    if (!condition) RefuseSyntax(reason, statement_);
  }

  void RequireBalancedParentheses() const {
    std::ptrdiff_t depth = 0;
    for (const Token& token : tokens_) {
      if (token.Is("(")) ++depth;
      if (token.Is(")") && --depth < 0) break;
    }
    Require(depth == 0, "括号不配对");
  }

  // The index of the first of `words` at the depth of `begin`, of the ")" that ends that depth, or of
  // the end.
  std::size_t Find(std::size_t begin, std::initializer_list<std::string_view> words) const {
    int depth = 0;
    for (std::size_t i = begin; i < tokens_.size(); ++i) {
      const bool found =
          std::any_of(words.begin(), words.end(), [&](auto word) { return tokens_[i].Is(word); });
      if (depth == 0 && (found || tokens_[i].Is(")"))) return i;
      if (tokens_[i].Is("(")) ++depth;
      if (tokens_[i].Is(")")) --depth;
    }
    return tokens_.size();
  }

  // Every function called from `begin` on must be one of the dialect's; format stands only where it
  // was taken out of a select list.
  void RequireKnownFunctions(std::size_t begin) const {
    auto taken_out = formats_.begin();
    for (std::size_t i = begin; i + 1 < tokens_.size(); ++i) {
      if (!IsWord(i) || !At(i + 1).Is("(")) continue;
      if (taken_out != formats_.end() && *taken_out == i) {
        ++taken_out;
        continue;
      }
      if (IsWordBeforeParenthesis(At(i)) || (IsFunction(At(i)) && !At(i).Is("format"))) continue;
      throw environment::Failure(environment::kSyntaxError,
                                 "表达式中 '" + std::string(At(i).text) + "' 函数未定义。",
                                 std::string(statement_));
    }
  }

  void TakeSelect() {
    std::size_t item = 1;
    for (bool more = true; more;) {
      const std::size_t end = Find(item, {",", "from"});
      Require(end > item, "SELECT 的列表有错");
      Require(end < tokens_.size(), "缺少 FROM");
      TakeItem(item, end);
      more = At(end).Is(",");
      item = end + 1;
    }
    Require(item < tokens_.size(), "FROM 之后缺少表名");
    RequireKnownFunctions(1);
  }

  // One item of a select list: [begin, end).
  void TakeItem(std::size_t begin, std::size_t end) {
    const bool is_star = At(end - 1).Is("*") && (end == begin + 1 || At(end - 2).Is("."));
    if (is_star) has_star_ = true;
    ++item_count_;
    if (At(begin + 1).Is("(")) {
      if (At(begin).Is("format")) TakeFormat(begin);
      // The engine cannot tell the kind of such an expression: its default can.
      if (At(begin).Is("iif")) {
        const std::size_t second = Find(begin + 2, {","}) + 1;
        if (At(second + 1).Is(",") && (At(second).Is("true") || At(second).Is("false"))) {
          Describe().kind = ado::ColumnKind::kBoolean;
        }
      }
    }
    if (renderer_.longest_name > 0 && !has_star_ && end > begin + 2 && At(end - 2).Is("as") &&
        IsWord(end - 1))
      TakeAlias(end - 1);
  }

  // The engine need not give a name back as it was written: it is kept here.
  void TakeAlias(std::size_t alias) {
    Describe().name = At(alias).Name();
    if (At(alias).Name().size() <= renderer_.longest_name) return;
    writer_.WriteUpTo(alias);
    writer_.PutAlias("c" + std::to_string(item_count_));
  }

  // format(v,'p') becomes v; the pattern is applied to what the engine gives.
  void TakeFormat(std::size_t begin) {
    const std::size_t comma = Find(begin + 2, {",", "from"});
    Require(comma > begin + 2 && At(comma).Is(",") && !At(comma - 1).Is("*") &&
                At(comma + 1).kind == TokenKind::kLiteral && At(comma + 2).Is(")") && !At(comma + 3).Is("("),
            "FORMAT 需要一个值和一个格式");
    Describe().format = TextOfLiteral(At(comma + 1).text);
    formats_.push_back(begin);
    writer_.WriteUpTo(begin);
    writer_.LeaveOutWithBlanksBehind(begin + 2);
    writer_.WriteUpTo(comma);
    writer_.LeaveOutWithBlanksBefore(comma + 3);
  }

  // What is known of the present item.
  ResultColumn& Describe() {
    Require(!has_star_, "“*” 之后不能有 FORMAT 或 IIF");
    result_.columns.resize(item_count_);
    return result_.columns.back();
  }

  void TakeInsert() {
    result_.kind = Statement::Kind::kInsert;
    Require(At(1).Is("into") && IsWord(2) && At(3).Is("("), "INSERT INTO 语句有错");
    std::vector<std::string_view> names;
    std::size_t i = 4;
    for (; IsWord(i); i += 2) {
      names.push_back(At(i).Name());
      if (!At(i + 1).Is(",")) break;
    }
    Require(IsWord(i) && At(i + 1).Is(")") && At(i + 2).Is("values") && At(i + 3).Is("("),
            "INSERT INTO 语句有错");
    TakeStored(2);
    UseTable(At(2).Name());
    std::size_t value = i + 4;
    for (std::size_t column = 0; column < names.size(); ++column) {
      const std::size_t end = Find(value, {","});
      Require(end > value, "INSERT INTO 语句有错");
      Require(At(end).Is(column + 1 < names.size() ? "," : ")"), "查询值的数目与目标字段中的数目不同");
      TakeAssigned(names[column], value, end);
      value = end + 1;
    }
    Require(value == tokens_.size(), "INSERT INTO 语句有错");
    RequireKnownFunctions(i + 3);
  }

  void TakeUpdate() {
    result_.kind = Statement::Kind::kUpdate;
    Require(IsWord(1) && At(2).Is("set"), "UPDATE 语句有错");
    TakeStored(1);
    UseTable(At(1).Name());
    std::size_t name = 3;
    for (bool more = true; more;) {
      const std::size_t end = Find(name, {",", "where"});
      Require(IsWord(name) && At(name + 1).Is("=") && end > name + 2, "UPDATE 语句有错");
      writer_.WriteUpTo(name);
      writer_.WriteNamesUpTo(name + 2);
      TakeAssigned(At(name).Name(), name + 2, end);
      more = At(end).Is(",");
      name = end + 1;
    }
    RequireKnownFunctions(3);
  }

  void TakeDelete() {
    result_.kind = Statement::Kind::kDelete;
    Require(At(1).Is("from") && IsWord(2) && (tokens_.size() == 3 || At(3).Is("where")), "DELETE 语句有错");
    TakeStored(2);
    RequireKnownFunctions(3);
  }

  // The table that the statement changes.
  void TakeStored(std::size_t table) {
    if (!renderer_.stored_in.empty()) writer_.PutBefore(table, renderer_.stored_in);
  }

  void UseTable(std::string_view name) { columns_ = lookup_(name); }

  // A constant [begin, end) that is stored in the column `name`; expressions are left alone.
  void TakeAssigned(std::string_view name, std::size_t begin, std::size_t end) {
    if (columns_ == nullptr) return;
    const auto column = std::find_if(columns_->begin(), columns_->end(), [&](const TableColumn& known) {
      return environment::EqualIgnoringCase(known.name, name);
    });
    if (column == columns_->end()) return;
    const bool is_signed = end == begin + 2 && (At(begin).Is("-") || At(begin).Is("+"));
    const Token& constant = At(is_signed ? begin + 1 : begin);
    if (constant.kind == TokenKind::kLiteral && end == begin + 1) {
      StoreConstant(begin, end, TextOfLiteral(constant.text), *column);
    } else if (constant.kind == TokenKind::kNumber && (is_signed || end == begin + 1)) {
      const std::string sign(is_signed ? At(begin).text : std::string_view());
      StoreConstant(begin, end, sign + std::string(constant.text), *column);
    }
  }

  // Puts the constant of this text, as `column` asks for it, in the place of the tokens [begin, end).
  void StoreConstant(std::size_t begin, std::size_t end, const std::string& text, const TableColumn& column) {
    environment::Value value = InStatement(statement_, [&] { return Coerce(text, column); });
    writer_.WriteUpTo(begin);
    writer_.PutConstant(std::move(value), end);
  }

  std::string_view statement_;
  const ColumnLookup& lookup_;
  const Renderer& renderer_;
  std::vector<Token> tokens_;
  Statement result_;
  Writer writer_;
  const TableColumns* columns_ = nullptr;  // of the table that is written, where it is known
  std::vector<std::size_t> formats_;       // tokens "format" that were taken out
  std::size_t item_count_ = 0;
  bool has_star_ = false;
};

}  // namespace

environment::Value Statement::ValueOf(const Constant& constant) const {
  if (!constant.value.IsUnset()) return constant.value;
  const std::string_view written = std::string_view(text).substr(constant.position, constant.size);
  return written.starts_with('\'') ? environment::Value(TextOfLiteral(written)) : NumberOf(written);
}

std::string Statement::WithParameters() const {
  std::string shape;
  shape.reserve(text.size());
  std::size_t copied = 0;
  for (const Constant& constant : constants) {
    shape.append(text, copied, constant.position - copied).append("?");
    copied = constant.position + constant.size;
  }
  return shape.append(text, copied);
}

ado::Column Statement::ColumnAt(std::size_t index, std::string_view name,
                                std::optional<std::string_view> declared_type) const {
  ado::Column column{std::string(name), ado::ColumnKind::kUnknown, {}};
  if (declared_type) column.kind = ColumnOfDeclaration({}, *declared_type).kind;
  if (index >= columns.size()) return column;
  const ResultColumn& known = columns[index];
  if (!known.name.empty()) column.name = known.name;
  column.format = known.format;
  if (!declared_type) column.kind = known.kind;
  return column;
}

Statement Translate(std::string_view statement, const ColumnLookup& lookup, const Renderer& renderer) {
  return Translator(statement, lookup, renderer).Run();
}

}  // namespace dossierkit::jet
