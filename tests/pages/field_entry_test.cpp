// The check of a plain field when the focus leaves it.
#include "tests/pages/entry_test.h"

namespace dossierkit::tests {
namespace {

using toolkit::kAnswerNo;
using toolkit::kAnswerYes;
using toolkit::kCtrl;

using FieldEntry = EntryTest;

const std::string kError = "错误信息";

// --- whether it is checked -----------------------------------------------------------------------

TEST_F(FieldEntry, AnUnchangedRecordIsNotChecked) {
  Script("update A01 set A0131='1',A0119='2',A0117='21',A0104='1700-01-01',A0102='x' where A00='" + kPerson +
         "'");
  Open([&] {
    EXPECT_TRUE(During([&] {
                  for (int i = 0; i < 40; ++i) visit.user.Tab();
                  for (int i = 0; i < 40; ++i) visit.user.BackTab();
                }).empty());
    EXPECT_EQ(visit.Focus(), "A01_A0101_v");
    EXPECT_EQ(visit.Text("A01_A0131").Text(), "1");
    EXPECT_EQ(visit.Masked("A01_A0117").Text(), "21____");
    EXPECT_FALSE(Changed());
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FieldEntry, AnEditOfOneFieldHasAllOthersCheckedOnLeaving) {
  Script("update A01 set A0119='2' where A00='" + kPerson + "'");
  Open([&] {
    EnterAndLeave("A01_A0101", "新名");
    EXPECT_TRUE(Shown().empty());
    visit.Text("A01_A0119").SetFocus();
    visit.user.Tab();
    EXPECT_EQ(visit.Focus(), "A01_A0119_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"手机号码长度应该为11位。", 0, kError}}));
}

// --- dates ---------------------------------------------------------------------------------------

TEST_F(FieldEntry, ABlankMaskPassesWhateverItsRule) {
  Script("update s_infoitem set \"Check\"='L 99' where itemname in ('A0104','A0117')");
  Open([&] {
    EnterAndLeave("A01_A0104", "");
    EXPECT_EQ(visit.Masked("A01_A0104").Text(), "____年__月__日");
    EXPECT_EQ(visit.Focus(), "A01_A0105_v");
    EnterAndLeave("A01_A0117", "");
    EXPECT_EQ(visit.Focus(), "A01_A0118_v");
    EXPECT_TRUE(Changed());
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FieldEntry, AMaskedFieldWithACodeTableIsCheckedByItsRuleAndNeverLookedUp) {
  Script("update s_infoitem set CodeTable='GB2261', \"Check\"='L 5' where itemname='A0117'");
  Open([&] {
    EXPECT_TRUE(During([&] { EnterAndLeave("A01_A0117", "210001"); }).empty());
    EXPECT_EQ(visit.Focus(), "A01_A0117_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"邮政编码长度应该为5位。", 0, kError}}));
}

TEST_F(FieldEntry, ADateThatIsNoneKeepsTheFocusAndTheText) {
  for (const auto& [typed, text] :
       std::vector<std::pair<std::string, std::string>>{{"1968", "1968年__月__日"},
                                                        {"196803", "1968年03月__日"},
                                                        {"19680230", "1968年02月30日"},
                                                        {"19681301", "1968年13月01日"},
                                                        {"1", "1___年__月__日"}}) {
    visit.script.messages.clear();
    Open([&, digits = typed, shown = text] {
      EnterAndLeave("A01_A0104", digits);
      EXPECT_EQ(visit.Focus(), "A01_A0104_v");
      EXPECT_EQ(visit.Masked("A01_A0104").Text(), shown);
      EXPECT_EQ(Item("A01_A0104"), "1968/3/12|");
    });
    EXPECT_EQ(Shown(), (Messages{{"出生日期录入数据不规范！", 0, kError}})) << typed;
  }
}

TEST_F(FieldEntry, AMonthMaskWithoutAMonthIsNoDate) {
  Open([&] {
    EnterAndLeave("A01_A0108", "1990");
    EXPECT_EQ(visit.Focus(), "A01_A0108_v");
    EXPECT_EQ(visit.Masked("A01_A0108").Text(), "1990年__月");
  });
  EXPECT_EQ(Shown(), (Messages{{"毕业时间录入数据不规范！", 0, kError}}));
}

TEST_F(FieldEntry, SingleDigitsBecomeTwo) {
  Open([&] {
    EnterAndLeave("A01_A0108", "19903");
    EXPECT_EQ(visit.Masked("A01_A0108").Text(), "1990年03月");
    EXPECT_EQ(visit.Focus(), "A01_A0109_v");
    visit.Masked("A01_A0104").SetFocus();
    visit.Masked("A01_A0104").SetText("1968年3_月5_日");
    visit.user.Tab();
    EXPECT_EQ(visit.Masked("A01_A0104").Text(), "1968年03月05日");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FieldEntry, AGapBeforeADigitIsTakenAwayToo) {
  Open([&] {
    visit.Masked("A01_A0108").SetFocus();
    visit.Masked("A01_A0108").SetText("1990年_3月");
    visit.user.Tab();
    EXPECT_EQ(visit.Masked("A01_A0108").Text(), "1990年03月");
    EXPECT_EQ(visit.Focus(), "A01_A0109_v");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FieldEntry, ADateBeyondItsBoundsKeepsTheFocus) {
  Open([&] {
    EnterAndLeave("A01_A0104", "18991231");
    EXPECT_EQ(visit.Focus(), "A01_A0104_v");
    EXPECT_EQ(visit.Masked("A01_A0104").Text(), "1899年12月31日");
    EnterAndLeave("A01_A0104", "20261122");
    EXPECT_EQ(visit.Focus(), "A01_A0104_v");
    EnterAndLeave("A01_A0104", "20261121");
    EXPECT_EQ(visit.Focus(), "A01_A0105_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"出生日期应该在1900-01-01至2026-11-21之间。", 0, kError},
                               {"出生日期应该在1900-01-01至2026-11-21之间。", 0, kError}}));
}

TEST_F(FieldEntry, ADateThatFailsItsRuleIsShownReformatted) {
  Open([&] {
    visit.Masked("A01_A0108").SetFocus();
    visit.Masked("A01_A0108").SetText("1800年3_月");
    visit.user.Tab();
    EXPECT_EQ(visit.Masked("A01_A0108").Text(), "1800年03月");
    EXPECT_EQ(visit.Focus(), "A01_A0108_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"毕业时间应该在1900-01至2026-11之间。", 0, kError}}));
}

TEST_F(FieldEntry, TheTypeOfADateIsComparedInSmallLetters) {
  Script("update s_infoitem set FieldType='DateTime' where itemname='A0108'");
  Open([&] {
    EnterAndLeave("A01_A0108", "19903");
    EXPECT_EQ(visit.Masked("A01_A0108").Text(), "1990年03月");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FieldEntry, RequiredAStyleWithPointsRefusesThePresentYear) {
  Script("update s_infoitem set style='yyyy.mm',\"Check\"='B 1900.01,2050.12' where itemname='A0108'");
  Open([&] {
    EnterAndLeave("A01_A0108", "202605");
    EXPECT_EQ(visit.Focus(), "A01_A0108_v");
    EnterAndLeave("A01_A0108", "202512");
    EXPECT_EQ(visit.Focus(), "A01_A0109_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"毕业时间应该在1900.01至2026-11之间。", 0, kError}}));
}

// --- other masks ---------------------------------------------------------------------------------

TEST_F(FieldEntry, AMaskThatIsNotFullKeepsTheFocus) {
  Open([&] {
    EnterAndLeave("A01_A0117", "21");
    EXPECT_EQ(visit.Focus(), "A01_A0117_v");
    EXPECT_EQ(visit.Masked("A01_A0117").Text(), "21____");
    EnterAndLeave("A01_A0117", "210001");
    EXPECT_EQ(visit.Focus(), "A01_A0118_v");
    EXPECT_EQ(visit.Masked("A01_A0117").Text(), "210001");
  });
  EXPECT_EQ(Shown(), (Messages{{"邮政编码录入数据不规范！", 0, kError}}));
}

TEST_F(FieldEntry, AMaskWithAGapIsNotFull) {
  Open([&] {
    visit.Masked("A01_A0117").SetFocus();
    visit.Masked("A01_A0117").SetText("21_001");
    visit.user.Tab();
    EXPECT_EQ(visit.Focus(), "A01_A0117_v");
    EXPECT_EQ(visit.Masked("A01_A0117").Text(), "21_001");
  });
  EXPECT_EQ(Shown(), (Messages{{"邮政编码录入数据不规范！", 0, kError}}));
}

TEST_F(FieldEntry, AFullMaskIsHeldAgainstItsRule) {
  Script("update s_infoitem set \"Check\"='L 5' where itemname='A0117'");
  Open([&] {
    EnterAndLeave("A01_A0117", "210001");
    EXPECT_EQ(visit.Focus(), "A01_A0117_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"邮政编码长度应该为5位。", 0, kError}}));
}

TEST_F(FieldEntry, RequiredTheYearOfAMaskMayBeThePresentOne) {
  Script("update s_infoitem set style='yyyy',\"Check\"='B 1900,2000' where itemname='A0907'");
  Open([&] {
    visit.GoTo("A09");
    EnterAndLeave("A09_A0907", "2026");
    EXPECT_EQ(visit.Focus(), "A09_A0908_v");
    EnterAndLeave("A09_A0907", "2027");
    EXPECT_EQ(visit.Focus(), "A09_A0907_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"年份应该在1900至2026之间。", 0, kError}}));
}

// --- texts ---------------------------------------------------------------------------------------

TEST_F(FieldEntry, ATextThatBreaksItsRuleKeepsTheFocusAndTheText) {
  Open([&] {
    EnterAndLeave("A01_A0131", "123456789012");
    EXPECT_EQ(visit.Focus(), "A01_A0131_v");
    EXPECT_EQ(visit.Text("A01_A0131").Text(), "123456789012");
    EXPECT_EQ(Item("A01_A0131"), "320481196803120316|");
    EXPECT_TRUE(Changed());
  });
  EXPECT_EQ(Shown(), (Messages{{"身份证号长度应该为15或18位。", 0, kError}}));
}

TEST_F(FieldEntry, ACorrectedTextLetsTheFocusGo) {
  Open([&] {
    EnterAndLeave("A01_A0119", "1");
    EXPECT_EQ(visit.Focus(), "A01_A0119_v");
    EnterAndLeave("A01_A0119", "13000000000");
    EXPECT_EQ(visit.Focus(), "A01_A0120_v");
  });
  EXPECT_EQ(Shown().size(), 1U);
}

TEST_F(FieldEntry, ADateInAPlainTextIsHeldAgainstItsRule) {
  Script(
      "update s_infoitem set FieldType='datetime',style='yyyy-mm',\"Check\"='B 1900-01,2050-12' "
      "where itemname='A0119'");
  Open([&] {
    EnterAndLeave("A01_A0119", "1800-01");
    EXPECT_EQ(visit.Focus(), "A01_A0119_v");
    EnterAndLeave("A01_A0119", "2001-01");
    EXPECT_EQ(visit.Focus(), "A01_A0120_v");
  });
  EXPECT_EQ(Shown(), (Messages{{"手机号码应该在1900-01至2026-11之间。", 0, kError}}));
}

TEST_F(FieldEntry, BlanksAreNoEmptyText) {
  Open([&] {
    EnterAndLeave("A01_A0119", "  ");
    EXPECT_EQ(visit.Focus(), "A01_A0119_v");
    EXPECT_EQ(Item("A01_A0119"), "10000000001|");
  });
  EXPECT_EQ(Shown(), (Messages{{"手机号码长度应该为11位。", 0, kError}}));
}

TEST_F(FieldEntry, AnEmptyTextPassesAndEmptiesItsItem) {
  Open([&] {
    EXPECT_TRUE(During([&] { EnterAndLeave("A01_A0119", ""); }).empty());
    EXPECT_EQ(visit.Focus(), "A01_A0120_v");
    EXPECT_EQ(Item("A01_A0119"), "|");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(FieldEntry, APassingTextLeavesTheItemAlone) {
  Open([&] {
    EnterAndLeave("A01_A0119", "13000000000");
    EXPECT_EQ(Item("A01_A0119"), "10000000001|");
  });
}

TEST_F(FieldEntry, RequiredARuleThatCannotBeReadEndsTheVisit) {
  for (const auto& [check, number] : std::vector<std::pair<std::string, int>>{{"L x", 13}, {"B 1", 9}}) {
    Script("update s_infoitem set \"Check\"='" + check + "' where itemname='A0119'");
    EXPECT_EQ(NumberOfFailure([&] { Open([&] { EnterAndLeave("A01_A0119", "1"); }); }), number) << check;
    EXPECT_FALSE(visit.Window().Loaded());
  }
  EXPECT_TRUE(Shown().empty());
}

// --- the ways of leaving -------------------------------------------------------------------------

TEST_F(FieldEntry, EveryWayOfLeavingIsChecked) {
  const std::vector<std::function<void()>> ways = {
      [&] { visit.user.Tab(); },
      [&] { visit.user.BackTab(); },
      [&] { visit.user.Click("A04_A0403_v"); },
      [&] { visit.user.ClickRow(2); },
      [&] { visit.GoTo("A12"); },
      [&] { visit.user.Press(toolkit::kKeyReturn); },
      [&] { visit.user.ClickToolbar("Add"); },
      [&] { visit.user.ClickToolbar("Save"); },
  };
  for (std::size_t i = 0; i < ways.size(); ++i) {
    SCOPED_TRACE(i);
    visit.script.messages.clear();
    Open([&] {
      visit.GoTo("A04");
      Enter("A04_A0401", "199013");
      EXPECT_TRUE(During(ways[i]).empty());
      EXPECT_EQ(visit.Focus(), "A04_A0401_v");
      EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA04");
      EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
      EXPECT_EQ(visit.Masked("A04_A0401").Text(), "1990年13月");
      EXPECT_TRUE(Changed());
    });
    EXPECT_EQ(Shown(), (Messages{{"起始年月录入数据不规范！", 0, kError}}));
  }
}

TEST_F(FieldEntry, DeleteCancelAndExitLeaveABadValueBehind) {
  Open([&] {
    visit.GoTo("A04");
    Enter("A04_A0401", "199013");
    visit.script.WillAnswer(kAnswerNo);
    visit.user.ClickToolbar("Delete");
    EXPECT_EQ(visit.Messages(), (Statements{"是否删除此条记录？"}));
    visit.script.WillAnswer(kAnswerYes);
    visit.script.WillAnswer(kAnswerNo);
    visit.user.ClickToolbar("Cancel");
    EXPECT_FALSE(Changed());
    Enter("A04_A0401", "199013");
    visit.script.WillAnswer(kAnswerNo);
    visit.user.ClickToolbar("Exit");
    EXPECT_TRUE(visit.Window().LoopEnded());
  });
  for (const auto& message : Shown()) EXPECT_NE(message.title, kError) << message.text;
}

TEST_F(FieldEntry, RequiredTheShortCutOfSaveDoesNotLookAtTheBoundsOfTheField) {
  Open([&] {
    visit.GoTo("A04");
    Enter("A04_A0401", "180001");
    visit.user.Press('S', kCtrl);
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Value("select count(*) from A04 where A0401='1800-01-01' and A00='" + kPerson + "'"), "1");
}

}  // namespace
}  // namespace dossierkit::tests
