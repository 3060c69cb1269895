#include "platform/jet/like.h"

#include <algorithm>
#include <utility>

#include "platform/environment/text.h"

namespace dossierkit::jet {
namespace {

using environment::NextCharacter;

char32_t Lower(char32_t c) { return c >= U'A' && c <= U'Z' ? c + 32 : c; }
char32_t Upper(char32_t c) { return c >= U'a' && c <= U'z' ? c - 32 : c; }

// A character that stands for itself, also in a set of an expression.
std::string Quoted(char32_t c) {
  const bool is_plain = c >= 0x80 || c < U' ' || c == U' ' || (Lower(c) >= U'a' && Lower(c) <= U'z') ||
                        (c >= U'0' && c <= U'9');
  return (is_plain ? "" : "\\") + environment::Encode(c);
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) {
  for (std::size_t position = 0; position < pattern.size();) {
    if (pattern[position] == '[') {
      const std::size_t behind = AddSet(pattern, position);
      if (behind != position) {
        position = behind;
        continue;
      }
    }
    const char32_t character = NextCharacter(pattern, position);
    if (character == U'%') {
      elements_.push_back({Element::Kind::kAnyRun});
    } else if (character == U'_') {
      elements_.push_back({Element::Kind::kAnyOne});
    } else {
      elements_.push_back({Element::Kind::kCharacter, Lower(character)});
    }
  }
}

// Adds the set that opens at `open`; gives the position behind it, or `open` where it never closes.
std::size_t LikePattern::AddSet(std::string_view pattern, std::size_t open) {
  const std::size_t close = pattern.find(']', open + 1);
  if (close == std::string_view::npos) return open;
  std::string_view content = pattern.substr(open + 1, close - open - 1);
  has_set_ = true;
  if (content.empty()) return close + 1;
  Element set{Element::Kind::kSet};
  // A "!" alone is a set of that character.
  if (content.size() > 1 && content.front() == '!') {
    set.negated = true;
    content.remove_prefix(1);
  }
  for (std::size_t position = 0; position < content.size();) {
    const char32_t first = NextCharacter(content, position);
    char32_t last = first;
    // A "-" at the end of the set is that character.
    if (position + 1 < content.size() && content[position] == '-') {
      ++position;
      last = NextCharacter(content, position);
    }
    set.ranges.push_back({first, last});
  }
  elements_.push_back(std::move(set));
  return close + 1;
}

std::string LikePattern::ToRegularExpression(std::string_view begin, std::string_view end) const {
  std::string expression(begin);
  for (const Element& element : elements_) {
    switch (element.kind) {
      case Element::Kind::kAnyRun: expression += ".*"; break;
      case Element::Kind::kAnyOne: expression += '.'; break;
      case Element::Kind::kCharacter: expression += Quoted(element.character); break;
      case Element::Kind::kSet:
        expression += element.negated ? "[^" : "[";
        for (const Range& range : element.ranges) {
          expression += Quoted(range.first);
          if (range.last != range.first) expression.append("-").append(Quoted(range.last));
        }
        expression += ']';
        break;
    }
  }
  return expression.append(end);
}

bool LikePattern::Accepts(const Element& element, char32_t character) {
  if (element.kind == Element::Kind::kAnyOne) return true;
  if (element.kind == Element::Kind::kCharacter) return element.character == Lower(character);
  const bool within = std::any_of(element.ranges.begin(), element.ranges.end(), [&](const Range& range) {
    const auto holds = [&](char32_t c) { return range.first <= c && c <= range.last; };
    return holds(Lower(character)) || holds(Upper(character));
  });
  return within != element.negated;
}

bool LikePattern::Matches(std::string_view text) const {
  std::size_t element = 0;
  std::size_t position = 0;
  // Where to go on when a match breaks off: behind the last "%", which then takes one character more.
  // An earlier "%" need never take more, so only the last one is kept.
  bool has_run = false;
  std::size_t run_element = 0;
  std::size_t run_position = 0;
  while (true) {
    if (element < elements_.size() && elements_[element].kind == Element::Kind::kAnyRun) {
      has_run = true;
      run_element = ++element;
      run_position = position;
      continue;
    }
    if (position == text.size() && element == elements_.size()) return true;
    if (position < text.size() && element < elements_.size()) {
      std::size_t behind = position;
      if (Accepts(elements_[element], NextCharacter(text, behind))) {
        position = behind;
        ++element;
        continue;
      }
    }
    if (!has_run || run_position == text.size()) return false;
    NextCharacter(text, run_position);
    position = run_position;
    element = run_element;
  }
}

}  // namespace dossierkit::jet
