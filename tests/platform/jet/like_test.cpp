#include "platform/jet/like.h"

#include <gtest/gtest.h>

#include <string>

namespace dossierkit::jet {
namespace {

bool Matches(std::string_view text, std::string_view pattern) { return LikePattern(pattern).Matches(text); }

TEST(Like, PercentIsAnyRun) {
  EXPECT_TRUE(Matches("A01", "a%"));
  EXPECT_TRUE(Matches("a", "a%"));
  EXPECT_TRUE(Matches("", "%"));
  EXPECT_TRUE(Matches("abcabd", "%abd"));
  EXPECT_TRUE(Matches("北京大学", "%北%大%"));
  EXPECT_FALSE(Matches("北京大学", "%大%北%"));
  EXPECT_FALSE(Matches("B01", "a%"));
  EXPECT_FALSE(Matches("ba", "a%"));
  EXPECT_FALSE(Matches("abc", "ab"));
  EXPECT_FALSE(Matches("", "a"));
}

TEST(Like, CaseOfAsciiLettersIsIgnored) {
  EXPECT_TRUE(Matches("BJDX", "%b%j%"));
  EXPECT_TRUE(Matches("bjdx", "%B%J%"));
  EXPECT_FALSE(Matches("é", "É"));
}

TEST(Like, UnderscoreIsOneCharacter) {
  EXPECT_TRUE(Matches("学位", "_位"));
  EXPECT_FALSE(Matches("位", "_位"));
  EXPECT_TRUE(Matches("\xFF", "_"));
  EXPECT_TRUE(Matches("ab", "%_"));
  EXPECT_FALSE(Matches("", "%_"));
}

TEST(Like, SetIsOneOfItsCharacters) {
  EXPECT_TRUE(Matches("B01", "[ab]%"));
  EXPECT_FALSE(Matches("C01", "[ab]%"));
  EXPECT_TRUE(Matches("m", "[a-z]"));
  EXPECT_TRUE(Matches("M", "[a-z]"));
  EXPECT_TRUE(Matches("m", "[A-Z]"));
  EXPECT_FALSE(Matches("5", "[a-z]"));
  EXPECT_TRUE(Matches("京", "[北京]"));
  EXPECT_TRUE(Matches("%", "[%]"));
  EXPECT_FALSE(Matches("x", "[%]"));
  EXPECT_TRUE(Matches("-", "[a-]"));
  EXPECT_TRUE(Matches("[", "[[]"));
}

TEST(Like, SetWithExclamationMarkIsAnyOther) {
  EXPECT_TRUE(Matches("C01", "[!ab]%"));
  EXPECT_FALSE(Matches("A01", "[!ab]%"));
  EXPECT_FALSE(Matches("", "[!ab]"));
  EXPECT_TRUE(Matches("!", "[!]"));
}

TEST(Like, BracketsThatAreNoSetArePlain) {
  EXPECT_TRUE(Matches("a[b", "a[b"));
  EXPECT_TRUE(Matches("x[y", "%[%"));
  EXPECT_FALSE(Matches("xy", "%[%"));
  EXPECT_TRUE(Matches("a]", "a]"));
  EXPECT_TRUE(Matches("ab", "a[]b"));
}

// A matcher that tried every division of the text among the runs would not end.
TEST(Like, ManyPercentSignsComeToAnEnd) {
  std::string pattern = "%";
  for (int i = 0; i < 200; ++i) pattern += "a%";
  const std::string text = std::string(100000, 'a');
  EXPECT_FALSE(Matches(text, pattern + "b"));
  EXPECT_TRUE(Matches(text, pattern));
}

TEST(Like, AgreesWithAPlainRecursiveReading) {
  const auto plain = [](auto&& self, std::string_view text, std::string_view pattern) -> bool {
    if (pattern.empty()) return text.empty();
    if (pattern[0] == '%') {
      return self(self, text, pattern.substr(1)) || (!text.empty() && self(self, text.substr(1), pattern));
    }
    return !text.empty() && (pattern[0] == '_' || pattern[0] == text[0]) &&
           self(self, text.substr(1), pattern.substr(1));
  };
  unsigned state = 7;
  const auto random = [&](unsigned limit) {
    return (state = state * 1664525U + 1013904223U, (state >> 16) % limit);
  };
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    std::string pattern;
    for (unsigned i = random(8); i > 0; --i) text += "ab"[random(2)];
    for (unsigned i = random(8); i > 0; --i) pattern += "ab%_"[random(4)];
    ASSERT_EQ(Matches(text, pattern), plain(plain, text, pattern)) << text << " like " << pattern;
  }
}

}  // namespace
}  // namespace dossierkit::jet
