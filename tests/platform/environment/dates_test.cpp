#include "platform/environment/dates.h"

#include <gtest/gtest.h>

#include "platform/environment/format.h"

namespace dossierkit::environment {
namespace {

TEST(Dates, ReadsWhatTheMasksProduce) {
  EXPECT_EQ(ParseDate("1990年03月"), (DateTime{1990, 3, 1}));
  EXPECT_EQ(ParseDate("1990年3月"), (DateTime{1990, 3, 1}));
  EXPECT_EQ(ParseDate("1990年03月05日"), (DateTime{1990, 3, 5}));
  EXPECT_EQ(ParseDate("1990年12月5日"), (DateTime{1990, 12, 5}));
}

TEST(Dates, ReadsTheOtherSeparatorsAlsoMixed) {
  for (const char* text :
       {"1990-03-05", "1990/3/5", "1990.03.05", "1990-3月5", "1990年3-5日", " 1990-03-05 "}) {
    EXPECT_EQ(ParseDate(text), (DateTime{1990, 3, 5})) << text;
  }
  for (const char* text : {"1990-03", "1990.03", "1990/3"})
    EXPECT_EQ(ParseDate(text), (DateTime{1990, 3, 1})) << text;
}

TEST(Dates, ReadsATimeBehindAFullDate) {
  EXPECT_EQ(ParseDate("1990-03-05 7:08:09"), (DateTime{1990, 3, 5, 7, 8, 9}));
  EXPECT_EQ(ParseDate("1990/3/5 23:59"), (DateTime{1990, 3, 5, 23, 59}));
  for (const char* text : {"1990-03 7:08", "1990-03-05 24:00", "1990-03-05 7:60", "1990-03-05 7:08:60",
                           "1990-03-05 7", "1990-03-05 7:8", "1990-03-05T07:08", "1990-03-05 7:08:09 x"}) {
    EXPECT_FALSE(IsDate(text)) << text;
  }
}

TEST(Dates, OuterBlanksAndTabsMeanNothing) {
  for (const char* text : {" 1990-03", "1990-03 ", "\t1990-03", "1990-03\t", " \t 1990年03月\t  "})
    EXPECT_EQ(ParseDate(text), (DateTime{1990, 3, 1})) << text;
  for (const char* text : {"\t", "1990\t-03", "\n1990-03", "1990-03\r", "1990-03-05\t7:08"})
    EXPECT_FALSE(IsDate(text)) << text;
}

TEST(Dates, IncompleteTextIsNoDate) {
  for (const char* text : {"",
                           " ",
                           "1990",
                           "1990年",
                           "1990年月",
                           "年月",
                           "1990年03月日",
                           "年03月05日",
                           "1990-",
                           "1990-03-",
                           "1990年__月",
                           "1990年0_月",
                           "____年__月",
                           "199年03月",
                           "90年03月",
                           "19900305",
                           "990-03-05",
                           "19990-03",
                           "1990年003月",
                           "1990 03 05",
                           "1990年 3月",
                           "一九九〇年三月",
                           "3/5/1990",
                           "abc"}) {
    EXPECT_FALSE(IsDate(text)) << text;
  }
}

TEST(Dates, DayMustExist) {
  for (const char* text : {"1990年13月", "1990年00月", "1990-02-29", "1900-02-29", "2000-04-31", "2000-01-32",
                           "2000-01-00", "0099-01"}) {
    EXPECT_FALSE(IsDate(text)) << text;
  }
  for (const char* text : {"2000-02-29", "1992-02-29", "0100-01", "9999-12-31"})
    EXPECT_TRUE(IsDate(text)) << text;
}

TEST(Dates, FormatAndParseAreInverseOnEveryDay) {
  for (const int year : {100, 1899, 1900, 1990, 2000, 2024, 9999}) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= DaysInMonth(year, month); ++day) {
        const DateTime date{year, month, day, day % 24, month, 0};
        const DateTime midnight{year, month, day};
        ASSERT_EQ(ParseDate(TextOf(date)), date);
        ASSERT_EQ(ParseDate(TextOf(midnight)), midnight);
        for (const char* pattern : {"yyyy年mm月dd日", "yyyy-m-d", "yyyy.mm.dd", "YYYY/MM/DD"}) {
          ASSERT_EQ(ParseDate(Format(date, pattern)), midnight) << pattern;
        }
      }
    }
  }
}

}  // namespace
}  // namespace dossierkit::environment
