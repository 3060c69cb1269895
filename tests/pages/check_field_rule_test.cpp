// The rule of a field, applied to a value.
#include "pages/check_field_rule.h"

#include <gtest/gtest.h>

#include "platform/environment/failure.h"
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

struct Rule {
  const char* check;
  const char* type = "Varchar";
  const char* style = "";
  const char* desc = "身份证号";
};

class CheckFieldRuleTest : public ShellTest {
 protected:
  // The message for the value; the clock stands at 2026-11-21.
  static std::string Of(const Rule& rule, const std::string& value) {
    cFieldItem item;
    item.ItemDesc = rule.desc;
    item.FieldType = rule.type;
    item.Style = rule.style;
    item.Check = rule.check;
    item.Dmcod = "码";
    item.Dmcpt = "名";
    const std::string message = CheckFieldRule(item, value);
    EXPECT_EQ(environment::TextOf(item.Dmcod), "码");
    EXPECT_EQ(item.Dmcpt, "名");
    return message;
  }
  static int NumberOf(const Rule& rule, const std::string& value) {
    return NumberOfFailure([&] { Of(rule, value); });
  }
};

// --- no rule -------------------------------------------------------------------------------------

TEST_F(CheckFieldRuleTest, WithoutARuleEverythingPasses) {
  EXPECT_EQ(Of({""}, "x"), "");
  EXPECT_EQ(Of({"", "datetime", "yyyy-mm"}, "x"), "");
}

TEST_F(CheckFieldRuleTest, AKindWithoutABlankChecksNothing) {
  for (const char* check : {"L", "B", "L18", "B1900,2000", "15,18"}) EXPECT_EQ(Of({check}, "x"), "") << check;
}

TEST_F(CheckFieldRuleTest, AnotherKindChecksNothing) {
  for (const char* check : {"X 15", "LB 15", " L 15", "N 1,2", "长 15", "1 L 15"})
    EXPECT_EQ(Of({check}, "x"), "") << check;
}

// --- lengths -------------------------------------------------------------------------------------

TEST_F(CheckFieldRuleTest, ALengthOfTheListPasses) {
  EXPECT_EQ(Of({"L 15,18"}, "123456789012345"), "");
  EXPECT_EQ(Of({"L 15,18"}, "123456789012345678"), "");
  EXPECT_EQ(Of({"L 4"}, "2010"), "");
}

TEST_F(CheckFieldRuleTest, AnotherLengthIsToldWithAllThatAreAllowed) {
  EXPECT_EQ(Of({"L 18"}, "123456789012345"), "身份证号长度应该为18位。");
  EXPECT_EQ(Of({"L 15,18"}, "1234567890123456"), "身份证号长度应该为15或18位。");
  EXPECT_EQ(Of({"L 1,3,5"}, "ab"), "身份证号长度应该为1或3或5位。");
  EXPECT_EQ(Of({"L 4", "Varchar", "", "年份"}, ""), "年份长度应该为4位。");
}

TEST_F(CheckFieldRuleTest, LengthsCountCharactersAndNotBytes) {
  EXPECT_EQ(Of({"L 2"}, "中文"), "");
  EXPECT_EQ(Of({"L 6"}, "中文"), "身份证号长度应该为6位。");
}

TEST_F(CheckFieldRuleTest, LengthsAreComparedAsNumbersAndToldAsWritten) {
  EXPECT_EQ(Of({"L 04"}, "2010"), "");
  EXPECT_EQ(Of({"L 4.0"}, "2010"), "");
  EXPECT_EQ(Of({"L 04"}, "201"), "身份证号长度应该为04位。");
}

TEST_F(CheckFieldRuleTest, ALengthWithAFractionFitsNoText) {
  EXPECT_EQ(Of({"L 4.5"}, "2010"), "身份证号长度应该为4.5位。");
  EXPECT_EQ(Of({"L 4.5"}, "20100"), "身份证号长度应该为4.5位。");
}

TEST_F(CheckFieldRuleTest, RequiredALengthRuleWithoutALengthRefusesEveryText) {
  for (const char* check : {"L ", "l ", "L  18"})
    EXPECT_EQ(Of({check}, "x"), "身份证号长度应该为位。") << check;
}

TEST_F(CheckFieldRuleTest, BlanksCountAsCharacters) {
  EXPECT_EQ(Of({"L 2"}, "  "), "");
  EXPECT_EQ(Of({"L 3"}, "  "), "身份证号长度应该为3位。");
  EXPECT_EQ(Of({"B 1,2"}, " "), "身份证号应该在1至2之间。");
}

TEST_F(CheckFieldRuleTest, ASmallLetterIsTheSameKind) {
  EXPECT_EQ(Of({"l 18"}, "1"), "身份证号长度应该为18位。");
  EXPECT_EQ(Of({"b 1,2"}, "3"), "身份证号应该在1至2之间。");
}

