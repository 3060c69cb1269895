// The states of the window, their toolbar, and the ways between them. A state is told as the caption
// of the operation, then whether the page's frame, "Add" and "Delete" are enabled.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using WindowStates = ShellTest;

TEST_F(WindowStates, StoredBasicSetOrSetOfMany) {
  visit.Open([&] {
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    visit.GoTo("A09");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
}

TEST_F(WindowStates, StoredOtherSingleSet) {
  visit.Open([&] {
    visit.GoTo("A13");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
    visit.GoTo("B01");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
  });
}

TEST_F(WindowStates, EmptyHasItsFrameDisabledUntilAddHasRun) {
  Script("delete from A04 where A00='" + kPerson + "'");
  std::string passing;
  visit.component.SetConnection(std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace&
                                                                                                trace) {
    if (trace.statement ==
        "select iif(maxnumber is null,0,maxnumber) as maxnumber from  s_infotable  where tblname ='A04'") {
      passing = State();
    }
  }));
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
  EXPECT_EQ(passing, " off on on");
}

TEST_F(WindowStates, EmptyOfAnotherSingleSetHasItsButtonsDisabled) {
  Script("delete from A12 where A00='" + kPerson + "'");
  std::string passing;
  int counted = 0;
  visit.component.SetConnection(
      std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace& trace) {
        // The metadata is read once for the page and once for the new record.
        if (trace.statement == " select * from s_infoitem  where tblname ='A12'" && ++counted == 2)
          passing = State();
      }));
  visit.Open([&] { visit.GoTo("A12"); });
  EXPECT_EQ(passing, " off off off");
}

TEST_F(WindowStates, StoredToNewByAdd) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
}

TEST_F(WindowStates, NewToStoredByAClickOnTheMenu) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    visit.GoTo("A04");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
}

TEST_F(WindowStates, NewToStoredByAMoveInTheList) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(During([&] { visit.user.ClickRow(2); }), MoveA04("2"));
    // Required: the caption that a move writes ends in a blank.
    EXPECT_EQ(State(), "当前操作：修改  on on on");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 2);
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(During([&] { visit.user.ClickRow(2); }), MoveA04("2")) << "also on the row of the cursor";
    EXPECT_EQ(State(), "当前操作：修改  on on on");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(WindowStates, AMoveInTheListReadsTheRecordByItsNumber) {
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_EQ(During([&] { visit.user.ClickRow(3); }), MoveA04("3"));
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "江淮省农作物品种审定委员会");
    EXPECT_EQ(During([&] { visit.user.Press(188, toolkit::kCtrl); }), MoveA04("2"));
    EXPECT_EQ(During([&] { visit.user.Press(190, toolkit::kCtrl); }), MoveA04("3"));
  });
}

TEST_F(WindowStates, NewOfAnotherSingleSetToStoredBySave) {
  Script("delete from A13 where A00='" + kPerson + "'");
  visit.Open([&] {
    visit.GoTo("A13");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
  });
}

TEST_F(WindowStates, NewOfManyToNewAgainBySave) {
  visit.Open([&] {
    visit.GoTo("A03");
    visit.user.ClickToolbar("Add");
    visit.Masked("A03_A0301").SetText("2020年01月");
    visit.Text("A03_A0302").SetText("某");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    EXPECT_EQ(visit.OnShow().AdodcRs()->RecordCount(), 6);
  });
}

TEST_F(WindowStates, StoredToStoredByDeleteWhileRecordsRemain) {
  visit.Open([&] {
    visit.GoTo("A04");
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Delete");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
}

// --- the working mode ----------------------------------------------------------------------------------

TEST_F(WindowStates, TheModeGoesFromThreeToNoughtWithANewPersonAndBackWithASave) {
  visit.Open([&] {
    EXPECT_EQ(visit.Window().DealType, 3);
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(visit.Window().DealType, 0);
    visit.user.ClickToolbar("Cancel");
    EXPECT_EQ(visit.Window().DealType, 0);
  });
}

TEST_F(WindowStates, AFailedSaveDoesNotChangeTheMode) {
  visit.OpenNew([&] {
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_FALSE(visit.Window().IsSaved);
  });
  EXPECT_EQ(Shown().size(), 1u);
}

TEST_F(WindowStates, OnlyTheToolbarsSaveGivesModeThree) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    EXPECT_EQ(visit.Window().DealType, 0);
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("一");
    Answer(toolkit::kAnswerYes);
    visit.GoTo("A12");
    EXPECT_EQ(visit.Window().DealType, 0);
    visit.Text("A12_A1201").SetText("二");
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.Window().DealType, 3);
    EXPECT_EQ(visit.Text("A12_A1201").Text(), "二");
  });
}

// --- what is kept although it looks wrong --------------------------------------------------------------

TEST_F(WindowStates, RequiredAfterADeleteTheFieldsHoldRecordOneWhateverIsOnShow) {
  const std::string other = "56670B14-1509-4B0A-8BF1-3331CA118783";
  Script("delete from A03 where A00 not in ('" + kPerson + "','" + other + "')");
  visit.Open([&] {
    visit.GoTo("A03");
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Delete");
    // Other persons' rows are counted, so that no record of this one has the number 1.
    ASSERT_GT(visit.OnShow().WhInfo().id, 1);
    EXPECT_NE(visit.Text("A03_A0304").Text(), "");
    EXPECT_EQ(visit.OnShow().FieldItems()->Item("A03_A0304")->Dmcod, environment::Value());
    // So a save that leaves the coded fields alone writes them empty.
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Column(*visit.database, "select A0304 from A03 where A00='" + kPerson + "' order by A0301")[0],
            "");
}

TEST_F(WindowStates, RequiredAStoredIdOpenedAsANewPersonLosesItsCodesOnSave) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    visit.GoTo("A03");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Value("select A0304 from A03 where A00='" + kPerson + "' and A0399=1"), "");
  EXPECT_NE(Value("select A0304 from A03 where A00='" + kPerson + "' and A0399=2"), "");
}

TEST_F(WindowStates, RequiredAtTheLimitEnterInALastFieldTellsTheLimitTwice) {
  Script("update s_infotable set maxnumber = 5 where tblname = 'A03'");
  visit.Open([&] {
    visit.GoTo("A03");
    visit.Text("A03_A0303").SetFocus();
    visit.Text("A03_A0302").SetText("某");
    visit.user.Press(toolkit::kKeyReturn);
  });
  EXPECT_EQ(Shown(), (Messages{{"此信息集最多只能录入5条记录。", kOk, kWindow},
                               {"此信息集最多只能录入5条记录。", kOk, kWindow}}));
}

}  // namespace
}  // namespace dossierkit::tests
