// The component as its host sees it.
#include <chrono>
#include <type_traits>

#include "tests/shell/shell_test.h"

namespace dossierkit::tests {
namespace {

using UserCtrl = ShellTest;

TEST_F(UserCtrl, PlainMembersKeepWhatIsAssigned) {
  IUserCtrl component;
  static_assert(std::is_same_v<decltype(component.OperationType), std::int16_t>);
  static_assert(std::is_same_v<decltype(component.PersonType), std::int16_t>);
  EXPECT_EQ(component.OperationType, 0);
  EXPECT_EQ(component.PersonType, 0);
  EXPECT_EQ(component.PhotoPath, "");
  EXPECT_EQ(component.personID, "");
  component.OperationType = -32768;
  component.PersonType = 32767;
  component.PhotoPath = "没有的文件夹\\";
  component.personID = " '任意 ";
  EXPECT_EQ(component.OperationType, -32768);
  EXPECT_EQ(component.PersonType, 32767);
  EXPECT_EQ(component.PhotoPath, "没有的文件夹\\");
  EXPECT_EQ(component.personID, " '任意 ");
}

TEST_F(UserCtrl, ConnectionGivesBackTheObjectThatWasSet) {
  IUserCtrl component;
  component.SetConnection(visit.database);
  EXPECT_EQ(component.Connection(), visit.database);
}

TEST_F(UserCtrl, ConnectionThatWasNeverSetIsOneUnopenedObject) {
  IUserCtrl component;
  const auto made = component.Connection();
  ASSERT_TRUE(made);
  EXPECT_FALSE(made->IsOpen());
  EXPECT_EQ(component.Connection(), made);
}

TEST_F(UserCtrl, ConnectionThatWasNeverSetFailsAtTheFirstQuery) {
  IUserCtrl component;
  component.OperationType = 3;
  EXPECT_EQ(NumberOfFailure([&] { component.ShowDossier(); }), environment::kConnectionClosed);
  EXPECT_EQ(visit.runtime.connection, component.Connection());
  EXPECT_TRUE(Shown().empty());
}

TEST_F(UserCtrl, ClosedConnectionFailsTheCallAndTheNextVisitWorks) {
  visit.database->Close();
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kConnectionClosed);
  EXPECT_EQ(visit.statements, kMenu);
  EXPECT_TRUE(Shown().empty());
  EXPECT_FALSE(visit.Window().InVisit());
  const auto database = SampleDatabase();
  visit.component.SetConnection(database);
  EXPECT_FALSE(visit.Open([&] { EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA01"); }));
}

TEST_F(UserCtrl, TheSharedConnectionKeepsItsValueAfterTheVisit) {
  visit.Open([] {});
  EXPECT_EQ(visit.runtime.connection, visit.component.Connection());
  EXPECT_TRUE(gConnection().IsOpen());
}

TEST_F(UserCtrl, TheSharedConnectionReadBeforeItWasSetIsUnopened) {
  EXPECT_FALSE(gConnection().IsOpen());
  EXPECT_EQ(&gConnection(), visit.runtime.connection.get());
}

TEST_F(UserCtrl, TheHostsValuesReachTheWindow) {
  visit.component.PersonType = 2;
  visit.component.PhotoPath = "C:\\photos";
  visit.OpenPerson(kPerson, [&] {
    EXPECT_EQ(visit.Window().personID, kPerson);
    EXPECT_EQ(visit.Window().PersonType, 2);
    EXPECT_EQ(visit.Window().PhotoPath, "C:\\photos");
    EXPECT_EQ(visit.Window().OperationType, 3);
    EXPECT_FALSE(visit.Window().IsSaved);
  });
}

TEST_F(UserCtrl, OneWindowServesAllVisitsOfAllComponents) {
  visit.Open([] {});
  const auto window = visit.runtime.window;
  IUserCtrl other;
  other.SetConnection(visit.component.Connection());
  visit.script.WillRun([&](toolkit::Form& form) { EXPECT_EQ(&form, window.get()); });
  other.ShowDossier();
  EXPECT_EQ(visit.runtime.window, window);
}

TEST_F(UserCtrl, TheWindowsVariablesSurviveTheVisit) {
  visit.component.PhotoPath = "P";
  visit.Open([&] { visit.GoTo("A03"); });
  EXPECT_EQ(visit.Window().personID, kPerson);
  EXPECT_EQ(visit.Window().PhotoPath, "P");
  EXPECT_EQ(visit.Window().OperationType, 3);
  EXPECT_EQ(visit.Window().DealType, 3);
  EXPECT_EQ(visit.Window().SetCount, 15);
  EXPECT_EQ(visit.Window().CurItem, 3);
  EXPECT_EQ(visit.Window().PrevItem, 1);
}

TEST_F(UserCtrl, TheControlsDoNotSurviveTheVisit) {
  visit.Open([] {});
  EXPECT_EQ(NumberOfFailure([&] { visit.Window().TbMain(); }), environment::kObjectUnloaded);
  EXPECT_EQ(NumberOfFailure([&] { visit.Window().VMenu1(); }), environment::kObjectUnloaded);
  EXPECT_EQ(NumberOfFailure([&] { visit.Window().labPersonName(); }), environment::kObjectUnloaded);
}

TEST_F(UserCtrl, ASecondVisitTakesNewValuesAndBuildsTheMenuAnew) {
  const std::string other = "56670B14-1509-4B0A-8BF1-3331CA118783";
  visit.Open([&] { visit.GoTo("A03"); });
  Script("delete from s_infotable where tblname='A21'");
  visit.OpenPerson(other, [&] {
    EXPECT_EQ(visit.Window().personID, other);
    EXPECT_EQ(visit.Caption("labPersonName"), "沈若璞");
    EXPECT_EQ(visit.Window().VMenu1().menuitemsmax(), 15);
    EXPECT_EQ(visit.Window().SetCount, 14);
    EXPECT_EQ(visit.Window().CurItem, 1);
    EXPECT_EQ(visit.Window().PrevItem, 1);
    EXPECT_EQ(visit.Window().VMenu1().Items()[2].icon, "");
  });
}

TEST_F(UserCtrl, ShowDossierDuringAVisitFailsBeforeItTouchesAnything) {
  visit.Open([&] {
    IUserCtrl other;
    other.personID = "nobody";
    other.PersonType = 3;
    other.PhotoPath = "elsewhere";
    visit.statements.clear();
    EXPECT_EQ(NumberOfFailure([&] { other.ShowDossier(); }), environment::kAlreadyShown);
    EXPECT_TRUE(visit.statements.empty());
    EXPECT_EQ(visit.runtime.connection, visit.component.Connection());
    EXPECT_EQ(visit.Window().personID, kPerson);
    EXPECT_EQ(visit.Window().PersonType, 1);
    EXPECT_EQ(visit.Window().PhotoPath, "");
    EXPECT_EQ(visit.Window().OperationType, 3);
    visit.GoTo("A03");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA03");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(UserCtrl, ShowDossierFromAMessageBoxOfTheVisitFailsToo) {
  int failure = 0;
  visit.script.on_message = [&](const Message&) {
    failure = NumberOfFailure([&] { visit.component.ShowDossier(); });
  };
  visit.OpenNew([&] { visit.GoTo("A02"); });
  EXPECT_EQ(failure, environment::kAlreadyShown);
}

TEST_F(UserCtrl, ShowDossierFromTheBoxThatRefusesAPersonFailsToo) {
  int failure = 0;
  visit.script.on_message = [&](const Message&) {
    IUserCtrl other;
    other.personID = kPerson;
    other.PersonType = 3;
    other.OperationType = 0;
    failure = NumberOfFailure([&] { other.ShowDossier(); });
  };
  visit.component.personID = "nobody";
  EXPECT_EQ(NumberOfFailure([&] { visit.component.ShowDossier(); }), environment::kObjectUnloaded);
  EXPECT_EQ(failure, environment::kAlreadyShown);
  EXPECT_EQ(visit.Window().personID, "nobody");
  EXPECT_EQ(visit.Window().PersonType, 1);
  EXPECT_EQ(visit.Window().OperationType, 3);
  EXPECT_EQ(visit.runtime.connection, visit.component.Connection());
}

TEST_F(UserCtrl, ZeroAndNothingTakeThePlaceOfTheFormerVisitsValues) {
  visit.component.PhotoPath = "P";
  visit.Open([] {});
  visit.component.PersonType = 0;
  visit.component.PhotoPath = "";
  visit.component.personID = "";
  visit.component.OperationType = 0;
  visit.Open([&] {
    EXPECT_EQ(visit.Window().PersonType, 0);
    EXPECT_EQ(visit.Window().PhotoPath, "");
    EXPECT_EQ(visit.Window().OperationType, 0);
    EXPECT_NE(visit.Window().personID, kPerson);
  });
}

// --- the result --------------------------------------------------------------------------------

TEST_F(UserCtrl, AVisitWithoutASaveGivesFalse) {
  EXPECT_FALSE(visit.Open([&] { visit.GoTo("A12"); }));
}

TEST_F(UserCtrl, OneSaveOfTheToolbarGivesTrue) {
  EXPECT_TRUE(visit.Open([&] { visit.user.ClickToolbar("Save"); }));
}

TEST_F(UserCtrl, ASaveByShortCutIsOneOfTheToolbar) {
  EXPECT_TRUE(visit.Open([&] {
    visit.GoTo("A02");
    visit.user.Press('S', toolkit::kCtrl);
  }));
}

TEST_F(UserCtrl, AFailedSaveGivesFalse) {
  EXPECT_FALSE(visit.Open([&] {
    visit.Text("A01_A0101").SetText("");
    visit.user.ClickToolbar("Save");
  }));
  EXPECT_EQ(Shown(), (Messages{{"姓名 为必填项", kOk, "错误信息"}}));
}

TEST_F(UserCtrl, FailedSavesAfterASaveStillGiveTrue) {
  EXPECT_TRUE(visit.Open([&] {
    visit.user.ClickToolbar("Save");
    visit.Text("A01_A0101").SetText("");
    visit.user.ClickToolbar("Save");
    visit.user.ClickToolbar("Save");
  }));
  EXPECT_EQ(Shown().size(), 2u);
}

TEST_F(UserCtrl, RequiredASaveByTheQuestionOfTheMenuGivesFalse) {
  EXPECT_FALSE(visit.Open([&] {
    visit.Text("A01_A0109").SetText("农学");
    Answer(toolkit::kAnswerYes);
    visit.GoTo("A02");
  }));
  EXPECT_EQ(Value("select A0109 from A01 where A00='" + kPerson + "'"), "农学");
}

TEST_F(UserCtrl, RequiredASaveByTheQuestionOfAddGivesFalse) {
  EXPECT_FALSE(visit.Open([&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("理事");
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Add");
  }));
  EXPECT_EQ(Value("select A0404 from A04 where A00='" + kPerson + "' and A0499=1"), "理事");
}

TEST_F(UserCtrl, RequiredASaveByTheQuestionOfExitGivesFalse) {
  EXPECT_FALSE(visit.Open([&] {
    visit.Text("A01_A0109").SetText("农学");
    Answer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Exit");
  }));
  EXPECT_EQ(Value("select A0109 from A01 where A00='" + kPerson + "'"), "农学");
}

TEST_F(UserCtrl, RequiredASaveByTheQuestionOfAPageGivesFalse) {
  EXPECT_FALSE(visit.Open([&] {
    visit.GoTo("A02");
    visit.Text("A02_A0203").SetText("园艺");
    Answer(toolkit::kAnswerNo);
    visit.user.ClickRow(2);
  }));
  EXPECT_EQ(Value("select A0203 from A02 where A00='" + kPerson + "' and A0299=1"), "园艺");
}

TEST_F(UserCtrl, ASaveOfAnEarlierVisitDoesNotCount) {
  EXPECT_TRUE(visit.Open([&] { visit.user.ClickToolbar("Save"); }));
  EXPECT_FALSE(visit.Open([] {}));
}

TEST_F(UserCtrl, TheResultIsClearedBeforeTheWindowLoads) {
  EXPECT_TRUE(visit.Open([&] { visit.user.ClickToolbar("Save"); }));
  visit.failing->FailAt(1);
  EXPECT_NE(NumberOfFailure([&] { visit.component.ShowDossier(); }), 0);
  EXPECT_FALSE(visit.Window().IsSaved);
}

TEST_F(UserCtrl, TheResultIsClearedAgainBehindTheMenusQuery) {
  visit.component.SetConnection(
      std::make_shared<ado::TracingConnection>(visit.failing, [&](const ado::Trace& trace) {
        if (trace.statement == kMenu[0]) visit.Window().IsSaved = true;
      }));
  EXPECT_FALSE(visit.Open([] {}));
}

TEST_F(UserCtrl, TheResultStaysInTheWindowBehindTheVisit) {
  EXPECT_TRUE(visit.Open([&] { visit.user.ClickToolbar("Save"); }));
  EXPECT_TRUE(visit.Window().IsSaved);
}

TEST_F(UserCtrl, ABusyPointerShowsBetweenTheStatementsOfALongLoad) {
  std::vector<bool> busy;
  visit.component.SetConnection(
      std::make_shared<ado::TracingConnection>(visit.database, [&](const ado::Trace&) {
        busy.push_back(visit.HeadlessViews().busy);
        visit.HeadlessViews().moment += std::chrono::milliseconds(110);
      }));
  visit.Open([&] { EXPECT_FALSE(visit.HeadlessViews().busy); });
  ASSERT_GT(busy.size(), 4U);
  EXPECT_FALSE(busy[2]);
  EXPECT_TRUE(busy[4]);
}

}  // namespace
}  // namespace dossierkit::tests