TEST_F(CheckFieldRuleTest, NothingBehindASecondBlankCounts) {
  EXPECT_EQ(Of({"L 15 18"}, "123456789012345678"), "身份证号长度应该为15位。");
  EXPECT_EQ(Of({"L 15, 18"}, "123456789012345"), "");
  EXPECT_EQ(Of({"B 1,2 3"}, "3"), "身份证号应该在1至2之间。");
}

TEST_F(CheckFieldRuleTest, ALengthOfEveryTypeIsChecked) {
  for (const char* type : {"Varchar", "varchar", "Ntext", "int", "datetime", "bit", "other", ""})
    EXPECT_EQ(Of({"L 3", type}, "1"), "身份证号长度应该为3位。") << type;
}

TEST_F(CheckFieldRuleTest, ALengthThatIsNoNumberFails) {
  EXPECT_EQ(NumberOf({"L 15,x"}, "1"), 13);
  EXPECT_EQ(NumberOf({"L x,15"}, "123456789012345"), 13);
  EXPECT_EQ(NumberOf({"L 15,"}, "1"), 13);
  // It is not looked at behind a length that matches.
  EXPECT_EQ(Of({"L 15,x"}, "123456789012345"), "");
}

// --- bounds of a date ----------------------------------------------------------------------------

TEST_F(CheckFieldRuleTest, ADateBetweenTheBoundsPasses) {
  const Rule month = {"B 1900-01,2050-12", "datetime", "yyyy-mm", "毕业时间"};
  EXPECT_EQ(Of(month, "1996年07月"), "");
  EXPECT_EQ(Of(month, "1900年01月"), "");
  const Rule day = {"B 1900-01-01,2050-12-31", "datetime", "yyyy-mm-dd", "出生日期"};
  EXPECT_EQ(Of(day, "1900年01月01日"), "");
  EXPECT_EQ(Of(day, "1968年03月12日"), "");
}

TEST_F(CheckFieldRuleTest, ADateBelowTheLowerBoundIsTold) {
  EXPECT_EQ(Of({"B 1900-01,2050-12", "datetime", "yyyy-mm", "毕业时间"}, "1899年12月"),
            "毕业时间应该在1900-01至2026-11之间。");
  EXPECT_EQ(Of({"B 1900-01-01,2050-12-31", "datetime", "yyyy-mm-dd", "出生日期"}, "1899年12月31日"),
            "出生日期应该在1900-01-01至2026-11-21之间。");
}

TEST_F(CheckFieldRuleTest, RequiredThePresentDateTakesThePlaceOfTheUpperBound) {
  const Rule month = {"B 1900-01,2050-12", "datetime", "yyyy-mm", "毕业时间"};
  EXPECT_EQ(Of(month, "2026年11月"), "");
  EXPECT_EQ(Of(month, "2026年12月"), "毕业时间应该在1900-01至2026-11之间。");
  const Rule day = {"B 1900-01-01,2000-12-31", "datetime", "yyyy-mm-dd", "出生日期"};
  EXPECT_EQ(Of(day, "2026年11月21日"), "");
  EXPECT_EQ(Of(day, "2026年11月22日"), "出生日期应该在1900-01-01至2026-11-21之间。");
}

TEST_F(CheckFieldRuleTest, RequiredWithPointsTheUpperBoundHasHyphens) {
  const Rule month = {"B 1900.01,2050.12", "datetime", "yyyy.mm", "毕业时间"};
  EXPECT_EQ(Of(month, "2025年12月"), "");
  // The point sorts behind the hyphen, so that the present year fails as a whole.
  EXPECT_EQ(Of(month, "2026年05月"), "毕业时间应该在1900.01至2026-11之间。");
  EXPECT_EQ(Of(month, "2026年01月"), "毕业时间应该在1900.01至2026-11之间。");
  const Rule day = {"B 1900.01.01,2050.12.31", "datetime", "yyyy.mm.dd", "出生日期"};
  EXPECT_EQ(Of(day, "2025年12月31日"), "");
  EXPECT_EQ(Of(day, "2026年01月01日"), "出生日期应该在1900.01.01至2026-11-21之间。");
}

TEST_F(CheckFieldRuleTest, AnotherStyleKeepsTheWrittenUpperBound) {
  const Rule year = {"B 1900,2000", "datetime", "yyyy", "年份"};
  EXPECT_EQ(Of(year, "2000年12月"), "");
  EXPECT_EQ(Of(year, "2001年01月"), "年份应该在1900至2000之间。");
  EXPECT_EQ(Of({"B 1900年01月,2050年12月", "datetime", "yyyy年mm月", "时间"}, "2050年12月"), "");
  EXPECT_EQ(Of({"B 1900年01月,2050年12月", "datetime", "yyyy年mm月", "时间"}, "2051年01月"),
            "时间应该在1900年01月至2050年12月之间。");
}

TEST_F(CheckFieldRuleTest, TheTypeOfADateIsComparedInSmallLetters) {
  EXPECT_EQ(Of({"B 1900-01,2050-12", "DateTime", "yyyy-mm", "时间"}, "1800年01月"),
            "时间应该在1900-01至2026-11之间。");
}

