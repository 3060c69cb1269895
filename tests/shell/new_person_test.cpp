// The entry of a new person.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using NewPerson = ShellTest;

const std::string kOther = "56670B14-1509-4B0A-8BF1-3331CA118783";

// Types the fields without which a person is not stored.
void FillRequired(Visit& visit) {
  visit.Text("A01_A0101").SetText("王新");
  visit.Masked("A01_A0104").SetText("1980年05月06日");
  visit.Text("A01_A0131").SetText("110101198005060011");
  for (const char* field : {"A01_A0110", "A01_A0115"}) visit.Text(field).SetText("某");
  visit.EnterCode("A01_A0102", "1");
  visit.EnterCode("A01_A0103", "01");
  visit.EnterCode("A01_A0106", "11");
}

TEST_F(NewPerson, GetsAnIdOfThirtySixCharacters) {
  visit.component.personID = "given by the host";
  visit.component.OperationType = 0;
  visit.Open([&] {
    EXPECT_EQ(visit.Window().personID.size(), 36u);
    EXPECT_EQ(visit.Window().personID.find_first_of("{}"), std::string::npos);
    EXPECT_EQ("{" + visit.Window().personID + "}", Value("select id from S_GUID"));
    const auto& info = visit.OnShow().WhInfo();
    EXPECT_EQ(info.personID, visit.Window().personID);
    EXPECT_EQ(info.TabId, "A01");
    EXPECT_EQ(info.id, 0);
    EXPECT_FALSE(info.IsMult);
    EXPECT_FALSE(info.IsChange);
  });
  EXPECT_EQ(visit.component.personID, "given by the host");
}

TEST_F(NewPerson, AnIdThatIsNeverSavedLeavesNoRow) {
  visit.OpenNew([] {});
  EXPECT_EQ(Value("select count(*) from A01"), "12");
  EXPECT_EQ(Value("select count(*) from S_GUID"), "1");
}

TEST_F(NewPerson, AddOnAStoredPersonForgetsHim) {
  visit.Open([&] {
    visit.user.ClickToolbar("Add");
    EXPECT_NE(visit.Window().personID, kPerson);
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Caption("labPersonName"), "");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
  EXPECT_EQ(Value("select A0101 from A01 where A00='" + kPerson + "'"), "陆怀谷");
}

TEST_F(NewPerson, TheExtraItemIsNamedAgainAndTheSelectionStays) {
  visit.Open([&] {
    auto& menu = visit.Window().VMenu1();
    menu.set_menuitemcur(16);
    menu.set_menuitemkey("gone");
    menu.set_menuitemcaption("gone");
    menu.set_menuitemcur(1);
    visit.Window().PersonType = 2;
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(menu.Items()[15].key, "B02");
    EXPECT_EQ(menu.Items()[15].caption, "个人自荐情况");
    EXPECT_EQ(menu.menuitemcur(), 1);
  });
}

TEST_F(NewPerson, AnyOtherPersonTypeLeavesTheExtraItem) {
  visit.component.PersonType = 0;
  visit.Open([&] {
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(visit.Window().VMenu1().Items()[15].key, "");
    EXPECT_EQ(visit.Window().VMenu1().Items()[15].caption, "Item16");
  });
}

TEST_F(NewPerson, RequiredEvenInASetOfManyRecordsHeIsNumberZeroOfOne) {
  Script("update s_infotable set Property = 0 where tblname = 'A01'");
  visit.Open([&] {
    EXPECT_TRUE(visit.OnShow().WhInfo().IsMult);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    visit.user.ClickToolbar("Add");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsMult);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 0);
    EXPECT_EQ(visit.OnShow().WhInfo().TabId, "A01");
    EXPECT_EQ(visit.OnShow().WhInfo().personID, visit.Window().personID);
  });
}

