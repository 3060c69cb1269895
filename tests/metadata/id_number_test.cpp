// The identity number: its length, and its agreement with the date of birth.
#include <gtest/gtest.h>

#include "metadata/record_checks.h"
#include "tests/metadata/scratch_page.h"

namespace dossierkit::tests {
namespace {

constexpr const char* kDayMask = "####年##月##日";
constexpr const char* kLength = "身份证号码必须为15或18位";
constexpr const char* kMismatch = "身份证号中的出生日期与您实际填写的出生日期不对应，请确认。";

const cFieldItem kIdNumber = FieldOf("A0131", "Varchar", "身份证号");
const cFieldItem kBirthDate = FieldOf("A0104", "datetime", "出生日期");

// What the walk says of an identity number and a date of birth in its masked field; empty for none.
std::string ErrorOf(Walk walk, const std::string& number, const std::string& birth) {
  RecordChecks checks(walk);
  checks.CheckMasked(kBirthDate, *MaskedBox(kDayMask, birth));
  checks.CheckText(kIdNumber, number);
  checks.CheckBirthDate();
  return checks.ErrorText();
}

class IdNumber : public ::testing::TestWithParam<Walk> {};
INSTANTIATE_TEST_SUITE_P(OfAPerson, IdNumber, ::testing::Values(Walk::kInsert, Walk::kUpdate));

TEST_P(IdNumber, EighteenCharactersAgreeByTheirSeventhToFourteenth) {
  EXPECT_EQ(ErrorOf(GetParam(), "320481196803120316", "1968年03月12日"), "");
  EXPECT_EQ(ErrorOf(GetParam(), "32048119680312031X", "1968年03月12日"), "");
  EXPECT_EQ(ErrorOf(GetParam(), "320481200803120316", "2008年03月12日"), "");
  EXPECT_EQ(ErrorOf(GetParam(), "320481196803120316", "1968年03月13日"), kMismatch);
  EXPECT_EQ(ErrorOf(GetParam(), "320481196803120316", "1968年04月12日"), kMismatch);
  EXPECT_EQ(ErrorOf(GetParam(), "320481196803120316", "1969年03月12日"), kMismatch);
}

TEST_P(IdNumber, FifteenCharactersAgreeByTheirSeventhToTwelfth) {
  EXPECT_EQ(ErrorOf(GetParam(), "320481680312031", "1968年03月12日"), "");
  EXPECT_EQ(ErrorOf(GetParam(), "320481680312031", "1968年03月11日"), kMismatch);
}

TEST_P(IdNumber, RequiredFifteenCharactersMeanTheNineteenHundredsOnly) {
  EXPECT_EQ(ErrorOf(GetParam(), "320481080312031", "2008年03月12日"), kMismatch);
  EXPECT_EQ(ErrorOf(GetParam(), "320481080312031", "1908年03月12日"), "");
}

TEST_P(IdNumber, AnotherLengthIsRefusedAndNotCompared) {
  for (const char* number :
       {"", "3", "32048168031203", "3204816803120311", "32048119680312031", "3204811968031203160"}) {
    EXPECT_EQ(ErrorOf(GetParam(), number, "1968年03月12日"), kLength) << number;
    EXPECT_EQ(ErrorOf(GetParam(), number, ""), kLength) << number;
  }
}

TEST_P(IdNumber, RequiredItsDigitsAreNotTested) {
  EXPECT_EQ(ErrorOf(GetParam(), "abcdefghijklmno", "1968年03月12日"), kMismatch);
  EXPECT_EQ(ErrorOf(GetParam(), "abcdef19680312xyzw", "1968年03月12日"), "");
}

TEST_P(IdNumber, ItsLengthCountsInCharacters) {
  EXPECT_EQ(ErrorOf(GetParam(), "一二三四五六680312七八九", "1968年03月12日"), "");
}

TEST_P(IdNumber, RequiredANumberWithoutADateOfBirthIsRefused) {
  EXPECT_EQ(ErrorOf(GetParam(), "320481196803120316", ""), kMismatch);
}

TEST_P(IdNumber, ANumberBehindAnEmptyMaskedFieldIsTakenAsEntered) {
  RecordChecks checks(GetParam());
  checks.CheckText(kIdNumber, "320481196803120316");
  checks.CheckMasked(kBirthDate, *MaskedBox(kDayMask, "1968年03月12日"));
  checks.CheckBirthDate();
  EXPECT_EQ(checks.ErrorText(), "");
}

TEST_P(IdNumber, RequiredItsLengthMessageLosesTheEarlierLines) {
  RecordChecks checks(GetParam());
  checks.CheckText(RequiredFieldOf("A0101", "varchar", "姓名"), "");
  checks.CheckText(FieldOf("A0150", "int", "数字"), "x");
  checks.CheckText(kIdNumber, "123");
  EXPECT_EQ(checks.ErrorText(), "身份证号码必须为15或18位");
  checks.CheckText(RequiredFieldOf("A0110", "varchar", "从事专业"), "");
  EXPECT_EQ(checks.ErrorText(), "身份证号码必须为15或18位\r\n从事专业  为必填项");
}

TEST_P(IdNumber, RequiredTheLengthMessageReplacesThatOfTheSameField) {
  RecordChecks checks(GetParam());
  checks.CheckText(kIdNumber, std::string(256, '1'));
  EXPECT_EQ(checks.ErrorText(), "身份证号码必须为15或18位");
}

TEST_P(IdNumber, ARequiredNumberLeftEmptyGivesTwoLines) {
  RecordChecks checks(GetParam());
  checks.CheckText(RequiredFieldOf("A0131", "Varchar", "身份证号"), "");
  checks.CheckBirthDate();
  EXPECT_EQ(checks.ErrorText(), "身份证号码必须为15或18位\r\n身份证号  为必填项");
}

TEST_P(IdNumber, TheMismatchFollowsTheOtherLines) {
  RecordChecks checks(GetParam());
  checks.CheckText(kIdNumber, "320481196803120316");
  checks.CheckText(RequiredFieldOf("A0101", "varchar", "姓名"), "");
  checks.CheckBirthDate();
  EXPECT_EQ(checks.ErrorText(),
            "姓名 为必填项\r\n身份证号中的出生日期与您实际填写的出生日期不对应，请确认。");
}

TEST_P(IdNumber, ADateOfBirthThatIsNoDateGivesTwoLines) {
  RecordChecks checks(GetParam());
  checks.CheckMasked(kBirthDate, *MaskedBox(kDayMask, "1968年13月12日"));
  checks.CheckText(kIdNumber, "320481196813120316");
  checks.CheckBirthDate();
  EXPECT_EQ(checks.ErrorText(),
            "出生日期 数据应该是日期型，例如1990年03月\r\n"
            "身份证号中的出生日期与您实际填写的出生日期不对应，请确认。");
}

TEST_P(IdNumber, OnlyTheFieldOfThatColumnIsOne) {
  RecordChecks checks(GetParam());
  checks.CheckText(FieldOf("A0119", "varchar"), "123");
  checks.CheckText(FieldOf("A0131", "ntext"), "123");
  checks.CheckMasked(FieldOf("A0131", "varchar"), *MaskedBox("###", "123"));
  checks.CheckBirthDate();
  EXPECT_EQ(checks.ErrorText(), "");
}

TEST(IdNumberWalks, TheReplaceWalkKnowsNoIdNumber) {
  EXPECT_EQ(ErrorOf(Walk::kReplace, "123", ""), "");
  EXPECT_EQ(ErrorOf(Walk::kReplace, "", "1968年03月12日"), "");
  EXPECT_EQ(ErrorOf(Walk::kReplace, "320481196803120316", "1970年01月01日"), "");
}

TEST(IdNumberWalks, RequiredOnlyTheUpdateWalkTakesTheBirthDateFromATextBox) {
  for (const Walk walk : {Walk::kInsert, Walk::kUpdate}) {
    RecordChecks checks(walk);
    checks.CheckText(kBirthDate, "1968-3-12");
    checks.CheckText(kIdNumber, "320481196803120316");
    checks.CheckBirthDate();
    EXPECT_EQ(checks.ErrorText(), walk == Walk::kUpdate ? "" : kMismatch);
  }
}

}  // namespace
}  // namespace dossierkit::tests
