#include "tests/random/pattern.h"

#include <algorithm>
#include <stdexcept>

namespace dossierkit::random {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsCapital(char c) { return c >= 'A' && c <= 'Z'; }
bool IsWord(char c) { return IsDigit(c) || IsCapital(c) || (c >= 'a' && c <= 'z') || c == '_'; }

template <typename Predicate>
std::size_t Run(std::string_view text, Predicate belongs) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, belongs) - text.begin());
}

// The lengths of what stands at the front; 0 where nothing fits.
std::size_t SetAt(std::string_view text) {
  return text.size() >= 3 && IsCapital(text[0]) && IsDigit(text[1]) && IsDigit(text[2]) ? 3 : 0;
}

std::size_t ColumnAt(std::string_view text, const std::string& set) {
  if (set.empty() || !text.starts_with(set) || text.size() < 5 || !IsDigit(text[3]) || !IsDigit(text[4]))
    return 0;
  return text.size() > 5 && IsCapital(text[5]) ? 6 : 5;
}

std::size_t NumberAt(std::string_view text) {
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  const std::size_t digits = Run(text.substr(sign), IsDigit);
  return digits == 0 ? 0 : sign + digits;
}

}  // namespace

Pattern::Pattern(std::string_view text) {
  while (!text.empty()) {
    const std::size_t open = text.find('{');
    if (open != 0) {
      pieces_.push_back({Kind::kLiteral, std::string(text.substr(0, open))});
      text = open == std::string_view::npos ? "" : text.substr(open);
      continue;
    }
    const std::size_t close = text.find('}');
    const std::string_view name = text.substr(1, close - 1);
    const Kind kind = name == "set"       ? Kind::kSet
                      : name == "column"  ? Kind::kColumn
                      : name == "columns" ? Kind::kColumns
                      : name == "person"  ? Kind::kPerson
                      : name == "n"       ? Kind::kNumber
                      : name == "word"    ? Kind::kWord
                      : name == "name"    ? Kind::kName
                      : name == "label"   ? Kind::kLabel
                      : name == "any"     ? Kind::kAny
                                          : throw std::logic_error("no open place " + std::string(name));
    pieces_.push_back({kind, {}});
    text.remove_prefix(close + 1);
  }
}

bool Pattern::Matches(std::string_view text, Match& match) const { return MatchesFrom(0, text, match); }

bool Pattern::MatchesFrom(std::size_t piece, std::string_view text, Match& match) const {
  for (; piece < pieces_.size(); ++piece) {
    const Piece& wanted = pieces_[piece];
    std::size_t length = 0;
    switch (wanted.kind) {
      case Kind::kLiteral:
        if (!text.starts_with(wanted.literal)) return false;
        length = wanted.literal.size();
        break;
      case Kind::kSet:
        length = SetAt(text);
        if (length == 0 || (!match.set.empty() && !text.starts_with(match.set))) return false;
        match.set = text.substr(0, length);
        break;
      case Kind::kColumn:
        length = ColumnAt(text, match.set);
        if (length == 0) return false;
        break;
      case Kind::kColumns:
        while (text.starts_with(',')) {
          length = ColumnAt(text.substr(1), match.set);
          if (length == 0) return false;
          text.remove_prefix(length + 1);
        }
        length = 0;
        break;
      case Kind::kPerson:
        if (!text.starts_with(match.person)) return false;
        length = match.person.size();
        break;
      case Kind::kNumber:
        length = NumberAt(text);
        if (length == 0) return false;
        break;
      case Kind::kWord:
        length = Run(text, IsWord);
        if (length == 0) return false;
        break;
      case Kind::kName:
        length = Run(text, [](char c) { return c != ' ' && c != ','; });
        if (length == 0) return false;
        break;
      case Kind::kLabel:
      case Kind::kAny: return MatchesAnything(piece, text, match);
    }
    text.remove_prefix(length);
  }
  return text.empty();
}

bool Pattern::MatchesAnything(std::size_t piece, std::string_view text, Match& match) const {
  const bool before_literal = piece + 1 < pieces_.size() && pieces_[piece + 1].kind == Kind::kLiteral;
  for (std::size_t length = 0; length <= text.size(); ++length) {
    if (before_literal) length = text.find(pieces_[piece + 1].literal, length);
    if (length == std::string_view::npos) return false;
    Match rest = match;
    if (!MatchesFrom(piece + 1, text.substr(length), rest)) continue;
    if (pieces_[piece].kind == Kind::kLabel) rest.label = text.substr(0, length);
    match = rest;
    return true;
  }
  return false;
}

}  // namespace dossierkit::random
