#include "platform/environment/text.h"

#include <gtest/gtest.h>

#include "platform/environment/clock.h"
#include "platform/environment/dates.h"

namespace dossierkit::environment {
namespace {

TEST(Text, LengthsCountCharacters) {
  EXPECT_EQ(Length(""), 0U);
  EXPECT_EQ(Length("a姓𠀀"), 3U);
  EXPECT_EQ(Length("\xE5\xA7"), 2U);
}

TEST(Text, PartsAreCutBetweenCharacters) {
  EXPECT_EQ(Middle("a姓名b", 1, 2), "姓名");
  EXPECT_EQ(Middle("a姓名b", 2), "名b");
  EXPECT_EQ(Middle("ab", 5), "");
  EXPECT_EQ(Left("姓名", 1), "姓");
  EXPECT_EQ(Left("姓名", 9), "姓名");
  EXPECT_EQ(Right("a姓名", 2), "姓名");
  EXPECT_EQ(Right("姓", 9), "姓");
}

TEST(Text, CharactersJoinToTheTextAgain) {
  const std::string text = "a姓\xFF𠀀\xE5\xA7";
  std::string joined;
  for (const std::string& character : Characters(text)) joined += character;
  EXPECT_EQ(joined, text);
  EXPECT_EQ(Characters("a姓"), (std::vector<std::string>{"a", "姓"}));
}

TEST(Text, EveryCharacterSurvivesEncoding) {
  for (char32_t character = 1; character <= 0x10FFFF; character += character < 0x3000 ? 1 : 97) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    const std::string encoded = Encode(character);
    std::size_t position = 0;
    ASSERT_EQ(NextCharacter(encoded, position), character);
    ASSERT_EQ(position, encoded.size());
  }
}

TEST(Text, CaseIsThatOfAsciiLetters) {
  EXPECT_EQ(LowerCase("AbÄ姓"), "abÄ姓");
  EXPECT_EQ(UpperCase("AbÄ姓"), "ABÄ姓");
  EXPECT_TRUE(EqualIgnoringCase("TblName", "tblNAME"));
  EXPECT_FALSE(EqualIgnoringCase("ab", "abc"));
  EXPECT_FALSE(EqualIgnoringCase("[", "{"));
}

TEST(Text, OuterBlanksAreBlanksAndTabs) {
  EXPECT_EQ(WithoutOuterBlanks(" \t a b\t "), "a b");
  EXPECT_EQ(WithoutOuterBlanks("a"), "a");
  EXPECT_EQ(WithoutOuterBlanks(" \t "), "");
  EXPECT_EQ(WithoutOuterBlanks(""), "");
}

TEST(Text, ReplaceAndSplit) {
  EXPECT_EQ(Replace("aXbXX", "X", "yy"), "ayybyyyy");
  EXPECT_EQ(Replace("##年", "#", "_"), "__年");
  EXPECT_EQ(Replace("ab", "", "x"), "ab");
  EXPECT_EQ(Split("B 1900-01,2050-12", " "), (std::vector<std::string>{"B", "1900-01,2050-12"}));
  EXPECT_EQ(Split("a,,b,", ","), (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_TRUE(Split("", ",").empty());
}

TEST(Text, BadBytesBecomeReplacementCharacters) {
  EXPECT_EQ(ValidUtf8("姓名"), "姓名");
  EXPECT_EQ(ValidUtf8("a\xFF"
                      "b"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(ValidUtf8("\xE5\xA7"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  // Too long a form, a surrogate, beyond the last code point.
  EXPECT_EQ(Length(ValidUtf8("\xC0\x80")), 2U);
  EXPECT_EQ(ValidUtf8("\xED\xA0\x80").find("\xED"), std::string::npos);
  EXPECT_EQ(ValidUtf8("\xF4\x90\x80\x80").find("\xF4"), std::string::npos);
  EXPECT_EQ(ValidUtf8("\xEF\xBF\xBD"), "\xEF\xBF\xBD");
}

TEST(Clock, TellsAnExistingTime) {
  const DateTime now = SystemClock().Now();
  EXPECT_TRUE(IsDate(TextOf(now)));
  EXPECT_GE(now.year, 2024);
}

}  // namespace
}  // namespace dossierkit::environment
