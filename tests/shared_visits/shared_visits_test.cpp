// Visits of the demo host where several clerks share the database, on the engine of this run.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "host/server/copy.h"
#include "host/server/opened.h"
#include "host/server/rights.h"
#include "host/visits.h"
#include "shell/component.h"
#include "tests/host_windows/boxes.h"
#include "tests/support/memory_database.h"
#include "tests/support/paths.h"
#include "tests/support/qt_user.h"
#include "tests/support/scripted_qt.h"
#include "tests/support/servers.h"
#include "tests/support/visit.h"

namespace dossierkit::host {
namespace {

using tests::Column;
using tests::kPerson;
using tests::One;
using Texts = std::vector<std::string>;

constexpr char kDatabase[] = "shared_visits";

bool IsOnServer() { return tests::EngineOfThisRun().name != std::string("sqlite"); }

std::shared_ptr<ado::Connection> OpenSample() {
  if (IsOnServer()) return tests::OpenServer(tests::EngineOfThisRun().name, kDatabase);
  std::ifstream file(tests::SampleDatabaseFile(), std::ios::binary);
  return tests::OpenInMemory(std::string(std::istreambuf_iterator<char>(file), {}));
}

class SharedVisits : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!IsOnServer()) return;
    const std::string engine = tests::EngineOfThisRun().name;
    tests::MakeDatabase(engine, kDatabase);
    sqlite::SqliteConnection sample(tests::SampleDatabaseFile());
    const auto made = tests::OpenServer(engine, kDatabase);
    server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*made));
    server::PrepareRights(*made);
  }

  // Two persons with the records 1, 2 and 3 each, those of the same number one behind the other.
  SharedVisits() {
    database_->Run("delete from A04");
    for (const char* number : {"1", "2", "3"}) {
      for (const std::string& person : {kPerson, another_})
        database_->Run("insert into A04(A00,A0401,A0403,A0404,A0499) values('" + person + "','2001年0" +
                       number + "月','a','第" + number + "条','" + number + "')");
    }
  }

  bool Open(Visits& visits, const std::string& person, const std::function<void()>& scene) {
    bool shown = false;
    stage_.WillRun([&](toolkit::Form&) {
      shown = true;
      scene();
    });
    visits.Open({person, {}, {}});
    return shown;
  }
  frmDossier& Window() { return dynamic_cast<frmDossier&>(*TheRuntime().window); }
  void ClickMenu(const std::string& set) {
    const auto& items = Window().VMenu1().Items();
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (items[i].key == set) user_.ClickMenu(static_cast<int>(i + 1));
    }
  }
  void DeleteSecondRecord() {
    ClickMenu("A04");
    user_.ClickRow(2);
    stage_.WillAnswer(toolkit::kAnswerYes);
    user_.ClickToolbar("Delete");
  }
  Texts Numbers(const std::string& person = kPerson) {
    return Column(*database_, "select A0499 from A04 where A00='" + person + "' order by A0499");
  }

  tests::ScriptedQt stage_;
  std::shared_ptr<ado::Connection> database_ = OpenSample();
  const std::string another_ = One(*database_, "select A00 from A01 where A0199=12");
  Component component_{stage_, "/opt/dossier"};
  tests::QtUser user_{TheRuntime().desktop};
  Boxes boxes_;
};

TEST_F(SharedVisits, RequiredWithoutOwnRowsADeletionCountsTheRowsOfAllPersons) {
  Visits visits(database_, database_, "/no photographs", {false, "zhang@desk-3"});
  EXPECT_TRUE(Open(visits, kPerson, [&] {
    DeleteSecondRecord();
    EXPECT_EQ(Numbers(), (Texts{"4", "4"}));
  }));
  EXPECT_EQ(Numbers(), (Texts{"1", "2"})) << "put right behind the visit";
  EXPECT_EQ(Numbers(another_), (Texts{"1", "2", "3"}));
}

TEST_F(SharedVisits, WithOwnRowsADeletionCountsThePersonsOwn) {
  Visits visits(database_, database_, "/no photographs", {true, "zhang@desk-3"});
  EXPECT_TRUE(Open(visits, kPerson, [&] {
    DeleteSecondRecord();
    EXPECT_EQ(Numbers(), (Texts{"1", "2"}));
    EXPECT_EQ(Numbers(another_), Texts{}) << "another person's rows do not show";
  }));
  EXPECT_EQ(Numbers(), (Texts{"1", "2"}));
  EXPECT_EQ(Numbers(another_), (Texts{"1", "2", "3"})) << "all rows show behind the visit";
  EXPECT_EQ(boxes_.texts, Texts{});
}

TEST_F(SharedVisits, AVisitThatFailsShowsAllRowsAgain) {
  Visits visits(database_, database_, "/no photographs", {true, "zhang@desk-3"});
  EXPECT_THROW(Open(visits, kPerson, [] { throw environment::MakeFailure(environment::kOverflow); }),
               environment::Failure);
  EXPECT_EQ(Numbers(another_), (Texts{"1", "2", "3"}));
}

// On a file there is one clerk.
TEST_F(SharedVisits, ASecondClerkIsToldWhoHasThePersonOpenAndMayLook) {
  const auto first = OpenSample();
  const OpenMark mark(*first, kPerson, "zhang@desk-3");
  Visits visits(database_, database_, "/no photographs", {true, "li@desk-4"});
  boxes_.WillPress("不打开(&N)");
  boxes_.WillPress("只查看，不修改(&L)");
  bool shown = false;
  stage_.WillRun([&](toolkit::Form&) { shown = true; });
  EXPECT_FALSE(visits.Open({kPerson, {}, {}}));
  EXPECT_EQ(shown, !IsOnServer());
  if (IsOnServer()) visits.Open({kPerson, {}, {}});
  EXPECT_TRUE(shown);
  const std::string told = "zhang@desk-3 正在维护此人。两个人同时修改，会互相覆盖。";
  EXPECT_EQ(boxes_.texts, IsOnServer() ? (Texts{told, told}) : Texts{});
  EXPECT_TRUE(Open(visits, another_, [] {})) << "nobody has the other one open";
}

