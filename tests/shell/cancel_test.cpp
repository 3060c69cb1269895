// The command Cancel.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using CancelCommand = ShellTest;

const Message kCancelQuestion = {"数据已被修改并且未被保存，是否取消？", kYesOrNo, "人员维护"};

TEST_F(CancelCommand, WithoutEditsItReloadsWithoutAQuestion) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickRow(3);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Cancel"); }), kOpenA04);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CancelCommand, NoKeepsTheEdits) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerNo);
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Cancel"); }).empty());
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "理事");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Shown(), Messages{kCancelQuestion});
}

TEST_F(CancelCommand, RequiredYesAndThenNoDropsTheEdits) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerNo);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Cancel"); }), kOpenA04);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "副理事长");
  });
  EXPECT_EQ(Shown(), (Messages{kCancelQuestion, {"数据被修改且未保存，是否保存？", kYesOrNo, "人员维护"}}));
}

TEST_F(CancelCommand, RequiredYesAndThenYesSavesWhatWasToBeCancelled) {
  EXPECT_FALSE(visit.Open([&] {
    visit.GoTo("A12");
    visit.Text("A12_A1201").SetText("改");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerYes);
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Cancel"); }),
              Join({{"delete from A12 where A00='" + kPerson + "' ",
                     "insert into A12( A00 ,A1201) values('" + kPerson + "','改')"},
                    kOpenA12}));
    EXPECT_FALSE(visit.Window().IsSaved);
  }));
  EXPECT_EQ(Shown(), (Messages{kCancelQuestion, {kSaveEdits, kYesOrNo, kWindow}}));
  EXPECT_EQ(Value("select A1201 from A12 where A00='" + kPerson + "'"), "改");
}

TEST_F(CancelCommand, ASaveThatFailsThereKeepsThePage) {
  visit.Open([&] {
    visit.Text("A01_A0101").SetText("");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerYes);
    EXPECT_TRUE(During([&] { visit.user.ClickToolbar("Cancel"); }).empty());
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(Shown().back(), (Message{"姓名 为必填项", kOk, "错误信息"}));
}

TEST_F(CancelCommand, ANewRecordGivesWayToTheStoredOnes) {
  visit.Open([&] {
    visit.GoTo("A04");
    visit.user.ClickToolbar("Add");
    EXPECT_EQ(During([&] { visit.user.ClickToolbar("Cancel"); }), kOpenA04);
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
}

TEST_F(CancelCommand, RequiredANewPersonIsGivenAnotherIdAndAddIsEnabled) {
  visit.OpenNew([&] {
    const std::string first = visit.Window().personID;
    EXPECT_FALSE(visit.Enabled("Add"));
    const auto statements = During([&] { visit.user.ClickToolbar("Cancel"); });
    const std::string second = visit.Window().personID;
    EXPECT_NE(second, first);
    EXPECT_EQ(statements, (Statements{
                              "select count(A00) from a01 where a00 ='" + first + "'",
                              " select Property from s_infotable  where TblName ='A01'",
                              " select * from s_infoitem  where tblname ='A01'",
                              "select iif(orderfield is null , '',orderfield) as orderfield  from "
                              "s_infotable where tblname ='A01'  "
                              "and orderfield<>'' ",
                              "select count(*) from A01 where A00 ='" + first + "'",
                              " delete from S_GUID ",
                              "insert into S_GUID(val) values('a')",
                              "select id from S_GUID where val='a'",
                              " select * from s_infoitem  where tblname ='A01'",
                              "select * from A01 where a00 ='" + second + "'",
                              "select iif(tbldesc is null,'',tbldesc)  from s_infotable where tblname ='A01'",
                          }));
    EXPECT_EQ(State(), "当前操作：增加 on on off");
    EXPECT_EQ(visit.Window().DealType, 0);
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Value("select count(*) from A01"), "12");
}

TEST_F(CancelCommand, AReloadThatBeginsANewPersonEnablesAdd) {
  visit.Open([&] {
    Script("delete from A01 where A00='" + kPerson + "'");
    EXPECT_EQ(visit.Window().DealType, 3);
    visit.user.ClickToolbar("Cancel");
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(State(), "当前操作：增加 on on off");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CancelCommand, RequiredAReloadThatDoesNotComeAboutEnablesAddOfANewPersonToo) {
  visit.OpenNew([&] {
    const auto page = visit.Window().GetUserCtrl();
    visit.Text("A01_A0101").SetText("王新");
    Answer(toolkit::kAnswerYes);
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Cancel");
    EXPECT_EQ(visit.Window().GetUserCtrl(), page) << "the save failed, so that the page stayed";
    EXPECT_EQ(State(), "当前操作：增加 on on off");
  });
  EXPECT_EQ(Shown().size(), 3U);
}

TEST_F(CancelCommand, RequiredOfAPersonNotMarkedAsStoredAddIsEnabledInEverySet) {
  visit.component.OperationType = 0;
  visit.Open([&] {
    visit.GoTo("A12");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
    visit.user.ClickToolbar("Cancel");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA12");
    EXPECT_EQ(State(), "当前操作：修改 on on off");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CancelCommand, OfAStoredPersonAddStaysAsTheSetHasIt) {
  visit.Open([&] {
    visit.GoTo("A12");
    visit.user.ClickToolbar("Cancel");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
  });
}

TEST_F(CancelCommand, AFailureReachesTheHostAndWritesNothing) {
  const auto before = visit.database->Bytes();
  for (std::size_t k = 1; k <= kOpenA04.size(); ++k) {
    EXPECT_EQ(NumberOfFailure([&] {
                visit.Open([&] {
                  visit.GoTo("A04");
                  visit.failing->FailAt(k);
                  visit.user.ClickToolbar("Cancel");
                });
              }),
              environment::kEngineFailure);
    EXPECT_FALSE(visit.Window().InVisit());
  }
  EXPECT_EQ(visit.database->Bytes(), before);
}

}  // namespace
}  // namespace dossierkit::tests
