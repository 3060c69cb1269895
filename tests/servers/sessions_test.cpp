// A session that ends under the program, and tables that change under it.
#include <gtest/gtest.h>

#include <clocale>
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

// As Qt sets it on a desktop in Chinese.
class ChineseDesktop {
 public:
  ChineseDesktop() {
    setenv("LANGUAGE", "zh_CN", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
  }
  ~ChineseDesktop() {
    std::setlocale(LC_ALL, "C");
    unsetenv("LANGUAGE");
  }
  ChineseDesktop(const ChineseDesktop&) = delete;
  ChineseDesktop& operator=(const ChineseDesktop&) = delete;
};

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

// As one whose system was installed in Chinese.
TEST_F(Sessions, AServerThatSpeaksChineseIsUnderstood) {
  if (engine_ != "postgresql") GTEST_SKIP() << "MariaDB's failures have numbers of their own";
  if (!Told([&] { session_->RunNative("set lc_messages = 'zh_CN.UTF-8'"); }).empty())
    GTEST_SKIP() << "the server's machine has no Chinese";
  const auto failure = [&](const char* statement) {
    try {
      session_->RunNative(statement);
    } catch (const environment::Failure& told) {
      return std::to_string(told.number()) + " " + told.description();
    }
    return std::string();
  };
  EXPECT_EQ(failure("select * from A77"),
            "-2147217865 找不到输入表或查询“A77”。确定它是否存在，以及它的名称的拼写是否正确。");
  EXPECT_EQ(failure("select T.B from t"), "-2147217904 至少一个参数没有被指定值：未知的名称“T.B”。");
  EXPECT_EQ(failure("insert into t(B) values(1)"),
            "-2147217904 语句包含下列未知的字段名：“B”。确保输入的名称正确。");
  EXPECT_EQ(failure("select 1/0"), "-2147467259 数据库错误：除以零。");
}

// The words of the driver's library are those of the desktop that the program runs on. A server says its last
// words unless its process of the session is killed itself.
TEST_F(Sessions, AServerThatWasKilledIsToldInWhateverLanguage) {
  if (engine_ != "postgresql") GTEST_SKIP() << "MariaDB's failures have numbers of their own";
  if (std::getenv("DOSSIERKIT_SERVERS_COME_BACK") == nullptr)
    GTEST_SKIP() << "only a server that scripts/servers.sh started may be killed";
  const ChineseDesktop desktop;
  const std::string process =
      environment::TextOf(session_->RunNative("select pg_backend_pid()").ValueAt(0, 0));
  ASSERT_EQ(kill(std::stoi(process), SIGKILL), 0);
  const std::string told = Told([&] { session_->Run("insert into t(a,n) values('乙','2')"); });
  EXPECT_TRUE(told.starts_with(kLost)) << told;
  ASSERT_TRUE(WaitUntil([&] { return Answers(ServerString(engine_)); }));
  EXPECT_EQ(Told([&] { session_->RunNative("select 1"); }), "") << "it connects anew";
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

// Names, kinds and values of all rows.
std::string Shown(const ado::Snapshot& rows) {
  static const char* const kKinds[] = {"text", "integer", "floating", "boolean", "date", "unknown"};
  std::string shown;
  for (std::size_t i = 0; i < rows.ColumnCount(); ++i)
    shown += rows.ColumnAt(i).name + " " + kKinds[static_cast<int>(rows.ColumnAt(i).kind)] + ",";
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    for (std::size_t i = 0; i < rows.ColumnCount(); ++i)
      shown += " " + environment::TextOr(rows.ValueAt(row, i), "NULL");
  }
  return shown;
}

// The driver's statement is the same one every time.
TEST_F(Sessions, ASelectKnowsNothingOfTheStatementBeforeIt) {
  session_->Run("insert into t(a,n) values('甲','7')");
  EXPECT_EQ(Shown(session_->Run("select * from t")), "a text,n integer, 甲 7");
  const auto another = OpenServer(engine_, kDatabase);
  another->RunNative("alter table t drop column n");
  another->RunNative("alter table t add column d date");
  another->RunNative("alter table t add column f double precision");
  another->RunNative("alter table t add column b boolean");
  EXPECT_NE(Told([&] { session_->Run("select n from t"); }), "");
  EXPECT_EQ(Shown(session_->Run("select * from t")), "a text,d date,f floating,b boolean, 甲 NULL NULL NULL");
  session_->Run("update t set d='2020-02-29',f='1.5',b=true");
  EXPECT_EQ(Shown(session_->Run("select * from t")),
            "a text,d date,f floating,b boolean, 甲 2020/2/29 1.5 True");
  EXPECT_EQ(Shown(session_->Run("select b,a from t where a='乙'")), "b boolean,a text,");
  EXPECT_EQ(Shown(session_->Run("delete from t where a='乙'")), "");
  EXPECT_EQ(Shown(session_->Run("select f from t")), "f floating, 1.5");
}

}  // namespace
}  // namespace dossierkit::tests