TEST_F(CheckFieldRuleTest, ADateWithoutExactlyTwoBoundsIsNotChecked) {
  for (const char* check : {"B 1900-01", "B 1900-01,2000-01,2050-12", "B ,,"})
    EXPECT_EQ(Of({check, "datetime", "yyyy-mm"}, "1800年01月"), "") << check;
}

TEST_F(CheckFieldRuleTest, ThePresentDateIsReadEachTime) {
  const Rule month = {"B 1900-01,2050-12", "datetime", "yyyy-mm", "时间"};
  visit.clock.now = {2030, 2, 1, 0, 0, 0};
  EXPECT_EQ(Of(month, "2030年02月"), "");
  EXPECT_EQ(Of(month, "2030年03月"), "时间应该在1900-01至2030-02之间。");
}

// --- bounds of a text ----------------------------------------------------------------------------

TEST_F(CheckFieldRuleTest, ATextBetweenTheBoundsPassesAndNoOther) {
  const Rule rule = {"B 1000,2000", "Varchar", "", "数"};
  for (const char* value : {"1000", "1500", "2000", "10000"}) EXPECT_EQ(Of(rule, value), "") << value;
  for (const char* value : {"1", "999", "2001"}) {
    // "999" lies above "2000" as a text.
    EXPECT_EQ(Of(rule, value), "数应该在1000至2000之间。") << value;
  }
}

TEST_F(CheckFieldRuleTest, RequiredTextsAreComparedAsTextAndNotAsNumbers) {
  EXPECT_EQ(Of({"B 1,1000", "varchar", "", "数"}, "9"), "数应该在1至1000之间。");
  EXPECT_EQ(Of({"B 1,9", "varchar", "", "数"}, "1000"), "");
  EXPECT_EQ(Of({"B A,Z", "varchar", "", "字"}, "b"), "字应该在A至Z之间。");
}

TEST_F(CheckFieldRuleTest, RequiredForAYearThePresentOneTakesThePlaceOfTheUpperBound) {
  const Rule year = {"B 1900,2000", "Varchar", "yyyy", "年份"};
  EXPECT_EQ(Of(year, "2026"), "");
  EXPECT_EQ(Of(year, "2027"), "年份应该在1900至2026之间。");
  EXPECT_EQ(Of(year, "1899"), "年份应该在1900至2026之间。");
  // For no other style.
  EXPECT_EQ(Of({"B 1900,2000", "Varchar", "yyyy-mm", "年份"}, "2026"), "年份应该在1900至2000之间。");
}

TEST_F(CheckFieldRuleTest, ATextWithOneBoundFails) {
  EXPECT_EQ(NumberOf({"B 1900"}, "2000"), 9);
  EXPECT_EQ(NumberOf({"B 1900"}, "1800"), 9);
  EXPECT_EQ(NumberOf({"B 1900", "varchar", "yyyy"}, "2000"), 9);
}

TEST_F(CheckFieldRuleTest, ATextWithThreeBoundsTakesTheFirstTwo) {
  EXPECT_EQ(Of({"B 1,2,9", "varchar", "", "数"}, "3"), "数应该在1至2之间。");
}

TEST_F(CheckFieldRuleTest, BoundsOfAnotherTypeAreNotChecked) {
  for (const char* type : {"Ntext", "ntext", "int", "bit", "", "char"}) {
    EXPECT_EQ(Of({"B 1,2", type}, "9"), "") << type;
    EXPECT_EQ(Of({"B 1", type}, "9"), "") << type;
  }
}

TEST_F(CheckFieldRuleTest, AnEmptyUpperBoundLetsNothingButTheEmptyTextThrough) {
  EXPECT_EQ(Of({"B 1900,"}, "2000"), "身份证号应该在1900至之间。");
  EXPECT_EQ(Of({"B ,"}, "2000"), "身份证号应该在至之间。");
  EXPECT_EQ(Of({"B ,"}, ""), "");
  EXPECT_EQ(Of({"B ,2000"}, "1500"), "");
  EXPECT_EQ(Of({"B 1900-01,", "datetime", "yyyy年mm月", "时间"}, "2000年01月"), "时间应该在1900-01至之间。");
}

TEST_F(CheckFieldRuleTest, AStyleInCapitalsKeepsTheWrittenUpperBound) {
  EXPECT_EQ(Of({"B 1900-01,2000-12", "datetime", "YYYY-MM", "时间"}, "2026年05月"),
            "时间应该在1900-01至2000-12之间。");
  EXPECT_EQ(Of({"B 1900-01-01,2000-12-31", "datetime", "YYYY-MM-DD", "时间"}, "2026年05月01日"),
            "时间应该在1900-01-01至2000-12-31之间。");
  EXPECT_EQ(Of({"B 1900,2000", "Varchar", "YYYY", "年份"}, "2026"), "年份应该在1900至2000之间。");
}

}  // namespace
}  // namespace dossierkit::tests
