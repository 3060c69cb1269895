#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ado/recordset.h"
#include "platform/ado/tracing_connection.h"
#include "platform/environment/failure.h"
#include "tests/support/failing_connection.h"
#include "tests/support/failures.h"

namespace dossierkit::ado {
namespace {

// Two rows for each statement, a failure for "bad".
class Recorder : public Connection {
 public:
  bool IsOpen() const override { return true; }
  Snapshot Run(const std::string& statement) override {
    if (statement == "bad") throw environment::Failure(7, "坏", statement);
    statements.push_back(statement);
    Snapshot rows;
    rows.AddColumn({"x", ColumnKind::kInteger, {}});
    rows.AppendInteger(1);
    rows.AppendInteger(2);
    return rows;
  }
  std::int32_t BeginTrans() override {
    statements.push_back("begin");
    return ++level;
  }
  void CommitTrans() override {
    statements.push_back("commit");
    if (--level < 0) throw environment::MakeFailure(environment::kNoTransaction);
  }
  void RollbackTrans() override {
    statements.push_back("rollback");
    --level;
  }
  std::vector<std::string> statements;
  std::int32_t level = 0;
};

TEST(UnopenedConnection, FailsEveryStatement) {
  UnopenedConnection connection;
  EXPECT_FALSE(connection.IsOpen());
  try {
    connection.Execute("select 1");
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), 3709);
    EXPECT_EQ(failure.statement(), "select 1");
  }
}

TEST(UnopenedConnection, FailsEveryTransaction) {
  UnopenedConnection connection;
  EXPECT_EQ(tests::NumberOfFailure([&] { connection.BeginTrans(); }), 3709);
  EXPECT_EQ(tests::NumberOfFailure([&] { connection.CommitTrans(); }), 3709);
  EXPECT_EQ(tests::NumberOfFailure([&] { connection.RollbackTrans(); }), 3709);
}

TEST(TracingConnection, TellsOfTransactions) {
  std::vector<std::string> traces;
  const auto recorder = std::make_shared<Recorder>();
  TracingConnection connection(
      recorder, [&](const Trace& trace) { traces.push_back(trace.statement + "|" + trace.error); });
  EXPECT_EQ(connection.BeginTrans(), 1);
  EXPECT_EQ(connection.BeginTrans(), 2);
  connection.RollbackTrans();
  connection.CommitTrans();
  EXPECT_THROW(connection.CommitTrans(), environment::Failure);
  EXPECT_EQ(traces, (std::vector<std::string>{"BeginTrans|", "BeginTrans|", "RollbackTrans|", "CommitTrans|",
                                              "CommitTrans|没有可以提交或回滚的事务。"}));
  EXPECT_EQ(recorder->statements,
            (std::vector<std::string>{"begin", "begin", "rollback", "commit", "commit"}));
}

TEST(TracingConnection, TellsOfEachStatementAndItsRows) {
  std::vector<Trace> traces;
  TracingConnection connection(std::make_shared<Recorder>(),
                               [&](const Trace& trace) { traces.push_back(trace); });
  EXPECT_TRUE(connection.IsOpen());
  EXPECT_EQ(connection.Execute("good")->RecordCount(), 2);
  EXPECT_THROW(connection.Run("bad"), environment::Failure);
  ASSERT_EQ(traces.size(), 2U);
  EXPECT_EQ(traces[0].statement, "good");
  EXPECT_EQ(traces[0].rows, 2U);
  EXPECT_GE(traces[0].milliseconds, 0);
  EXPECT_EQ(traces[0].error, "");
  EXPECT_EQ(traces[1].statement, "bad");
  EXPECT_EQ(traces[1].error, "坏");
}

TEST(FailingConnection, FailsInsteadOfTheChosenStatementOnce) {
  const auto recorder = std::make_shared<Recorder>();
  tests::FailingConnection connection(recorder);
  connection.Run("before");
  connection.FailAt(2, 5, "故障");
  connection.Run("a");
  try {
    connection.Run("b");
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), 5);
    EXPECT_EQ(failure.description(), "故障");
    EXPECT_EQ(failure.statement(), "b");
  }
  EXPECT_TRUE(connection.HasFailed());
  connection.Run("c");
  EXPECT_EQ(recorder->statements, (std::vector<std::string>{"before", "a", "c"}));
  EXPECT_EQ(connection.Count(), 3U);
}

TEST(FailingConnection, TransactionsCountAsStatements) {
  const auto recorder = std::make_shared<Recorder>();
  tests::FailingConnection connection(recorder);
  const auto sweep = [&](std::size_t fail_at) {
    recorder->statements.clear();
    recorder->level = 9;
    connection.FailAt(fail_at);
    for (const auto& call : {std::function<void()>([&] { connection.BeginTrans(); }),
                             std::function<void()>([&] { connection.RollbackTrans(); }),
                             std::function<void()>([&] { connection.BeginTrans(); }),
                             std::function<void()>([&] { connection.CommitTrans(); })}) {
      try {
        call();
      } catch (const environment::Failure& failure) {
        recorder->statements.push_back("failed " + failure.statement());
      }
    }
    return recorder->statements;
  };
  using Calls = std::vector<std::string>;
  EXPECT_EQ(sweep(1), (Calls{"failed BeginTrans", "rollback", "begin", "commit"}));
  EXPECT_EQ(sweep(2), (Calls{"begin", "failed RollbackTrans", "begin", "commit"}));
  EXPECT_EQ(sweep(4), (Calls{"begin", "rollback", "begin", "failed CommitTrans"}));
}

TEST(FailingConnection, CountsOnlyChosenStatements) {
  tests::FailingConnection connection(std::make_shared<Recorder>());
  connection.FailAt(1, 5, "故障",
                    [](const std::string& statement) { return statement.starts_with("delete"); });
  connection.Run("select");
  EXPECT_FALSE(connection.HasFailed());
  EXPECT_THROW(connection.Run("delete"), environment::Failure);
}

TEST(FailingConnection, RunsEverythingUntilToldOtherwise) {
  tests::FailingConnection connection(std::make_shared<Recorder>());
  for (int i = 0; i < 5; ++i) connection.Run("x");
  connection.FailAt(0);
  connection.Run("x");
  EXPECT_FALSE(connection.HasFailed());
}

}  // namespace
}  // namespace dossierkit::ado
