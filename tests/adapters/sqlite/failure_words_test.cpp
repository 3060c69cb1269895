// What the engine reports, in the users' words.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "adapters/sqlite/sqlite_connection.h"
#include "adapters/sqlite/sqlite_functions.h"
#include "tests/support/memory_database.h"

namespace dossierkit::sqlite {
namespace {

std::string Told(SqliteConnection& connection, const std::string& statement) {
  try {
    connection.Run(statement);
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.statement(), statement);
    return std::to_string(failure.number()) + " " + failure.description();
  }
  return {};
}

std::shared_ptr<SqliteConnection> WithScript(const std::string& script) {
  auto connection = tests::OpenInMemory();
  connection->RunScript(script);
  return connection;
}

TEST(FailureWords, AnAmbiguousColumn) {
  const auto connection = WithScript("create table t(a); create table u(a)");
  EXPECT_EQ(Told(*connection, "select a from t,u"), "-2147217900 特定字段“a”可以参考 SQL 语句中的多个表。");
}

TEST(FailureWords, AFullDisk) {
  const auto connection = WithScript("create table t(a)");
  connection->Pragma("max_page_count=2");
  EXPECT_EQ(Told(*connection, "insert into t(a) values('" + std::string(20000, 'x') + "')"),
            "-2147467259 磁盘已满。");
}

TEST(FailureWords, AReadOnlyDatabase) {
  const auto connection = WithScript("create table t(a)");
  connection->Pragma("query_only=1");
  EXPECT_EQ(Told(*connection, "insert into t(a) values(1)"), "-2147467259 不能更新：数据库是只读的。");
}

TEST(FailureWords, ALockedTable) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
  sqlite3_exec(database, "create table t(a); insert into t values(1)", nullptr, nullptr, nullptr);
  sqlite3_stmt* reader = nullptr;
  sqlite3_prepare_v2(database, "select a from t", -1, &reader, nullptr);
  EXPECT_EQ(sqlite3_step(reader), SQLITE_ROW);
  EXPECT_EQ(sqlite3_exec(database, "drop table t", nullptr, nullptr, nullptr), SQLITE_LOCKED);
  const environment::Failure failure = FailureOf(database, "drop table t");
  EXPECT_EQ(failure.number(), environment::kEngineFailure);
  EXPECT_EQ(failure.description(), "数据库正被占用，请稍后再试。");
  EXPECT_EQ(failure.statement(), "drop table t");
  sqlite3_finalize(reader);
  sqlite3_close(database);
}

}  // namespace
}  // namespace dossierkit::sqlite
