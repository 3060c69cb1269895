#include "platform/jet/tokens.h"

#include "platform/environment/text.h"
#include "platform/jet/engine_failure.h"

namespace dossierkit::jet {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Bytes of a character beyond ASCII belong to words: captions are names of columns.
bool IsWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsWordCharacter(char c) { return IsWordStart(c) || IsDigit(c); }

// What may stand between the brackets of a name.
bool IsNameCharacter(char c) { return static_cast<unsigned char>(c) >= ' ' && c != '[' && c != ']'; }

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view statement) : statement_(statement) {}

  std::vector<Token> Run() {
    tokens_.reserve(statement_.size() / 3 + 4);
    for (SkipBlanks(); position_ < statement_.size(); SkipBlanks()) {
      if (statement_[position_] == ';') {
        RequireEndBehindSemicolon();
        break;
      }
      Take();
    }
    if (tokens_.empty()) RefuseSyntax("语句为空", statement_);
    return std::move(tokens_);
  }

 private:
  char At(std::size_t position) const { return position < statement_.size() ? statement_[position] : '\0'; }

  void SkipBlanks() {
    while (position_ < statement_.size() && IsBlank(statement_[position_])) ++position_;
  }

  void RequireEndBehindSemicolon() {
    ++position_;
    SkipBlanks();
    if (position_ < statement_.size()) RefuseSyntax("在语句的结尾之后找到字符", statement_);
  }

  void Add(TokenKind kind, std::size_t end) {
    tokens_.push_back({kind, statement_.substr(position_, end - position_), position_});
    position_ = end;
  }

  void Take() {
    const char c = statement_[position_];
    if (IsWordStart(c)) return TakeWord();
    if (c == '\'') return TakeLiteral();
    if (c == '[') return TakeNameInBrackets();
    if (IsDigit(c) || (c == '.' && IsDigit(At(position_ + 1)) && !FollowsName())) return TakeNumber();
    TakeOperator();
  }

  // In "A02.5" the point belongs to the name before it.
  bool FollowsName() const {
    return !tokens_.empty() && tokens_.back().kind == TokenKind::kWord && tokens_.back().End() == position_;
  }

  void TakeWord() {
    std::size_t end = position_ + 1;
    while (end < statement_.size() && IsWordCharacter(statement_[end])) ++end;
    Add(TokenKind::kWord, end);
  }

  void TakeNumber() {
    std::size_t end = position_;
    while (IsDigit(At(end))) ++end;
    if (At(end) == '.') ++end;
    while (IsDigit(At(end))) ++end;
    if (IsWordStart(At(end)) || At(end) == '.') RefuseSyntax("数字有错", statement_);
    Add(TokenKind::kNumber, end);
  }

  void TakeLiteral() {
    for (std::size_t end = position_ + 1; end < statement_.size(); ++end) {
      if (statement_[end] == '\0') break;
      if (statement_[end] != '\'') continue;
      if (At(end + 1) != '\'') return Add(TokenKind::kLiteral, end + 1);
      ++end;
    }
    RefuseSyntax("字符串没有结束", statement_);
  }

  void TakeNameInBrackets() {
    std::size_t end = position_ + 1;
    while (end < statement_.size() && IsNameCharacter(statement_[end])) ++end;
    const std::string_view name = statement_.substr(position_ + 1, end - position_ - 1);
    if (At(end) != ']' || environment::WithoutOuterBlanks(name).empty()) {
      RefuseSyntax("方括号中的名称有错", statement_);
    }
    Add(TokenKind::kWord, end + 1);
  }

  void TakeOperator() {
    const std::string_view two = statement_.substr(position_, 2);
    if (two == "--" || two == "/*") RefuseSyntax("不允许注释", statement_);
    if (two == "<>" || two == "<=" || two == ">=") return Add(TokenKind::kOperator, position_ + 2);
    const std::string_view one = two.substr(0, 1);
    static constexpr std::string_view kKnown = "(),.+-*/=<>";
    if (kKnown.find(one) == std::string_view::npos) {
      RefuseSyntax(one[0] == '\0' ? "有不允许的字符" : "有不允许的字符 " + std::string(one), statement_);
    }
    Add(TokenKind::kOperator, position_ + 1);
  }

  std::string_view statement_;
  std::size_t position_ = 0;
  std::vector<Token> tokens_;
};

}  // namespace

bool Token::Is(std::string_view word) const {
  return kind == TokenKind::kOperator
             ? text == word
             : kind == TokenKind::kWord && environment::EqualIgnoringCase(text, word);
}

std::string_view Token::Name() const {
  return text.starts_with('[') ? text.substr(1, text.size() - 2) : text;
}

std::vector<Token> Tokenize(std::string_view statement) { return Tokenizer(statement).Run(); }

std::string TextOfLiteral(std::string_view literal) {
  return environment::Replace(literal.substr(1, literal.size() - 2), "''", "'");
}

std::string LiteralOf(std::string_view text) { return "'" + environment::Replace(text, "'", "''") + "'"; }

void RefuseSyntax(const std::string& reason, std::string_view statement) {
  throw FailureOf(EngineFailure::kSyntax, reason, std::string(statement));
}

}  // namespace dossierkit::jet
