#include "platform/environment/format.h"

#include <gtest/gtest.h>

#include "platform/environment/text.h"

namespace dossierkit::environment {
namespace {

TEST(Format, FillsInTheDigitsOfAMaskedDate) {
  EXPECT_EQ(Format("1990年3月", "yyyy年mm月"), "1990年03月");
  EXPECT_EQ(Format("1990年3月5日", "yyyy年mm月dd日"), "1990年03月05日");
  EXPECT_EQ(Format("1990年03月05日", "yyyyMMdd"), "19900305");
  EXPECT_EQ(Format("1990年03月", "yyyyMMdd"), "19900301");
  EXPECT_EQ(Format(DateTime{1990, 3, 5}, "yyyy-mm"), "1990-03");
  EXPECT_EQ(Format("1990年03月", "yyyy.mm"), "1990.03");
}

TEST(Format, KnowsEveryPartOfADateInAnyCase) {
  const DateTime date{2005, 3, 4, 7, 8, 9};
  EXPECT_EQ(Format(date, "yy/m/d h:n:s"), "05/3/4 7:8:9");
  EXPECT_EQ(Format(date, "YYYY-Mm-DD HH:NN:SS"), "2005-03-04 07:08:09");
  EXPECT_EQ(Format(DateTime{100, 1, 2}, "yyyy yy"), "0100 00");
}

TEST(Format, MonthBehindAnHourIsStillAMonth) {
  EXPECT_EQ(Format(DateTime{2005, 3, 4, 7, 8, 9}, "hh:mm"), "07:03");
}

TEST(Format, WhatIsNoDateComesBackUnchanged) {
  for (const char* text : {"1990年月", "abc", "1998", ""}) EXPECT_EQ(Format(text, "yyyy-mm"), text);
  EXPECT_EQ(Format(5, "yyyy-mm"), "5");
}

TEST(Format, NullAndUnsetAreEmpty) {
  EXPECT_EQ(Format(Null{}, "yyyy-mm"), "");
  EXPECT_EQ(Format(Value(), "0.00"), "");
}

TEST(Format, PatternWithoutPlacesGivesTheText) {
  EXPECT_EQ(Format(5, ""), "5");
  EXPECT_EQ(Format("x", "-"), "x");
  EXPECT_EQ(Format(DateTime{1990, 3, 5}, ""), "1990/3/5");
}

TEST(Format, ZeroIsAlwaysADigitAndHashOnlyWhereThereIsOne) {
  EXPECT_EQ(Format(5, "000"), "005");
  EXPECT_EQ(Format(0, "000"), "000");
  EXPECT_EQ(Format(5, "###"), "5");
  EXPECT_EQ(Format(0, "###"), "");
  EXPECT_EQ(Format(1234, "00"), "1234");
  EXPECT_EQ(Format("100000", "######"), "100000");
  EXPECT_EQ(Format("012345", "######"), "12345");
  EXPECT_EQ(Format("110101199003070011", "####"), "110101199003070011");
}

TEST(Format, RoundsHalvesAwayFromZeroOnTheDigitsAsWritten) {
  EXPECT_EQ(Format(2.675, "0.00"), "2.68");
  EXPECT_EQ(Format("-2.5", "0"), "-3");
  EXPECT_EQ(Format(9.995, "0.00"), "10.00");
  EXPECT_EQ(Format(99.5, "0"), "100");
  EXPECT_EQ(Format(-0.4, "0"), "0");
}

TEST(Format, NumberIsTakenWithFifteenDigitsTextWithAll) {
  EXPECT_EQ(Format(-123411111117.0447, "0.00"), "-123411111117.05");
  EXPECT_EQ(Format("-123411111117.0447", "0.00"), "-123411111117.04");
  EXPECT_EQ(Format(0.1 + 0.2, "0.################"), "0.3");
}

TEST(Format, PlacesBehindThePoint) {
  EXPECT_EQ(Format(1.5, "0.00"), "1.50");
  EXPECT_EQ(Format(1.5, "0.##"), "1.5");
  EXPECT_EQ(Format(0.5, "#.00"), ".50");
  EXPECT_EQ(Format(12.5, ".0"), "12.5");
  EXPECT_EQ(Format(12, "0.##"), "12.");
}

TEST(Format, CommaGroupsThousandsAndPercentTakesHundredfold) {
  EXPECT_EQ(Format(1234567, "#,##0"), "1,234,567");
  EXPECT_EQ(Format(123, "#,##0"), "123");
  EXPECT_EQ(Format(0, "#,##0"), "0");
  EXPECT_EQ(Format(5, "0,000"), "0,005");
  EXPECT_EQ(Format(0.256, "0%"), "26%");
  EXPECT_EQ(Format(0.256, "0.0%"), "25.6%");
}

TEST(Format, OtherCharactersAreCopied) {
  EXPECT_EQ(Format(5, "第0号"), "第5号");
  EXPECT_EQ(Format(12345678, "####-####"), "1234-5678");
}

TEST(Format, TextThatIsNoNumberAndBooleansComeBackUnchanged) {
  EXPECT_EQ(Format("12abc", "0.00"), "12abc");
  EXPECT_EQ(Format(true, "0"), "True");
}

// What it gives is valid text, and a text that is no number is itself.
TEST(Format, AnyPatternOnAnyValueGivesSomeText) {
  std::string pattern;
  unsigned state = 1;
  for (unsigned round = 0; round < 20000; ++round) {
    pattern.clear();
    for (unsigned i = 0; i < 1 + round % 12; ++i) {
      state = state * 1664525U + 1013904223U;
      pattern += "0#.,%ymdhns-a"[(state >> 16) % 13];
    }
    for (const Value& value : {Value(-1234.5678), Value("0.000"), Value(DateTime{1990, 3, 5}), Value("x")}) {
      const std::string text = Format(value, pattern);
      EXPECT_EQ(text, ValidUtf8(text)) << pattern;
    }
    if (pattern.find_first_of("ymdhnsa") == std::string::npos) {
      EXPECT_EQ(Format("x", pattern), "x") << pattern;
    }
  }
}

}  // namespace
}  // namespace dossierkit::environment
