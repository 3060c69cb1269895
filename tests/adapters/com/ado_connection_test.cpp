// The host's connection: what of ADO becomes what of ours, and how its failures are told.
#include "adapters/com/ado_connection.h"

#include <algorithm>
#include <string>

#include "platform/ado/recordset.h"
#include "tests/adapters/com/library.h"
#include "tests/adapters/conformance_fixture.h"
#include "tests/adapters/sqlite/conformance_database.h"

namespace dossierkit::com {
namespace {

using environment::DateTime;
using environment::Failure;
using environment::Null;
using environment::Value;

class ComAdoConnection : public testing::Test {
 protected:
  ComAdoConnection() { *host_.Put() = new StandInConnection(engine_); }
  ~ComAdoConnection() override { LateObject::on_any_call = nullptr; }

  Value One(const std::string& statement) { return AdoConnection(host_.Get()).Execute(statement)->Fields(0); }
  Failure FailureOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const Failure& failure) {
      return failure;
    }
    return Failure(0, "no failure");
  }

  std::shared_ptr<sqlite::SqliteConnection> engine_ = sqlite::OpenSqliteConformanceDatabase();
  Pointer<StandInConnection> host_;
};

TEST_F(ComAdoConnection, GivesEachKindOfValue) {
  engine_->Run("insert into A02(A00,A0201,A0205,A0206,A0207) values('某人','1990年03月',-7,'True',0.25)");
  EXPECT_EQ(One("select A00 from A02"), Value("某人"));
  EXPECT_EQ(One("select A0201 from A02"), Value(DateTime{1990, 3, 1}));
  EXPECT_EQ(One("select A0205 from A02"), Value(-7));
  EXPECT_EQ(One("select A0206 from A02"), Value(true));
  EXPECT_EQ(One("select A0207 from A02"), Value(0.25));
  EXPECT_EQ(One("select A0203 from A02"), Value(Null{}));
}

TEST_F(ComAdoConnection, ReadsEveryRowOfManyBlocks) {
  engine_->RunScript(
      "with recursive n(i) as (select 1 union all select i+1 from n where i<2500) "
      "insert into A01(A00,A0199) select 'p'||i, i from n");
  host_->calls = 0;
  const auto rows = AdoConnection(host_.Get()).Execute("select A00,A0199 from A01 order by A0199");
  ASSERT_EQ(rows->RecordCount(), 2500);
  EXPECT_EQ(rows->ValueAt(1, 0), Value("p1"));
  EXPECT_EQ(rows->ValueAt(1001, 1), Value(1001));
  EXPECT_EQ(rows->ValueAt(2500, 0), Value("p2500"));
  EXPECT_EQ(host_->calls, 5) << "Execute, three blocks, Close";
}

TEST_F(ComAdoConnection, AStatementWithoutRowsGivesNone) {
  AdoConnection connection(host_.Get());
  EXPECT_EQ(connection.Run("insert into A01(A00) values('a')").ColumnCount(), 0U);
  EXPECT_EQ(One("select count(*) from A01"), Value(1));
}

TEST_F(ComAdoConnection, ItsFailuresKeepNumberWordsAndStatement) {
  const Failure failure = FailureOf([&] { AdoConnection(host_.Get()).Run("select x from none"); });
  EXPECT_EQ(failure.number(), environment::kNoSuchTable);
  EXPECT_EQ(failure.statement(), "select x from none");
  host_->on_call = [](const std::string& member) {
    if (member == "GetRows") throw Failure(3021, "没有当前记录");
  };
  engine_->Run("insert into A01(A00) values('a')");
  const Failure reading = FailureOf([&] { AdoConnection(host_.Get()).Run("select A00 from A01"); });
  EXPECT_EQ(reading.number(), 3021);
  EXPECT_EQ(reading.description(), "没有当前记录");
}

TEST_F(ComAdoConnection, EachFailingCallOfAnyObjectIsToldAndLeavesNothingHeld) {
  engine_->Run("insert into A01(A00,A0199) values('a',1)");
  const auto read = [&] { AdoConnection(host_.Get()).Run("select A00,A0199 from A01"); };
  const int living = LateObject::Living();
  int calls = 0;
  LateObject::on_any_call = [&] { ++calls; };
  read();
  // Execute, State, Fields, Count; Item, Name and Type of two fields; EOF, GetRows, EOF, Close.
  EXPECT_EQ(calls, 14);
  for (int n = 1; n <= calls; ++n) {
    int left = n;
    LateObject::on_any_call = [&] {
      if (--left == 0) throw Failure(3265, "断开");
    };
    const Failure failure = FailureOf(read);
    EXPECT_EQ(failure.number(), 3265) << n;
    EXPECT_EQ(failure.description(), "断开") << n;
    EXPECT_EQ(failure.statement(), "select A00,A0199 from A01") << n;
    EXPECT_EQ(host_->References(), 1U) << n;
    EXPECT_EQ(LateObject::Living(), living) << n;
  }
  LateObject::on_any_call = nullptr;
  EXPECT_EQ(One("select A00 from A01"), Value("a")) << "the next call works";
}

TEST_F(ComAdoConnection, IsOpenWhileTheHostsIs) {
  const AdoConnection connection(host_.Get());
  EXPECT_TRUE(connection.IsOpen());
  engine_->Close();
  EXPECT_FALSE(connection.IsOpen());
}

TEST_F(ComAdoConnection, AnObjectWithoutTheMembersIsTold) {
  const auto rows = [&] {
    std::vector<Variant> arguments;
    arguments.push_back(Variant::OfText("select A00 from A01"));
    return LateBound(host_.Get()).GetObject(L"Execute", std::move(arguments));
  }();
  EXPECT_EQ(FailureOf([&] { AdoConnection(rows.Get()).Run("select 1"); }).number(), 438);
  EXPECT_EQ(FailureOf([&] { AdoConnection(nullptr).Run("select 1"); }).number(), 91);
}

}  // namespace
}  // namespace dossierkit::com
