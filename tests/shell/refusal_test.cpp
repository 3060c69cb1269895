// A set that is refused: the menu then stands on its first item, while the page that was on show stays.
#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using Refusal = ShellTest;

const Message kRefused = {"必须先维护基本信息集，然后再维护其它信息集。", kOk, "人员维护"};
const std::string kDouble = "insert into A01(A00,A0101) values('" + kPerson + "','同号')";
const std::string kNoDouble = "delete from A01 where A00='" + kPerson + "' and A0101='同号'";
// Puts the education ahead of the basic data.
const std::string kEducationFirst = "update s_infotable set OtherProp = -9 where tblname = 'A02'";

TEST_F(Refusal, CancelReloadsTheFirstItemAndNotTheRefusedOne) {
  visit.OpenNew([&] {
    visit.GoTo("A03");
    EXPECT_EQ(visit.Window().CurItem, 3);
    const auto page = visit.Window().GetUserCtrl();
    visit.user.ClickToolbar("Cancel");
    EXPECT_NE(visit.Window().GetUserCtrl(), page);
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01");
    EXPECT_EQ(visit.Window().CurItem, 1);
  });
  EXPECT_EQ(Shown(), Messages{kRefused});
}

TEST_F(Refusal, RequiredWithAnotherSetOnShowSaveReloadsTheFirstItem) {
  EXPECT_TRUE(visit.Open([&] {
    visit.GoTo("A03");
    Script(kDouble);
    visit.GoTo("A04");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA03");
    Script(kNoDouble);
    visit.Text("A03_A0302").SetText("新单位");
    visit.user.ClickToolbar("Save");
    // The record is stored, and the basic data are on show without a new record.
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
    EXPECT_EQ(visit.Window().personID, kPerson);
  }));
  EXPECT_EQ(Shown(), Messages{kRefused});
  EXPECT_EQ(Value("select count(*) from A03 where A0302='新单位' and A00='" + kPerson + "'"), "1");
}

TEST_F(Refusal, DeleteAsksAboutTheSetOnShow) {
  visit.Open([&] {
    visit.GoTo("A03");
    Script(kDouble);
    visit.GoTo("A04");
    EXPECT_EQ(visit.Window().VMenu1().menuitemkey(), "A01");
    Answer(toolkit::kAnswerNo);
    visit.user.ClickToolbar("Delete");
  });
  EXPECT_EQ(Shown(), (Messages{kRefused, {"是否删除此条记录？", kYesOrNo, "人员维护"}}));
}

TEST_F(Refusal, RequiredTheNewRecordBehindASaveGoesByTheItemOfTheMenu) {
  Script(kEducationFirst);
  visit.Open([&] {
    visit.GoTo("A01");
    Script(kDouble);
    visit.GoTo("A03");
    EXPECT_EQ(visit.Window().VMenu1().menuitemkey(), "A02");
    visit.user.ClickToolbar("Save");
    // The reload was refused as well: the basic data are on show, and a new person has begun on them.
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01");
    EXPECT_NE(visit.Window().personID, kPerson);
    EXPECT_EQ(visit.Window().DealType, 0);
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  });
  EXPECT_EQ(Shown(), (Messages{kRefused, kRefused}));
}

TEST_F(Refusal, RequiredWhereAnotherSetStandsFirstANewPersonHasNoPage) {
  Script(kEducationFirst);
  EXPECT_FALSE(visit.OpenNew([&] {
    EXPECT_EQ(visit.Window().GetUserCtrl(), nullptr);
    visit.user.ClickToolbar("Save");
    visit.user.ClickToolbar("Exit");
    EXPECT_TRUE(visit.Window().Loaded()) << "without a page no command does anything";
    visit.GoTo("A01");
    EXPECT_EQ(visit.Window().personID.size(), 36U);
    EXPECT_EQ(State(), "当前操作：增加 on off off");
  }));
  EXPECT_EQ(Shown(), Messages{kRefused});
}

TEST_F(Refusal, RequiredWhereAnotherSetStandsFirstItIsTheOneThatAStoredPersonOpensOn) {
  Script(kEducationFirst);
  visit.Open([&] { EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA02"); });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(Refusal, ANameInSmallLettersIsNotTheBasicSet) {
  Script("update s_infotable set tblname = 'a01' where tblname = 'A01'");
  visit.OpenNew([&] {
    EXPECT_EQ(visit.Window().VMenu1().menuitemkey(), "a01");
    EXPECT_EQ(visit.Window().GetUserCtrl(), nullptr);
  });
  EXPECT_EQ(Shown(), Messages{kRefused});
}

}  // namespace
}  // namespace dossierkit::tests
