#include "platform/toolkit/controls/shown_text.h"

#include <gtest/gtest.h>

namespace dossierkit::toolkit {
namespace {

TEST(ShownText, CountsCodePointsInOneLine) {
  const ShownText text("a𠮷b", false);
  EXPECT_EQ(text.Shown(), u"a𠮷b");
  EXPECT_EQ(text.Shown().size(), 4U);
  EXPECT_EQ(text.ShownPosition(2), 3U);
  EXPECT_EQ(text.ModelPosition(3), 2U);
  EXPECT_EQ(text.ModelPosition(4), 3U);
}

TEST(ShownText, ShowsEachBreakAsOneCharacter) {
  const ShownText text("a\r\nb\rc\nd", true);
  EXPECT_EQ(text.Shown(), u"a\nb\nc\nd");
  EXPECT_EQ(text.ModelPosition(1), 1U);
  EXPECT_EQ(text.ModelPosition(2), 3U);
  EXPECT_EQ(text.ShownPosition(3), 2U);
}

TEST(ShownText, ShowsTheBreaksOfOtherScriptsAsBreaksInABoxOfSeveralLines) {
  EXPECT_EQ(ShownText("a\u2028b\u2029c", true).Shown(), u"a\nb\nc");
  EXPECT_EQ(ShownText("a\u2028b", false).Shown(), u"a\u2028b");
}

TEST(ShownText, ShowsABadByteAsOneReplacement) {
  const ShownText text(
      "a\xFF\xFE"
      "b",
      false);
  EXPECT_EQ(text.Shown(), u"a\uFFFD\uFFFDb");
  EXPECT_EQ(text.ModelPosition(3), 3U);
}

TEST(ShownText, ALongLineGoesOnInTheNext) {
  const ShownText text(std::string(5000, 'a') + "𠮷" + std::string(4999, 'b') + "\r\n" + "c", true);
  EXPECT_EQ(text.Shown(), std::u16string(5000, 'a') + u"\n𠮷" + std::u16string(4999, 'b') + u"\nc");
  EXPECT_EQ(text.Count(), 10003U);
  EXPECT_EQ(text.ShownPosition(4999), 4999U);
  EXPECT_EQ(text.ShownPosition(5000), 5001U);
  EXPECT_EQ(text.ModelPosition(5000), 5000U);
  EXPECT_EQ(text.ModelPosition(5001), 5000U);
  EXPECT_EQ(text.ModelPosition(5003), 5001U) << "behind a pair of surrogates";
}

TEST(ShownText, InOneLineALongTextIsCut) {
  const ShownText text(std::string(5000, 'a') + "bc", false);
  EXPECT_EQ(text.Shown(), std::u16string(5000, 'a'));
  EXPECT_EQ(text.Count(), 5000U);
  EXPECT_EQ(text.ShownPosition(5002), 5000U);
  EXPECT_EQ(text.ModelPosition(5000), 5000U);
  EXPECT_EQ(ShownText(std::string(5000, 'a'), false).Shown().size(), 5000U);
}

TEST(ShownText, EmptyTextHasOnePlace) {
  const ShownText text;
  EXPECT_EQ(text.ModelPosition(5), 0U);
  EXPECT_EQ(text.ShownPosition(5), 0U);
}

TEST(ShownText, GivesWhatIsSelectedOnEitherSide) {
  const ShownText text("a\r\n𠮷b", true);
  EXPECT_EQ(text.ModelSelection(1, 3), (Selection{1, 3}));
  EXPECT_EQ(text.ShownSelection({1, 3}), (Selection{1, 3}));
  EXPECT_EQ(text.ModelSelection(2, 2), (Selection{3, 1}));
  EXPECT_EQ(text.ShownSelection({3, 1}), (Selection{2, 2}));
  EXPECT_EQ(text.ShownSelection({4, 99}), (Selection{4, 1}));
}

void ExpectChange(const char16_t* before, const char16_t* after, std::size_t caret, std::size_t start,
                  std::size_t removed, const char16_t* inserted) {
  const TextChange change = FindChange(before, after, caret);
  EXPECT_EQ(change.start, start);
  EXPECT_EQ(change.removed, removed);
  EXPECT_EQ(change.inserted, inserted);
}

TEST(FindChange, FindsWhatWasTypedAmongEqualCharacters) { ExpectChange(u"aaaa", u"aaaaa", 3, 2, 0, u"a"); }
TEST(FindChange, FindsWhatWasDeleted) { ExpectChange(u"aaaa", u"aaa", 1, 1, 1, u""); }
TEST(FindChange, FindsAReplacement) { ExpectChange(u"北京大学", u"北京师范", 4, 2, 2, u"师范"); }
TEST(FindChange, KeepsSurrogatePairsWhole) { ExpectChange(u"𠮷", u"𠮸", 2, 0, 2, u"𠮸"); }
TEST(FindChange, KeepsSurrogatePairsOfAnEqualLowerHalfWhole) {
  ExpectChange(u"\U00020BB7", u"\U000207B7", 0, 0, 2, u"\U000207B7");
}
TEST(FindChange, FindsNothingInEqualTexts) { ExpectChange(u"a", u"a", 1, 1, 0, u""); }
TEST(FindChange, ACaretBeyondTheTextIsItsEnd) { ExpectChange(u"ab", u"abc", 9, 2, 0, u"c"); }

void ExpectModelChange(const ModelChange& change, const Selection& replaced, const std::string& inserted) {
  EXPECT_EQ(change.replaced, replaced);
  EXPECT_EQ(change.inserted, inserted);
}

TEST(ChangeOf, ATypedCharacterIsAtItsPlaceInCodePoints) {
  const ShownText before("𠮷b", false);
  ExpectModelChange(ChangeOf(before, {1, 0}, {u"𠮷中b", 3, 2}), {1, 0}, "中");
  ExpectModelChange(ChangeOf(before, {1, 0}, {u"𠮷\U0001F600b", 4, 2}), {1, 0}, "\U0001F600");
}

TEST(ChangeOf, ABreakIsCrLfInSeveralLinesOnly) {
  ExpectModelChange(ChangeOf(ShownText("ab", true), {1, 0}, {u"a\nb", 2, 1}), {1, 0}, "\r\n");
  ExpectModelChange(ChangeOf(ShownText("ab", true), {1, 0}, {u"a\r\nx\rb", 5, 1}), {1, 0}, "\r\nx\r\n");
  ExpectModelChange(ChangeOf(ShownText("ab", false), {1, 0}, {u"a\nb", 2, 1}), {1, 0}, "\n");
}

TEST(ChangeOf, AnErasedBreakIsTwoCharactersOfTheModel) {
  ExpectModelChange(ChangeOf(ShownText("a\r\nb", true), {3, 0}, {u"ab", 1, 2}), {1, 2}, "");
}

TEST(ChangeOf, AnErasedBreakOfALongLineErasesWhatStandsBesideIt) {
  const ShownText before(std::string(5000, 'a') + "b", true);
  const std::u16string joined = std::u16string(5000, 'a') + u"b";
  ExpectModelChange(ChangeOf(before, {5000, 0}, {joined, 5000, 5001}), {4999, 1}, "");  // by Backspace
  ExpectModelChange(ChangeOf(before, {5000, 0}, {joined, 5000, 5000}), {5000, 1}, "");  // by Delete
}

TEST(ChangeOf, ASelectionThatGoesOnOutOfSightIsReplacedWhole) {
  const ShownText before(std::string(5000, 'a') + "bcd", false);
  ExpectModelChange(ChangeOf(before, {0, 5003}, {u"x", 1, 0}), {0, 5003}, "x");
  ExpectModelChange(ChangeOf(before, {10, 4993}, {std::u16string(10, 'a') + u"xy", 12, 10}), {10, 4993},
                    "xy");
}

TEST(ChangeOf, BackspaceWhereTheCaretIsOutOfSightErasesBeforeIt) {
  const ShownText before(std::string(5000, 'a') + "bcd", false);
  ExpectModelChange(ChangeOf(before, {5003, 0}, {std::u16string(4999, 'a'), 4999, 5000}), {5002, 1}, "");
}

TEST(ChangeOf, HalfAPairIsAReplacementCharacter) {
  const char16_t half[] = {u'a', 0xD842, 0};
  ExpectModelChange(ChangeOf(ShownText("a", false), {1, 0}, {half, 2, 1}), {1, 0}, "\uFFFD");
}

}  // namespace
}  // namespace dossierkit::toolkit
