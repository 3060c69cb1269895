// The checks of a record's fields, by kind of control, type and walk, and the words of their messages.
#include "metadata/record_checks.h"

#include <gtest/gtest.h>

#include "platform/environment/failure.h"
#include "tests/metadata/scratch_page.h"

namespace dossierkit::tests {
namespace {

constexpr Walk kAllWalks[] = {Walk::kInsert, Walk::kUpdate, Walk::kReplace};
constexpr const char* kMonthMask = "####年##月";

// n characters of three bytes each.
std::string Characters(int n) {
  std::string text;
  for (int i = 0; i < n; ++i) text += "字";
  return text;
}

std::string TextError(Walk walk, const cFieldItem& item, const std::string& text) {
  RecordChecks checks(walk);
  checks.CheckText(item, text);
  return checks.ErrorText();
}

std::string MaskedError(Walk walk, const cFieldItem& item, const std::string& mask,
                        const std::string& text = {}) {
  RecordChecks checks(walk);
  checks.CheckMasked(item, *MaskedBox(mask, text));
  return checks.ErrorText();
}

// What a text box of that type says to a text, the same in all walks.
void ExpectText(const std::string& type, const std::string& text, const std::string& error) {
  for (const Walk walk : kAllWalks) {
    EXPECT_EQ(TextError(walk, FieldOf("A0501", type, "起始"), text), error)
        << type << " '" << text.substr(0, 30) << "' in walk " << static_cast<int>(walk);
  }
}

void ExpectMasked(const std::string& type, const std::string& mask, const std::string& text,
                  const std::string& error) {
  for (const Walk walk : kAllWalks) {
    EXPECT_EQ(MaskedError(walk, FieldOf("A0501", type, "起始"), mask, text), error)
        << type << " '" << text << "' in walk " << static_cast<int>(walk);
  }
}

TEST(TextChecks, AVarcharOf255CharactersPassesAnd256Fail) {
  for (const char* type : {"varchar", "Varchar", "VARCHAR"}) {
    ExpectText(type, "", "");
    ExpectText(type, Characters(255), "");
    ExpectText(type, Characters(256), "起始 数据应该小于256个字符长度");
  }
}

TEST(TextChecks, RequiredTheFieldsOwnLengthPlaysNoPart) {
  for (const char* length : {"1", "1000"}) {
    cFieldItem item = FieldOf("A0501", "Varchar", "起始");
    item.FieldLength = length;
    EXPECT_EQ(TextError(Walk::kReplace, item, Characters(255)), "");
    EXPECT_EQ(TextError(Walk::kReplace, item, Characters(256)), "起始 数据应该小于256个字符长度");
  }
}

TEST(TextChecks, AnIntMustBeANumber) {
  for (const char* type : {"int", "Int", "INT"}) {
    ExpectText(type, "", "");
    ExpectText(type, "12", "");
    ExpectText(type, "-3", "");
    ExpectText(type, "+3.25", "");
    ExpectText(type, "十二", "起始 数据应该输入数字");
    ExpectText(type, "1a", "起始 数据应该输入数字");
    ExpectText(type, " ", "起始 数据应该输入数字");
  }
}

TEST(TextChecks, TheLimitsOf16BitsPass) {
  for (const char* text : {"-32768", "32767", "32767.4", "-32768.5", "0.1"}) ExpectText("int", text, "");
}

TEST(TextChecks, RequiredANumberBeyond16BitsFailsByItsConversion) {
  for (const char* text : {"40000", "32768", "-32769", "32767.6", "99999999999"}) {
    for (const Walk walk : kAllWalks) {
      RecordChecks checks(walk);
      try {
        checks.CheckText(FieldOf("A0501", "int", "起始"), text);
        ADD_FAILURE() << text << " passed: " << checks.ErrorText();
      } catch (const environment::Failure& failure) {
        EXPECT_EQ(failure.number(), 6) << text;
        EXPECT_EQ(failure.description(), "溢出") << text;
      }
    }
  }
}

TEST(TextChecks, ADatetimeMustBeADate) {
  for (const char* type : {"datetime", "Datetime", "DATETIME"}) {
    ExpectText(type, "", "");
    ExpectText(type, "1990年03月", "");
    ExpectText(type, "1990年03月12日", "");
    ExpectText(type, "1990-3-12", "");
    ExpectText(type, "1990年13月", "起始 数据应该是日期型，例如1990年03月");
    ExpectText(type, "昨天", "起始 数据应该是日期型，例如1990年03月");
  }
}

TEST(TextChecks, LongTextsBitsAndUnknownTypesAreNotChecked) {
  for (const char* type : {"ntext", "Ntext", "bit", "Bit", "money", "varchar2", ""}) {
    ExpectText(type, "", "");
    ExpectText(type, Characters(300), "");
    ExpectText(type, "40000", "");
  }
}

TEST(TextChecks, ARequiredTextMustNotBeEmptyWhateverItsType) {
  for (const char* type : {"varchar", "int", "datetime", "ntext", "bit", "money"}) {
    for (const Walk walk : kAllWalks) {
      EXPECT_EQ(TextError(walk, RequiredFieldOf("A0501", type, "起始"), ""), "起始 为必填项") << type;
      EXPECT_EQ(TextError(walk, FieldOf("A0501", type, "起始"), ""), "") << type;
    }
  }
}

// A required field with a code table.
cFieldItem RequiredCode(const environment::Value& code) {
  cFieldItem item = RequiredFieldOf("A0502", "varchar", "性别");
  item.CodeTable = "GB2261";
  item.Dmcod = code;
  return item;
}

TEST(TextChecks, ARequiredCodedFieldGoesByTheTextOnShowAndNotByItsCode) {
  for (const Walk walk : kAllWalks) {
    EXPECT_EQ(TextError(walk, RequiredCode("1"), ""), "性别 为必填项");
    EXPECT_EQ(TextError(walk, RequiredCode(environment::Value()), "某"), "");
    EXPECT_EQ(TextError(walk, RequiredCode(""), "某"), "");
  }
}

TEST(TextChecks, TheTextOfACodedFieldIsHeldAgainstTheLimitToo) {
  for (const Walk walk : kAllWalks) {
    EXPECT_EQ(TextError(walk, RequiredCode("1"), Characters(255)), "");
    EXPECT_EQ(TextError(walk, RequiredCode("1"), Characters(256)), "性别 数据应该小于256个字符长度");
  }
}

TEST(TextChecks, ABlankIsNotTrimmedAndFillsARequiredField) {
  EXPECT_EQ(TextError(Walk::kReplace, RequiredFieldOf("A0501", "varchar"), " "), "");
}

TEST(MaskedChecks, AVarcharMustBeFilledUp) {
  for (const char* type : {"varchar", "Varchar"}) {
    ExpectMasked(type, "######", "", "");
    ExpectMasked(type, "######", "210000", "");
    ExpectMasked(type, "######", "2100__", "起始 数据数据填写不完整");
    ExpectMasked(type, "######", "2_0000", "起始 数据数据填写不完整");
  }
}

TEST(MaskedChecks, RequiredAPartlyFilledDateIsNoDate) {
  for (const char* type : {"datetime", "Datetime"}) {
    ExpectMasked(type, kMonthMask, "", "");
    ExpectMasked(type, kMonthMask, "1990年03月", "");
    ExpectMasked(type, kMonthMask, "1990年__月", "起始 数据应该是日期型，例如1990年03月");
    ExpectMasked(type, kMonthMask, "1990年13月", "起始 数据应该是日期型，例如1990年03月");
  }
}

TEST(MaskedChecks, OtherTypesAreNotChecked) {
  for (const char* type : {"int", "ntext", "bit", "money", ""}) {
    ExpectMasked(type, "#####", "40000", "");
    ExpectMasked(type, "#####", "4____", "");
    ExpectMasked(type, "#####", "", "");
  }
}

TEST(MaskedChecks, PromptCharactersAloneCountAsEmpty) {
  for (const char* type : {"varchar", "datetime", "int", "ntext", "money"}) {
    for (const Walk walk : kAllWalks) {
      EXPECT_EQ(MaskedError(walk, RequiredFieldOf("A0501", type, "起始"), kMonthMask), "起始 为必填项")
          << type;
      EXPECT_EQ(MaskedError(walk, RequiredFieldOf("A0501", type, "起始"), kMonthMask, "1990年03月"), "")
          << type;
      EXPECT_EQ(MaskedError(walk, FieldOf("A0501", type, "起始"), kMonthMask), "") << type;
    }
  }
}

TEST(MaskedChecks, AnEmptyTextInABoxWithoutAMaskCountsAsEmpty) {
  EXPECT_EQ(MaskedError(Walk::kReplace, RequiredFieldOf("A0501", "varchar", "起始"), ""), "起始 为必填项");
  EXPECT_FALSE(IsFilled(*MaskedBox("")));
  EXPECT_FALSE(IsFilled(*MaskedBox(kMonthMask)));
  EXPECT_TRUE(IsFilled(*MaskedBox(kMonthMask, "1___年__月")));
}

// A message behind another one, which is "前 为必填项".
class LaterForm : public ::testing::Test {
 protected:
  LaterForm() { checks.CheckText(RequiredFieldOf("A0502", "varchar", "前"), ""); }
  RecordChecks checks{Walk::kReplace};
};

TEST_F(LaterForm, TheLengthMessageKeepsItsForm) {
  checks.CheckText(FieldOf("A0501", "varchar", "起始"), Characters(256));
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始 数据应该小于256个字符长度");
}

TEST_F(LaterForm, TheNumberMessageKeepsItsForm) {
  checks.CheckText(FieldOf("A0501", "int", "起始"), "x");
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始 数据应该输入数字");
}

TEST_F(LaterForm, RequiredTheDateMessageHasOneBlankMore) {
  checks.CheckText(FieldOf("A0501", "datetime", "起始"), "x");
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始  数据应该是日期型，例如1990年03月");
}

TEST_F(LaterForm, RequiredTheDateMessageOfAMaskedFieldHasOneBlankMore) {
  checks.CheckMasked(FieldOf("A0501", "datetime", "起始"), *MaskedBox(kMonthMask, "1990年__月"));
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始  数据应该是日期型，例如1990年03月");
}

TEST_F(LaterForm, RequiredTheRequiredMessageHasOneBlankMore) {
  checks.CheckText(RequiredFieldOf("A0501", "int", "起始"), "");
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始  为必填项");
}

TEST_F(LaterForm, RequiredTheRequiredMessageOfAMaskedFieldHasOneBlankMore) {
  checks.CheckMasked(RequiredFieldOf("A0501", "datetime", "起始"), *MaskedBox(kMonthMask));
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始  为必填项");
}

TEST_F(LaterForm, TheIncompleteMessageKeepsItsForm) {
  checks.CheckMasked(FieldOf("A0501", "varchar", "起始"), *MaskedBox("######", "21____"));
  EXPECT_EQ(checks.ErrorText(), "前 为必填项\r\n起始 数据数据填写不完整");
}

TEST_F(LaterForm, AGoodFieldAddsNoLine) {
  checks.CheckText(FieldOf("A0501", "varchar", "起始"), "x");
  EXPECT_EQ(checks.ErrorText(), "前 为必填项");
}

}  // namespace
}  // namespace dossierkit::tests
