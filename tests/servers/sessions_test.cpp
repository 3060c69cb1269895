// A session that ends under the program, and tables that change under it.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

constexpr char kDatabase[] = "sessions";

class Sessions : public testing::Test {
 protected:
  Sessions() {
    MakeDatabase(engine_, kDatabase);
    session_ = OpenServer(engine_, kDatabase);
    session_->RunNative("create table t (a varchar(20), n integer)");
  }

  // What a server that is stopped does to its sessions.
  void EndTheSession() {
    const bool is_postgresql = engine_ == "postgresql";
    const std::string id = environment::TextOf(
        session_->RunNative(is_postgresql ? "select pg_backend_pid()" : "select connection_id()")
            .ValueAt(0, 0));
    OpenServer(engine_)->RunNative(is_postgresql ? "select pg_terminate_backend(" + id + ", 300000)"
                                                 : "kill " + id);
  }
  // What scripts/servers.sh started is stopped; it starts it again. PostgreSQL calls SIGINT the fast way.
  void StopTheServer() { KillServer(ServerString(engine_), engine_ == "postgresql" ? SIGINT : SIGTERM); }
  std::string One(const std::string& query) {
    return environment::TextOr(session_->Execute(query)->Fields(0), "NULL");
  }

  const std::string engine_ = ServerOfThisRun();
  std::shared_ptr<odbc::OdbcConnection> session_;
};

TEST_F(Sessions, TheStatementBehindTheEndIsToldAndTheNextOneConnectsAnew) {
  for (int round = 0; round < 3; ++round) {
    session_->Run("insert into t(a,n) values('甲','" + std::to_string(round) + "')");
    EndTheSession();
    const std::string told = Told([&] { session_->Run("insert into t(a,n) values('乙','9')"); });
    EXPECT_TRUE(told.starts_with(kLost)) << told;
    EXPECT_EQ(One("select count(*) from t where a='甲'"), std::to_string(round + 1))
        << "what was reported saved";
    EXPECT_EQ(One("select count(*) from t where a='乙'"), "0");
  }
}

TEST_F(Sessions, AServerThatWasRestartedIsToldOnceAndGoesOn) {
  if (std::getenv("DOSSIERKIT_SERVERS_COME_BACK") == nullptr)
    GTEST_SKIP() << "only scripts/servers.sh starts a server again that a test has stopped";
  session_->Run("insert into t(a,n) values('甲','1')");
  StopTheServer();
  const std::string told = Told([&] { session_->Run("insert into t(a,n) values('乙','2')"); });
  EXPECT_TRUE(told.starts_with(kLost)) << told;
  // While it is away, or on its way back.
  const std::string away = Told([&] { session_->Run("insert into t(a,n) values('丙','3')"); });
  const bool is_joining =
      engine_ == "galera" && away.find("WSREP has not yet prepared node") != std::string::npos;
  EXPECT_TRUE(away.empty() || away.starts_with(kUnreachable) || is_joining) << away;
  ASSERT_TRUE(WaitUntil([&] { return Answers(ServerString(engine_)); }));
  EXPECT_EQ(One("select count(*) from t where a='甲'"), "1") << "what was reported saved";
  EXPECT_EQ(One("select count(*) from t where a='乙'"), "0");
  EXPECT_EQ(One("select count(*) from t where a='丙'"), away.empty() ? "1" : "0");
  session_->Run("insert into t(a,n) values('丁','4')");
  EXPECT_EQ(One("select n from t where a='丁'"), "4");
}

TEST_F(Sessions, ATransactionThatEndedWithItsSessionMustBeRolledBackFirst) {
  session_->BeginTrans();
  session_->Run("insert into t(a,n) values('甲','1')");
  EndTheSession();
  EXPECT_NE(Told([&] { session_->Run("insert into t(a,n) values('乙','2')"); }), "");
  EXPECT_EQ(Told([&] { session_->Run("insert into t(a,n) values('乙','3')"); }),
            "数据库已经撤销了这个事务：请回滚后再重新开始。");
  EXPECT_NE(Told([&] { session_->CommitTrans(); }), "");
  session_->RollbackTrans();
  EXPECT_EQ(One("select count(*) from t"), "0");
}

TEST_F(Sessions, AnInsertIsStoredByTheColumnAsItIsNow) {
  session_->Run("insert into t(a,n) values('1990年03月','1')");
  EXPECT_EQ(One("select a from t"), "1990年03月");
  const auto another = OpenServer(engine_, kDatabase);
  another->RunNative("drop table t");
  another->RunNative(std::string("create table t (a ") +
                     (engine_ == "postgresql" ? "timestamp(0)" : "datetime") + ", n integer)");
  session_->Run("insert into t(a,n) values('1990年03月','1')");
  EXPECT_EQ(One("select a from t"), "1990/3/1");
  // What the program itself changes past the dialect, it knows at once.
  session_->RunNative("drop table t");
  session_->RunNative("create table t (a varchar(20), n integer)");
  session_->Run("insert into t(a,n) values('1990年03月','1')");
  EXPECT_EQ(One("select a from t"), "1990年03月");
}

}  // namespace
}  // namespace dossierkit::tests
