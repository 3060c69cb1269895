// like: the first line is the pattern, the rest the text. The reference follows the definition, one
// cell for each place in the pattern and each in the text.
#include <string>
#include <vector>

#include "fuzz/fuzz.h"
#include "platform/environment/text.h"
#include "platform/jet/like.h"

namespace dossierkit {
namespace {

std::vector<char32_t> CodePoints(std::string_view text) {
  std::vector<char32_t> characters;
  for (std::size_t position = 0; position < text.size();) {
    characters.push_back(environment::NextCharacter(text, position));
  }
  return characters;
}

char32_t Small(char32_t c) { return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c; }
char32_t Capital(char32_t c) { return c >= U'a' && c <= U'z' ? c - (U'a' - U'A') : c; }

class Reference {
 public:
  Reference(std::vector<char32_t> pattern, std::vector<char32_t> text)
      : pattern_(std::move(pattern)), text_(std::move(text)) {}

  bool Matches() const {
    // matches[p][t]: the pattern from p on matches the text from t on.
    const std::size_t width = text_.size();
    std::vector<std::vector<bool>> matches(pattern_.size() + 1, std::vector<bool>(width + 1, false));
    matches[pattern_.size()][width] = true;
    for (std::size_t p = pattern_.size(); p-- > 0;) {
      const std::size_t behind = Behind(p);
      for (std::size_t t = width + 1; t-- > 0;) {
        if (pattern_[p] == U'%') {
          matches[p][t] = matches[behind][t] || (t < width && matches[p][t + 1]);
        } else if (behind == p + 2 && pattern_[p] == U'[') {
          matches[p][t] = matches[behind][t];  // "[]"
        } else {
          matches[p][t] = t < width && Takes(p, behind, text_[t]) && matches[behind][t + 1];
        }
      }
    }
    return matches[0][0];
  }

 private:
  // The place behind the element at p.
  std::size_t Behind(std::size_t p) const {
    if (pattern_[p] != U'[') return p + 1;
    for (std::size_t i = p + 1; i < pattern_.size(); ++i) {
      if (pattern_[i] == U']') return i + 1;
    }
    return p + 1;
  }

  bool Takes(std::size_t p, std::size_t behind, char32_t c) const {
    if (behind == p + 1) return pattern_[p] == U'_' || Small(pattern_[p]) == Small(c);
    std::size_t i = p + 1;
    const std::size_t end = behind - 1;
    const bool negated = pattern_[i] == U'!' && end > i + 1;
    if (negated) ++i;
    bool within = false;
    while (i < end) {
      const bool range = i + 2 < end && pattern_[i + 1] == U'-';
      const char32_t first = pattern_[i];
      const char32_t last = range ? pattern_[i + 2] : first;
      within |= (first <= Small(c) && Small(c) <= last) || (first <= Capital(c) && Capital(c) <= last);
      i += range ? 3 : 1;
    }
    return within != negated;
  }

  std::vector<char32_t> pattern_;
  std::vector<char32_t> text_;
};

void Check(std::string_view pattern, std::string_view text) {
  const jet::LikePattern like(pattern);
  const bool matches = like.Matches(text);
  REQUIRE(matches == Reference(CodePoints(pattern), CodePoints(text)).Matches());
  REQUIRE(matches == like.Matches(environment::UpperCase(text)));
  // A text without wildcards matches itself, and any text lies between two runs.
  if (text.find_first_of("%_[") == std::string_view::npos) {
    REQUIRE(jet::LikePattern(text).Matches(text));
    REQUIRE(jet::LikePattern("%" + std::string(text) + "%").Matches("a" + std::string(text) + "b"));
  }
  REQUIRE(jet::LikePattern("%").Matches(text));
}

}  // namespace
}  // namespace dossierkit

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text = dossierkit::fuzz::TextOf(data, size);
  const std::string_view pattern = dossierkit::fuzz::TakeLine(text);
  dossierkit::Check(pattern, text);
  return 0;
}