TEST_F(NewPerson, NoCodeOfTheFormerPersonIsLeftToBeSaved) {
  visit.Open([&] {
    EXPECT_EQ(visit.OnShow().FieldItems()->Item("A01_A0114")->Dmcod, environment::Value("320481"));
    visit.user.ClickToolbar("Add");
    for (const auto& item : *visit.OnShow().FieldItems()) {
      EXPECT_TRUE(item->Dmcod.IsUnset()) << item->ItemName;
      EXPECT_EQ(item->Dmcpt, "") << item->ItemName;
    }
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Rows(*visit.database, "select A0114,A0105,A0107,A0113 from A01 where A0101='王新'"),
            Statements{"|||"});
}

TEST_F(NewPerson, ThePersonCountsAsStoredUntilTheBlankFormWasRead) {
  EXPECT_EQ(NumberOfFailure([&] {
              visit.Open([&] {
                // The three statements of the identifier, then the metadata.
                visit.failing->FailAt(4);
                visit.user.ClickToolbar("Add");
              });
            }),
            environment::kEngineFailure);
  EXPECT_EQ(visit.statements.back(), " select * from s_infoitem  where tblname ='A01'");
  EXPECT_EQ(visit.Window().DealType, 3);
  EXPECT_NE(visit.Window().personID, kPerson);
}

TEST_F(NewPerson, TheFirstSaveInsertsThePerson) {
  EXPECT_TRUE(visit.OpenNew([&] {
    const std::string id = visit.Window().personID;
    FillRequired(visit);
    const auto statements = During([&] { visit.user.ClickToolbar("Save"); });
    ASSERT_GE(statements.size(), 3u) << (Shown().empty() ? "" : Shown().back().text);
    EXPECT_EQ(Statements(statements.begin(), statements.begin() + 7),
              (Statements{
                  "select iif(max(A0199) is null,0,max(A0199)) from a01  ",
                  "insert into A01( A00 "
                  ",A0136,A0199,A0101,A0102,A0103,A0114,A0104,A0105,A0106,A0107,A0140,A0109,A0110,"
                  "A0115,A0113,A0121,A0117,A0118,A0119,A0120,A0112,A0122,A0123,A0124,A0125,A0128,A0129,A0127,"
                  "A0131) "
                  "values('" +
                      id +
                      "',1 ,13,'王新','1','01','','1980年05月06日','','11','','','','某','某','','','','','',"
                      "'','','','','','','','','','110101198005060011')",
                  "select iif(a0101 is null,'',a0101) from a01 where a00='" + id + "'",
                  "select count(A00) from a01 where a00 ='" + id + "'",
                  " select Property from s_infotable  where TblName ='A01'",
                  " select * from s_infoitem  where tblname ='A01'",
                  "select * from A01 where a00 ='" + id + "'",
              }));
    EXPECT_EQ(visit.Window().DealType, 3);
    EXPECT_EQ(visit.Caption("labPersonName"), "王新");
    // Required of the basic set: no new record opens by itself.
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    visit.GoTo("A02");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA02");
  }));
  EXPECT_EQ(Value("select A0136 from A01 where A0101='王新'"), "1");
  EXPECT_TRUE(Shown().empty());
}

TEST_F(NewPerson, RequiredAPersonStoredByAQuestionIsNotMarkedAsStored) {
  EXPECT_FALSE(visit.OpenNew([&] {
    FillRequired(visit);
    Answer(toolkit::kAnswerYes);
    visit.GoTo("A12");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA12");
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    visit.GoTo("A01");
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    EXPECT_EQ(visit.Caption("labPersonName"), "王新");
  }));
  EXPECT_EQ(Value("select count(*) from A01 where A0101='王新'"), "1");
}

TEST_F(NewPerson, RequiredAPersonStoredByAQuestionIsStoredTwiceByTheToolbar) {
  visit.OpenNew([&] {
    FillRequired(visit);
    Answer(toolkit::kAnswerYes);
    visit.GoTo("A01");
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
    visit.GoTo("A02");
  });
  EXPECT_EQ(Value("select count(*) from A01 where A0101='王新'"), "2");
  EXPECT_EQ(Shown().back(), (Message{kBasicFirst, kOk, kWindow}));
}

TEST_F(NewPerson, RequiredATableAtTheHighestRunningNumberTakesNoPerson) {
  Script("update A01 set A0199 = 32767 where A00='" + kOther + "'");
  EXPECT_FALSE(visit.OpenNew([&] {
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Window().DealType, 0);
  }));
  EXPECT_EQ(Shown(), (Messages{{"溢出", kOk, "信息保存"}}));
  EXPECT_EQ(Value("select count(*) from A01"), "12");
}

TEST_F(NewPerson, TwoPersonsInOneVisit) {
  EXPECT_TRUE(visit.OpenNew([&] {
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
    const std::string first = visit.Window().personID;
    visit.user.ClickToolbar("Add");
    EXPECT_NE(visit.Window().personID, first);
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(visit.Caption("labPersonName"), "");
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.Window().DealType, 3);
  }));
  EXPECT_EQ(Column(*visit.database, "select A0199 from A01 where A0101='王新' order by A0199"),
            (Statements{"13", "14"}));
}

TEST_F(NewPerson, RequiredTheHostIsNotToldTheIdAndReadsItFromTheTable) {
  visit.component.personID = "given by the host";
  visit.component.OperationType = 0;
  std::string id;
  EXPECT_TRUE(visit.Open([&] {
    id = visit.Window().personID;
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
  }));
  EXPECT_EQ(visit.component.personID, "given by the host");
  EXPECT_EQ(Value("select A00 from A01 where A0199 = (select max(A0199) from A01)"), id);
}

TEST_F(NewPerson, RequiredOperationType0WithAStoredIdDoublesThePersonWithASaveOnA01) {
  visit.component.OperationType = 0;
  EXPECT_TRUE(visit.Open([&] {
    EXPECT_EQ(visit.Window().personID, kPerson);
    FillRequired(visit);
    visit.user.ClickToolbar("Save");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01");
  }));
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Column(*visit.database, "select A0101 from A01 where A00='" + kPerson + "' order by A0199"),
            (Statements{"陆怀谷", "王新"}));
  // He can never be opened again.
  visit.component.OperationType = 3;
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
}

}  // namespace
}  // namespace dossierkit::tests