TEST_F(SharedVisits, ThePersonIsMarkedForAsLongAsTheVisitLasts) {
  const auto second = OpenSample();
  const auto asked = [&] { return OpenMark(*second, kPerson, "li@desk-4").Another(); };
  Visits visits(database_, database_, "/no photographs", {true, "zhang@desk-3"});
  EXPECT_TRUE(Open(visits, kPerson, [&] { EXPECT_EQ(asked(), IsOnServer() ? "zhang@desk-3" : ""); }));
  EXPECT_EQ(asked(), "");
}

// Who only looked leaves the mark of the one who works.
TEST_F(SharedVisits, ALookLeavesTheMarkOfTheFirst) {
  const auto first = OpenSample();
  const OpenMark mark(*first, kPerson, "zhang@desk-3");
  Visits visits(database_, database_, "/no photographs", {false, "li@desk-4"});
  boxes_.WillPress("只查看，不修改(&L)");
  EXPECT_TRUE(Open(visits, kPerson, [] {}));
  EXPECT_EQ(OpenMark(*database_, kPerson, "wang@desk-5").Another(), IsOnServer() ? "zhang@desk-3" : "");
}

// His page shows records by their numbers.
TEST_F(SharedVisits, ALookNumbersNothingOfThePersonWhomAnotherClerkHasOpen) {
  const auto first = OpenSample();
  const OpenMark mark(*first, kPerson, "zhang@desk-3");
  database_->Run("delete from A04 where A00='" + kPerson + "' and A0499='1'");
  Visits visits(database_, database_, "/no photographs", {false, "li@desk-4"});
  boxes_.WillPress("只查看，不修改(&L)");
  const Texts untouched = {"2", "3"};
  const Texts in_order = {"1", "2"};
  EXPECT_TRUE(Open(visits, kPerson, [&] { EXPECT_EQ(Numbers(), IsOnServer() ? untouched : in_order); }));
  EXPECT_EQ(Numbers(), IsOnServer() ? untouched : in_order);
}

TEST_F(SharedVisits, WhereMarksCannotBeMadeTheUserIsToldAndGoesOn) {
  if (!IsOnServer()) GTEST_SKIP() << "a file has no marks";
  auto& server = dynamic_cast<odbc::OdbcConnection&>(*database_);
  server.RunNative("alter table dossierkit_open rename to dossierkit_opened");
  Visits visits(database_, database_, "/no photographs", {false, "li@desk-4"});
  EXPECT_TRUE(Open(visits, kPerson, [] {}));
  server.RunNative("alter table dossierkit_opened rename to dossierkit_open");
  ASSERT_EQ(boxes_.texts.size(), 1U);
  EXPECT_TRUE(boxes_.texts[0].starts_with("不能标明谁正在维护此人：")) << boxes_.texts[0];
}

TEST_F(SharedVisits, AMarkThatIsLeftBehindLastsForADaysWork) {
  if (!IsOnServer()) GTEST_SKIP() << "a file has no marks";
  auto& server = dynamic_cast<odbc::OdbcConnection&>(*database_);
  const OpenMark mark(server, kPerson, "zhang@desk-3");
  const auto rows =
      server.RunNative(server.EngineName() == "PostgreSQL"
                           ? "select cast(extract(epoch from lease_end - clock_timestamp()) / 60 as integer) "
                             "from dossierkit_open"
                           : "select timestampdiff(minute, now(6), lease_end) from dossierkit_open");
  ASSERT_EQ(rows.RowCount(), 1U);
  const int minutes = std::stoi(environment::TextOf(rows.ValueAt(0, 0)));
  EXPECT_GT(minutes, 8 * 60 - 10);
  EXPECT_LE(minutes, 8 * 60);
}

TEST_F(SharedVisits, ClerksWhoBeginNewPersonsAreNotToldOfOneAnother) {
  const auto first = OpenSample();
  const OpenMark mark(*first, {}, "zhang@desk-3");
  EXPECT_EQ(OpenMark(*database_, {}, "li@desk-4").Another(), "");
  Visits visits(database_, database_, "/no photographs", {false, "li@desk-4"});
  EXPECT_TRUE(Open(visits, {}, [] {}));
  EXPECT_EQ(boxes_.texts, Texts{});
}

TEST_F(SharedVisits, AMarkThatCannotBeTakenAwayIsLeftToItsLease) {
  if (!IsOnServer()) GTEST_SKIP() << "a file has no marks";
  auto& server = dynamic_cast<odbc::OdbcConnection&>(*database_);
  Visits visits(database_, database_, "/no photographs", {false, "li@desk-4"});
  EXPECT_TRUE(Open(visits, kPerson,
                   [&] { server.RunNative("alter table dossierkit_open rename to dossierkit_opened"); }));
  server.RunNative("alter table dossierkit_opened rename to dossierkit_open");
  EXPECT_EQ(boxes_.texts, Texts{});
  EXPECT_EQ(OpenMark(server, kPerson, "wang@desk-5").Another(), "li@desk-4");
  server.RunNative("delete from dossierkit_open");
}

}  // namespace
}  // namespace dossierkit::host
