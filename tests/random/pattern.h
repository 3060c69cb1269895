// Pattern: a literal text with a few places left open.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dossierkit::random {

// What a pattern is matched with, and what it found.
struct Match {
  std::string_view person;  // to stand at every {person}
  std::string set;          // at {set}: the same set throughout
  std::string label;        // the text at {label}
};

// The open places, in braces:
//   set      a letter and two digits, the same throughout
//   column   that set, two digits, perhaps a letter
//   columns  columns, each behind a comma
//   person   the person given
//   n        a number
//   word     letters, digits and underlines of ASCII
//   name     anything without a blank or comma
//   label    anything, kept in Match::label
//   any      anything
class Pattern {
 public:
  explicit Pattern(std::string_view text);

  bool Matches(std::string_view text, Match& match) const;

 private:
  enum class Kind { kLiteral, kSet, kColumn, kColumns, kPerson, kNumber, kWord, kName, kLabel, kAny };
  struct Piece {
    Kind kind;
    std::string literal;
  };
  bool MatchesFrom(std::size_t piece, std::string_view text, Match& match) const;
  bool MatchesAnything(std::size_t piece, std::string_view text, Match& match) const;

  std::vector<Piece> pieces_;
};

}  // namespace dossierkit::random
