// Tokens: one SQL statement cut into words, numbers, literals and operators.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dossierkit::jet {

enum class TokenKind { kWord, kNumber, kLiteral, kOperator };

// A piece of the statement. `text` points into the statement and is what stands there, the quotes of a
// literal and the brackets of a name included.
struct Token {
  TokenKind kind = TokenKind::kOperator;
  std::string_view text;
  std::size_t position = 0;  // byte position in the statement

  std::size_t End() const { return position + text.size(); }
  // True for this operator, or for this word without regard to case; a name in brackets is no such word.
  bool Is(std::string_view word) const;
  // The name that a word is, without its brackets.
  std::string_view Name() const;
};

// The tokens of one statement; a single ";" at its end is left out. `statement` must outlive them.
// [name] is a word, whatever the name holds but brackets and control characters. Throws a Failure (a
// syntax error) for an empty text, an unclosed literal or bracket, an empty name, comments, anything
// behind ";", a NUL and every character that the dialect does not know, double quotes among them.
std::vector<Token> Tokenize(std::string_view statement);

// The text in a literal: without its quotes, doubled quotes made single.
std::string TextOfLiteral(std::string_view literal);

// A text as a literal: in quotes, quotes doubled.
std::string LiteralOf(std::string_view text);

// Throws the Failure of a statement that is not one of the dialect; `reason` in Chinese.
[[noreturn]] void RefuseSyntax(const std::string& reason, std::string_view statement);

}  // namespace dossierkit::jet
