// The limits on the number of records.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

class Limits : public ShellTest {
 protected:
  static cWhInfo Info(const std::string& set, bool multiple) {
    cWhInfo info;
    info.TabId = set;
    info.personID = kPerson;
    info.IsMult = multiple;
    return info;
  }
  void SetLimit(const std::string& limit) {
    Script("update s_infotable set maxnumber = " + limit + " where tblname = 'A04'");
  }
};

TEST_F(Limits, OneBelowTheLimitARecordMayBeMade) {
  visit.Open([&] {
    const auto statements = During([&] { EXPECT_EQ(visit.Window().IsMaxNumber(Info("A04", true)), 0); });
    EXPECT_EQ(
        statements,
        (Statements{
            "select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='A04'",
            "select count(*) from A04 where a00='" + kPerson + "'"}));
  });
}

TEST_F(Limits, AtTheLimitTheLimitIsTheAnswer) {
  visit.Open([&] {
    SetLimit("4");
    EXPECT_EQ(visit.Window().IsMaxNumber(Info("A04", true)), 4);
    SetLimit("3");
    EXPECT_EQ(visit.Window().IsMaxNumber(Info("A04", true)), 3);
  });
}

TEST_F(Limits, NullZeroAndBelowMeanNoLimitAndCountNothing) {
  visit.Open([&] {
    for (const char* limit : {"null", "0", "-1"}) {
      SetLimit(limit);
      const auto statements = During([&] { EXPECT_EQ(visit.Window().IsMaxNumber(Info("A04", true)), 0); });
      EXPECT_EQ(statements, (Statements{"select iif(maxnumber is null,0,maxnumber) as maxnumber from  "
                                        "s_infotable  where tblname ='A04'"}));
    }
  });
}

TEST_F(Limits, ASingleSetHasNoneAndIsNotLookedUp) {
  visit.Open([&] {
    EXPECT_TRUE(During([&] {
                  EXPECT_EQ(visit.Window().IsMaxNumber(Info("A12", false)), 0);
                  EXPECT_EQ(visit.Window().IsMaxNumber_Save(Info("A12", false)), 0);
                }).empty());
  });
}

TEST_F(Limits, RequiredRowsNotAboveZeroCountToo) {
  visit.Open([&] {
    SetLimit("4");
    Script("update A04 set A0499 = 0 where A00 = '" + kPerson + "'");
    EXPECT_EQ(visit.Window().IsMaxNumber(Info("A04", true)), 4);
  });
}

TEST_F(Limits, RequiredBeforeASaveAStoredPersonHasNoLimitThoughItIsLookedUp) {
  visit.Open([&] {
    SetLimit("4");
    const auto statements = During([&] { EXPECT_EQ(visit.Window().IsMaxNumber_Save(Info("A04", true)), 0); });
    EXPECT_EQ(statements, kLimitA04);
  });
}

TEST_F(Limits, BeforeASaveAPersonNotMarkedAsStoredHasTheLimit) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    SetLimit("4");
    EXPECT_EQ(visit.Window().IsMaxNumber_Save(Info("A04", true)), 4);
    SetLimit("5");
    EXPECT_EQ(visit.Window().IsMaxNumber_Save(Info("A04", true)), 0);
  });
}

TEST_F(Limits, RequiredAddAtTheLimitTellsItAndForgetsTheMarkOfEdits) {
  SetLimit("4");
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    ASSERT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Add"); }), kLimitA04);
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "理事");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    visit.GoTo("A01");
  });
  EXPECT_EQ(Shown(), (Messages{{"此信息集最多只能录入4条记录。", kOk, "人员维护"}}));
  EXPECT_EQ(Value("select A0404 from A04 where A00='" + kPerson + "' and A0499=1"), "副理事长");
}

TEST_F(Limits, RequiredSaveAtTheLimitBeforeThePersonIsMarkedAsStoredForgetsTheMarkOfEdits) {
  SetLimit("4");
  visit.component.OperationType = 0;
  EXPECT_FALSE(visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Save"); }), kLimitA04);
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "理事");
    EXPECT_EQ(visit.Window().DealType, 0);
  }));
  EXPECT_EQ(Shown(), (Messages{{"此信息集最多只能录入4条记录。", kOk, "人员维护"}}));
}

TEST_F(Limits, SaveOfTheLastAllowedRecordTellsTheLimitOnceAfterTheSave) {
  EXPECT_TRUE(visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    visit.user.Type("202001");
    visit.Text("A04_A0403").SetText("学会");
    visit.Text("A04_A0404").SetText("理事");
    visit.script.on_message = [&](const Message&) {
      EXPECT_EQ(Value("select count(*) from A04 where A00='" + kPerson + "'"), "5");
    };
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  }));
  EXPECT_EQ(Shown(), (Messages{{"此信息集最多只能录入5条记录。", kOk, "人员维护"}}));
}

TEST_F(Limits, ALimitBeyondSixteenBitsOverflows) {
  visit.Open([&] {
    SetLimit("32768");
    EXPECT_EQ(NumberOfFailure([&] { visit.Window().IsMaxNumber(Info("A04", true)); }),
              environment::kOverflow);
  });
}

}  // namespace
}  // namespace dossierkit::tests
