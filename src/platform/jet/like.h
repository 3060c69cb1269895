// LikePattern: the dialect's "like".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dossierkit::jet {

// "%" is any run of characters, "_" one character, "[abc]" and "[a-z]" one of a set, "[!abc]" one out
// of it, "[]" nothing; a "[" that is never closed and a "]" of its own are plain characters. ASCII
// letters match without regard to case. Matching takes at most pattern times text steps and does not
// recurse.
class LikePattern {
 public:
  explicit LikePattern(std::string_view pattern);

  bool Matches(std::string_view text) const;

  // False where "%" and "_" are all that is special in it.
  bool HasSet() const { return has_set_; }
  // The same as a regular expression between `begin` and `end`, for an engine that disregards case in it. A
  // character that might be special is written with a "\" before it.
  std::string ToRegularExpression(std::string_view begin, std::string_view end) const;

 private:
  struct Range {
    char32_t first;
    char32_t last;
  };
  struct Element {
    enum class Kind { kCharacter, kAnyRun, kAnyOne, kSet } kind;
    char32_t character = 0;
    bool negated = false;
    std::vector<Range> ranges = {};
  };

  std::size_t AddSet(std::string_view pattern, std::size_t open);
  static bool Accepts(const Element& element, char32_t character);

  std::vector<Element> elements_;
  bool has_set_ = false;
};

}  // namespace dossierkit::jet
