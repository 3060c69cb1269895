#include "platform/jet/writer.h"

#include <utility>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/jet/coerce.h"
#include "platform/jet/like.h"

namespace dossierkit::jet {
namespace {

using ado::ColumnKind;
using environment::Value;
using Form = Operand::Form;

bool Compares(const Token& token) {
  return token.kind == TokenKind::kOperator && !token.text.empty() &&
         std::string_view("=<>").find(token.text[0]) != std::string_view::npos;
}

// An operator that makes a larger value of the values around it.
bool Calculates(const Token& token) {
  return token.kind == TokenKind::kOperator && token.text.size() == 1 &&
         std::string_view("+-*/.").find(token.text[0]) != std::string_view::npos;
}

}  // namespace

Writer::Writer(std::string_view statement, const std::vector<Token>& tokens, const Renderer& renderer,
               const ColumnLookup& lookup, Statement& result)
    : statement_(statement),
      tokens_(tokens),
      renderer_(renderer),
      lookup_(lookup),
      result_(result),
      needs_kinds_(!renderer.fold.empty() || renderer.is_strict),
      needs_levels_(needs_kinds_ || renderer.iif || !renderer.nulls_first.empty() ||
                    !renderer.nulls_last.empty() || renderer.longest_name > 0),
      is_plain_(!needs_levels_ && !renderer.like && renderer.name_quote.empty()),
      selects_(At(0).Is("select") ? 0 : 1) {
  if (!is_plain_) levels_.push_back({selects_ == 0 ? Kinds::kNoSelect : 0});
}

const Token& Writer::At(std::size_t index) const {
  static const Token kNone;
  return index < tokens_.size() ? tokens_[index] : kNone;
}

const Kinds& Writer::KnownKinds() {
  if (!kinds_) kinds_.emplace(tokens_, lookup_);
  return *kinds_;
}

void Writer::CopyBytesUpTo(std::size_t position) {
  if (position <= copied_) return;
  result_.text.append(statement_.substr(copied_, position - copied_));
  copied_ = position;
}

// Puts `text` in the place of the next tokens, up to `behind`.
void Writer::Put(std::string_view text, std::size_t behind) {
  CopyBytesUpTo(At(next_).position);
  result_.text.append(text);
  copied_ = At(behind - 1).End();
  next_ = behind;
}

// The quote or the parenthesis that is gone kept what stood there apart from what follows.
void Writer::KeepApart(std::size_t behind) {
  if (At(behind).position == copied_ && !At(behind).Is(",") && !At(behind).Is(")")) result_.text += ' ';
}

// A constant that will stand so many bytes behind the present end of the text.
void Writer::Note(std::size_t offset, std::size_t size, Value value) {
  result_.constants.push_back({result_.text.size() + offset, size, std::move(value)});
}

void Writer::WriteUpTo(std::size_t behind) {
  if (is_plain_) {
    while (next_ < behind) WriteNextPlainly();
  } else {
    while (next_ < behind) WriteNext();
  }
}

void Writer::WriteNamesUpTo(std::size_t behind) {
  compares_ = false;
  WriteUpTo(behind);
  compares_ = true;
}

void Writer::Finish() {
  WriteUpTo(tokens_.size());
  CopyBytesUpTo(tokens_.back().End());
}

void Writer::LeaveOutWithBlanksBehind(std::size_t behind) {
  CopyBytesUpTo(At(next_).position);
  copied_ = At(behind).position;
  next_ = behind;
}

void Writer::LeaveOutWithBlanksBefore(std::size_t behind) {
  CopyBytesUpTo(At(next_ - 1).End());
  copied_ = At(behind - 1).End();
  next_ = behind;
  KeepApart(behind);
}

void Writer::PutConstant(Value value, std::size_t behind) {
  const std::string constant = ConstantOf(value, renderer_);
  CopyBytesUpTo(At(next_).position);
  Note(0, constant.size(), std::move(value));
  Put(constant, behind);
  KeepApart(behind);
}

void Writer::PutBefore(std::size_t behind, std::string_view text) {
  WriteUpTo(behind);
  CopyBytesUpTo(At(behind).position);
  result_.text.append(text);
}

void Writer::PutAlias(const std::string& alias) {
  aliases_.emplace(environment::LowerCase(At(next_).Name()), alias);
  Put(alias, next_ + 1);
}

// For an engine that has no more ways of its own than a name for len.
void Writer::WriteNextPlainly() {
  const std::size_t index = next_;
  const Token& token = tokens_[index];
  if (token.kind == TokenKind::kWord) {
    if (token.text.size() == 3 && token.Is("len") && At(index + 1).Is("(")) Put(renderer_.len, index + 1);
  } else if (token.kind != TokenKind::kOperator) {
    WriteConstant();
  }
  if (next_ == index) ++next_;
}

void Writer::WriteNext() {
  const std::size_t index = next_;
  if (needs_kinds_) {
    if (plans_.empty() || plans_.back().begin != index) PlanAround(index);
    if (!plans_.empty() && plans_.back().begin == index) FollowPlan();
  }
  if (next_ == index) {
    switch (tokens_[index].kind) {
      case TokenKind::kWord: WriteWord(); break;
      case TokenKind::kOperator: WriteOperator(); break;
      case TokenKind::kNumber:
      case TokenKind::kLiteral: WriteConstant(); break;
    }
  }
  if (next_ == index) ++next_;
  for (; !ends_.empty() && ends_.back() <= next_; ends_.pop_back()) {
    CopyBytesUpTo(At(next_ - 1).End());
    result_.text += ')';
  }
  if (levels_.back().in_order && EndsItem(next_)) EndOrderItem();
}

// Each of these writes the next token and what belongs to it, or leaves it to be copied.
void Writer::WriteWord() {
  const Token& token = tokens_[next_];
  Level& level = levels_.back();
  if (token.text[0] == '[') {
    if (renderer_.name_quote.empty()) return;
    const std::string quote(renderer_.name_quote);
    const std::string name = environment::LowerCase(token.Name());
    return Put(quote + environment::Replace(name, quote, quote + quote) + quote, next_ + 1);
  }
  if (At(next_ + 1).Is("(")) {
    if (token.Is("len") && renderer_.len != "len") return Put(renderer_.len, next_ + 1);
    if (token.Is("iif") && renderer_.iif) return OpenIif();
  }
  if (renderer_.like && WriteLike()) return;
  if (!needs_levels_) return;
  if (token.Is("select")) {
    level.select = selects_++;
  } else if (token.Is("by") && next_ > 0 && At(next_ - 1).Is("order")) {
    level.in_order = level.starts_item = true;
  } else if (level.in_order && !aliases_.empty() && !At(next_ - 1).Is(".")) {
    const auto alias = aliases_.find(environment::LowerCase(token.text));
    if (alias != aliases_.end()) Put(alias->second, next_ + 1);
  }
}

void Writer::WriteOperator() {
  if (!needs_levels_) return;
  const Token& token = tokens_[next_];
  Level& level = levels_.back();
  if (token.Is("(")) {
    levels_.push_back({level.select});
    if (!lists_.empty() && lists_.back() == next_) {
      lists_.pop_back();
      levels_.back().in_list = levels_.back().starts_item = true;
    }
  } else if (token.Is(")")) {
    CloseParenthesis();
  } else if (token.Is(",")) {
    level.starts_item = level.in_order || level.in_list;
    if (level.iif_commas < 0) return;
    if (++level.iif_commas > 2) RefuseSyntax("IIF 需要三个参数", statement_);
    Put(level.iif_commas == 1 ? renderer_.iif->then : renderer_.iif->otherwise, next_ + 1);
  }
}

void Writer::WriteConstant() {
  const Token& token = tokens_[next_];
  if (renderer_.doubles_backslashes && token.text.find('\\') != std::string_view::npos)
    return PutConstant(TextOfLiteral(token.text), next_ + 1);
  Note(token.position - copied_, token.text.size(), {});
}

// True where the next tokens were "like" or "not like".
bool Writer::WriteLike() {
  const bool negated = tokens_[next_].Is("not");
  const std::size_t word = negated ? next_ + 1 : next_;
  if (!At(word).Is("like")) return false;
  const std::size_t literal = word + 1;
  if (At(literal).kind != TokenKind::kLiteral || Calculates(At(literal + 1))) {
    RefuseSyntax("LIKE 需要一个常量模式", statement_);
  }
  std::string text = TextOfLiteral(At(literal).text);
  const LikePattern pattern(text);
  if (pattern.HasSet()) {
    text = pattern.ToRegularExpression(renderer_.like->begin, renderer_.like->end);
    Put(negated ? renderer_.like->matches_not : renderer_.like->matches, literal);
    PutConstant(std::move(text), literal + 1);
  } else {
    if (negated) Put(tokens_[next_].text, word);
    Put(renderer_.like->word, literal);
    PutConstant(std::move(text), literal + 1);
    result_.text.append(renderer_.like->behind);
    if (!renderer_.like->behind.empty()) KeepApart(literal + 1);
  }
  return true;
}

void Writer::OpenIif() {
  Level opened{levels_.back().select};
  opened.iif_commas = 0;
  Put(renderer_.iif->condition, next_ + 2);
  levels_.push_back(opened);
}

void Writer::CloseParenthesis() {
  const int commas = levels_.back().iif_commas;
  levels_.pop_back();
  if (commas < 0) return;
  if (commas != 2) RefuseSyntax("IIF 需要三个参数", statement_);
  Put(renderer_.iif->end, next_ + 1);
  KeepApart(next_);
}

void Writer::EndOrderItem() {
  const Token& last = At(next_ - 1);
  CopyBytesUpTo(last.End());
  result_.text.append(last.Is("desc") ? renderer_.nulls_last : renderer_.nulls_first);
}

bool Writer::EndsItem(std::size_t index) const {
  return index == tokens_.size() || At(index).Is(",") || At(index).Is(")");
}

// Plans what becomes of a value that begins with the token at `index`, and of the one that it is compared
// with.
void Writer::PlanAround(std::size_t index) {
  Level& level = levels_.back();
  const bool starts_item = std::exchange(level.starts_item, false);
  if (!compares_) return;
  const Operand left = KnownKinds().At(index, level.select);
  if (left.form == Form::kNone) return;
  // A part of something larger: of a sum, or the parentheses of a call.
  if (index > 0 && (Calculates(At(index - 1)) || (At(index).Is("(") && IsFunction(At(index - 1))))) return;
  if (starts_item) PlanItem(left);
  if (Compares(At(left.end))) {
    const Operand right = KnownKinds().At(left.end + 1, level.select);
    if (right.form != Form::kNone && !Calculates(At(right.end))) PlanComparison(left, right);
  } else {
    const std::size_t word = At(left.end).Is("not") ? left.end + 1 : left.end;
    if (At(word).Is("in") && At(word + 1).Is("(")) PlanList(left, word + 1);
  }
}

// An item of an order, or of a list of texts.
void Writer::PlanItem(const Operand& item) {
  const bool is_order = levels_.back().in_order;
  const bool is_text = is_order ? item.form == Form::kColumn && item.kind == ColumnKind::kText
                                : item.form == Form::kColumn || item.form == Form::kText;
  const bool is_whole =
      EndsItem(item.end) || (is_order && (At(item.end).Is("asc") || At(item.end).Is("desc")));
  if (!renderer_.fold.empty() && is_text && is_whole) plans_.push_back({item.begin, item.end, true, {}});
}

void Writer::PlanComparison(const Operand& left, const Operand& right) {
  auto left_constant = InTheKindOf(left, right);
  auto right_constant = InTheKindOf(right, left);
  const auto is_text = [](const Operand& operand, const std::optional<Value>& constant) {
    return constant ? constant->As<std::string>() != nullptr : operand.kind == ColumnKind::kText;
  };
  const bool left_text = is_text(left, left_constant);
  const bool right_text = is_text(right, right_constant);
  // A number between texts stays outside; what is empty has no case.
  const bool folds = !renderer_.fold.empty() && (left_text || right_text) &&
                     (left_text || left.kind == ColumnKind::kUnknown) &&
                     (right_text || right.kind == ColumnKind::kUnknown) && !IsEmptyText(left) &&
                     !IsEmptyText(right);
  if (folds || right_constant) plans_.push_back({right.begin, right.end, folds, std::move(right_constant)});
  if (folds || left_constant) plans_.push_back({left.begin, left.end, folds, std::move(left_constant)});
}

// in(..) of texts: the value, and each text of the list or the column of the select.
void Writer::PlanList(const Operand& left, std::size_t open) {
  if (renderer_.fold.empty()) return;
  const bool is_select = At(open + 1).Is("select");
  const Operand first =
      is_select ? KnownKinds().At(open + 2, selects_) : KnownKinds().At(open + 1, levels_.back().select);
  if (left.kind != ColumnKind::kText &&
      (left.kind != ColumnKind::kUnknown || first.kind != ColumnKind::kText))
    return;
  if (is_select) {
    if (first.form != Form::kColumn || !At(first.end).Is("from")) return;
    plans_.push_back({first.begin, first.end, true, {}});
  } else {
    lists_.push_back(open);
  }
  plans_.push_back({left.begin, left.end, true, {}});
}

void Writer::FollowPlan() {
  Plan plan = std::move(plans_.back());
  plans_.pop_back();
  if (plan.folds) {
    CopyBytesUpTo(At(plan.begin).position);
    result_.text.append(renderer_.fold).append("(");
    ends_.push_back(plan.end);
  }
  if (plan.constant) PutConstant(std::move(*plan.constant), plan.end);
}

// A constant as what it is compared with asks for; nothing where it stays as it is.
std::optional<Value> Writer::InTheKindOf(const Operand& constant, const Operand& other) const {
  const bool is_text = constant.form == Form::kText;
  if (!renderer_.is_strict || (!is_text && constant.form != Form::kNumber)) return {};
  std::string text;
  for (std::size_t i = constant.begin; i < constant.end; ++i) text += At(i).text;
  if (other.kind == ColumnKind::kText) return is_text ? std::optional<Value>() : Value(text);
  const bool stays = is_text ? other.kind == ColumnKind::kUnknown : other.kind != ColumnKind::kBoolean;
  if (stays) return {};
  return InStatement(statement_,
                     [&] { return CoerceToCompare(is_text ? TextOfLiteral(text) : text, other.kind); });
}

bool Writer::IsEmptyText(const Operand& operand) const {
  return operand.form == Form::kText && At(operand.begin).text.size() == 2;
}

}  // namespace dossierkit::jet
