#include "adapters/sqlite/sqlite_connection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_functions.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/jet/statement.h"
#include "tests/adapters/sqlite/database_file.h"
#include "tests/support/memory_database.h"
#include "tests/support/paths.h"

namespace dossierkit::sqlite {
namespace {

using environment::DateTime;
using environment::Failure;
using environment::Value;

const char* const kPeople =
    "create table A01(A00 varchar(36) collate nocase, A0101 varchar(20) collate nocase, A0199 integer);";

template <typename Action>
Failure FailureOf(Action action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure;
  }
  ADD_FAILURE() << "no failure";
  return Failure(0, "");
}

TEST(SqliteConnection, OpensAFileWithAChineseName) {
  const DatabaseFile file(kPeople);
  SqliteConnection connection(file.Path());
  EXPECT_TRUE(connection.IsOpen());
  connection.Run("insert into A01(A00,A0101) values('P','王一')");
  EXPECT_EQ(SqliteConnection(file.Path()).Execute("select a0101 from a01")->Fields(0), Value("王一"));
}

TEST(SqliteConnection, MissingFileIsToldAndNotMade) {
  const DatabaseFile file(kPeople);
  const Failure failure = FailureOf([&] { SqliteConnection connection(file.Path("没有.db")); });
  EXPECT_EQ(failure.number(), environment::kEngineFailure);
  EXPECT_EQ(failure.description(), "数据库文件不存在：" + file.Path("没有.db"));
  EXPECT_FALSE(std::filesystem::exists(file.Path("没有.db")));
}

TEST(SqliteConnection, FilesThatAreNoDatabaseAreTold) {
  const DatabaseFile file(kPeople);
  file.Write("空.db", "");
  file.Write("照片.db", std::string(5000, 'x'));
  EXPECT_TRUE(FailureOf([&] { SqliteConnection connection(file.Path("空.db")); })
                  .description()
                  .starts_with("文件不是数据库"));
  EXPECT_TRUE(FailureOf([&] { SqliteConnection connection(file.Path("照片.db")); })
                  .description()
                  .starts_with("文件不是数据库"));
  EXPECT_TRUE(FailureOf([&] { SqliteConnection connection(file.Path("")); })
                  .description()
                  .starts_with("不是数据库，而是文件夹"));
  EXPECT_EQ(file.Read("空.db"), "");
}

TEST(SqliteConnection, DamagedDatabaseIsTold) {
  const DatabaseFile file(kPeople);
  std::string bytes = file.Read();
  ASSERT_GT(bytes.size(), 8000U);
  bytes.replace(4096, 100, std::string(100, '\xFF'));
  file.Write("坏.db", bytes);
  SqliteConnection connection(file.Path("坏.db"));
  EXPECT_TRUE(
      FailureOf([&] { connection.Run("select * from A01"); }).description().starts_with("数据库已损坏"));
}

TEST(SqliteConnection, ClosedConnectionFailsEveryStatement) {
  const auto connection = tests::OpenInMemory();
  connection->Close();
  connection->Close();
  EXPECT_FALSE(connection->IsOpen());
  const Failure failure = FailureOf([&] { connection->Run("select 1 from t"); });
  EXPECT_EQ(failure.number(), 3709);
  EXPECT_EQ(failure.statement(), "select 1 from t");
}

TEST(SqliteConnection, ClosedConnectionFailsEveryTransaction) {
  const auto connection = tests::OpenInMemory();
  connection->BeginTrans();
  connection->Close();
  EXPECT_EQ(FailureOf([&] { connection->BeginTrans(); }).number(), 3709);
  EXPECT_EQ(FailureOf([&] { connection->CommitTrans(); }).number(), 3709);
  EXPECT_EQ(FailureOf([&] { connection->RollbackTrans(); }).number(), 3709);
}

TEST(SqliteConnection, ATransactionThatIsOpenAtTheEndIsUndone) {
  const DatabaseFile file(kPeople);
  {
    SqliteConnection connection(file.Path());
    connection.BeginTrans();
    connection.Run("insert into A01(A00) values('P')");
    connection.Run("update A01 set A0101='王一'");
  }
  EXPECT_EQ(SqliteConnection(file.Path()).Execute("select count(*) from A01")->Fields(0), Value(0));
}

TEST(SqliteConnection, WhatTheEngineRolledBackIsNotGoneOnWith) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript(
      "create table t(n integer); create trigger no after insert on t when new.n > 5 "
      "begin select raise(rollback, 'too large'); end");
  connection->BeginTrans();
  connection->Run("insert into t(n) values(1)");
  connection->BeginTrans();
  EXPECT_EQ(FailureOf([&] { connection->Run("insert into t(n) values(9)"); }).number(),
            environment::kEngineFailure);
  const std::string refused = "数据库已经撤销了这个事务：请回滚后再重新开始。";
  EXPECT_EQ(FailureOf([&] { connection->Run("insert into t(n) values(2)"); }).description(), refused);
  EXPECT_EQ(FailureOf([&] { connection->Run("update t set n=3"); }).description(), refused);
  EXPECT_EQ(FailureOf([&] { connection->BeginTrans(); }).description(), refused);
  EXPECT_EQ(FailureOf([&] { connection->CommitTrans(); }).description(), refused);
  connection->RollbackTrans();
  EXPECT_EQ(FailureOf([&] { connection->CommitTrans(); }).description(), refused);
  connection->RollbackTrans();
  EXPECT_EQ(FailureOf([&] { connection->RollbackTrans(); }).number(), environment::kNoTransaction);
  EXPECT_EQ(connection->Execute("select count(*) from t")->Fields(0), Value(0));
  EXPECT_EQ(connection->BeginTrans(), 1);
  connection->Run("insert into t(n) values(4)");
  connection->CommitTrans();
  EXPECT_EQ(connection->Execute("select n from t")->Fields(0), Value(4));
}

TEST(SqliteConnection, TheContentOfAFileMakesACopyAlsoWhileItIsInUse) {
  const DatabaseFile file(kPeople);
  // Leaves the mark of a log in the file.
  SqliteConnection(file.Path()).Run("insert into A01(A00) values('P')");
  const std::string before = file.Read();
  const auto copy = tests::OpenInMemory(before);
  copy->Run("insert into A01(A00) values('Q')");
  EXPECT_EQ(copy->Execute("select count(*) from A01")->Fields(0), Value(2));
  EXPECT_EQ(file.Read(), before);
  EXPECT_EQ(tests::OpenInMemory(copy->Bytes())->Execute("select count(*) from A01")->Fields(0), Value(2));
}

TEST(SqliteConnection, BadBytesOfAStoredTextAreReplaced) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript(std::string(kPeople) + "insert into A01(A0101) values(cast(x'61FF62' as text))");
  EXPECT_EQ(connection->Execute("select a0101 from a01")->Fields(0), Value("a\xEF\xBF\xBD"
                                                                           "b"));
}

TEST(SqliteConnection, TableThatAnotherProgramMadeAnewIsSeenAnew) {
  const DatabaseFile file("create table t(a varchar(20))");
  SqliteConnection connection(file.Path());
  connection.Run("insert into t(a) values('1990年03月')");
  SqliteConnection(file.Path()).RunScript("drop table t; create table t(a datetime)");
  EXPECT_EQ(FailureOf([&] { connection.Run("insert into t(a) values('x')"); }).number(),
            environment::kDataMismatch);
  connection.Run("insert into t(a) values('1990年03月')");
  EXPECT_EQ(connection.Execute("select a from t")->Fields(0), Value(DateTime{1990, 3, 1}));
}

TEST(SqliteConnection, ARepeatedUpdateSeesATableThatAnotherProgramMadeAnew) {
  const DatabaseFile file("create table t(n integer, v varchar(20)); insert into t values(1, '');");
  SqliteConnection connection(file.Path());
  const auto store = [&](const std::string& value) {
    connection.Execute("update t set v='" + value + "' where n=1");
    return environment::TextOf(connection.Execute("select v from t")->Fields(0));
  };
  EXPECT_EQ(store("1990年03月"), "1990年03月");
  EXPECT_EQ(store("1991年03月"), "1991年03月");
  SqliteConnection(file.Path())
      .RunScript("drop table t; create table t(n integer, v datetime); insert into t values(1, null);");
  EXPECT_EQ(store("1992年03月"), "1992/3/1") << "the column is a date now";
  EXPECT_EQ(connection.Execute("select count(*) from t where v='1992-03-01'")->Fields(0), Value(1));
  SqliteConnection(file.Path())
      .RunScript("drop table t; create table t(n integer, v varchar(20)); insert into t values(1, '');");
  EXPECT_EQ(store("无"), "无") << "what was no date is a text now";
}

TEST(SqliteConnection, AnUpdateOfANewShapeSeesATableThatAnotherProgramMadeAnew) {
  const DatabaseFile file("create table t(n integer, v varchar(20)); insert into t values(1, '');");
  SqliteConnection connection(file.Path());
  for (const char* condition : {"n=1", "n<2"})
    connection.Run("update t set v='1990年03月' where " + std::string(condition));
  SqliteConnection(file.Path())
      .RunScript("drop table t; create table t(n integer, v datetime); insert into t values(1, null);");
  connection.Run("select n from t");  // the engine knows the new table by now
  connection.Run("update t set v='1990年03月' where n>0");
  EXPECT_EQ(connection.Execute("select count(*) from t where v='1990-03-01'")->Fields(0), Value(1));
}

TEST(SqliteConnection, ARepeatedUpdateThatFailsIsToldEachTime) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript("create table t(n integer check(n < 5)); insert into t values(1);");
  connection->Execute("update t set n=2");
  for (int i = 0; i < 2; ++i) {
    const std::string said = FailureOf([&] { connection->Execute("update t set n=9"); }).description();
    EXPECT_NE(said.find("违反了数据库的约束"), std::string::npos) << said;
  }
  connection->Execute("update t set n=3");
  EXPECT_EQ(environment::TextOf(connection->Execute("select n from t")->Fields(0)), "3");
}

TEST(SqliteConnection, NameInDoubleQuotesIsNeverAText) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript(kPeople);
  EXPECT_EQ(FailureOf([&] { connection->RunScript("select \"nothing\" from A01"); }).number(),
            environment::kUnknownName);
}

TEST(SqliteConnection, ConstraintsAndFailuresOfTriggersAreTold) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript("create table t(a integer not null)");
  const Failure failure = FailureOf([&] { connection->Run("insert into t(a) values(null)"); });
  EXPECT_TRUE(failure.description().starts_with("违反了数据库的约束")) << failure.description();
  EXPECT_EQ(failure.statement(), "insert into t(a) values(null)");
}

TEST(SqliteConnection, StatementWithoutItsEndIsASyntaxError) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript(kPeople);
  EXPECT_EQ(FailureOf([&] { connection->Run("select a00 from a01 where"); }).description(),
            "SQL 语句语法错误：语句不完整。");
  EXPECT_EQ(FailureOf([&] { connection->Run("select a00 from a01 where where a00=1"); }).description(),
            "SQL 语句语法错误：“where”附近有错。");
}

TEST(SqliteConnection, SeveralValuesInThePlaceOfOneAreToldInChinese) {
  const auto connection = tests::OpenInMemory();
  connection->RunScript(kPeople);
  EXPECT_EQ(
      FailureOf([&] { connection->Run("select a00 from a01 where (a00='x','y' or a00='z')"); }).description(),
      "SQL 语句语法错误：只要一个值的地方有多个值。");
}

TEST(SqliteConnection, LenIsTheEnginesOwnLength) {
  const auto rendered = [](std::string_view statement) {
    return jet::Translate(
               statement, [](std::string_view) { return nullptr; }, kRenderer)
        .text;
  };
  EXPECT_EQ(rendered("select a from T where LEN (a)=1 and len(b)=2 and x='len(c)'"),
            "select a from T where length (a)=1 and length(b)=2 and x='len(c)'");
  EXPECT_EQ(rendered("select len from T"), "select len from T");
}

// The tree of the codes reads a level of them at a time: it does not look at all the others.
TEST(SampleDatabase, ALevelOfCodesIsReadFromItsIndexAlone) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open_v2(tests::SampleDatabaseFile().c_str(), &database, SQLITE_OPEN_READONLY, nullptr),
            SQLITE_OK);
  const std::string query =
      "explain query plan select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr from GB2260 where  "
      "dmcod<>'' and dmcpt<>''  and length(dmcod) =4  order by dmcod";
  std::vector<std::string> plan;
  const auto keep = [](void* lines, int, char** columns, char**) {
    static_cast<std::vector<std::string>*>(lines)->push_back(columns[3]);
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(database, query.c_str(), keep, &plan, nullptr), SQLITE_OK);
  sqlite3_close(database);
  EXPECT_EQ(plan, std::vector<std::string>{"SEARCH GB2260 USING COVERING INDEX ix_GB2260_level (<expr>=?)"});
}

TEST(SampleDatabase, AnswersTheMenuAndHoldsEveryCodeTable) {
  std::ostringstream bytes;
  bytes << std::ifstream(tests::SampleDatabaseFile(), std::ios::binary).rdbuf();
  const auto connection = tests::OpenInMemory(bytes.str());
  const auto sets =
      connection->Execute("SELECT * FROM s_infotable where tblname like 'a%' order by OtherProp");
  EXPECT_GE(sets->RecordCount(), 15);
  const auto fields = connection->Execute("select codetable from s_infoitem where codetable<>''");
  ASSERT_GT(fields->RecordCount(), 0);
  for (std::int32_t row = 1; row <= fields->RecordCount(); ++row) {
    const std::string table = environment::TextOf(fields->ValueAt(row, 0));
    EXPECT_GT(connection->Execute("select dmcod from " + table + " where dmattr =true ")->RecordCount(), 0)
        << table;
  }
}

}  // namespace
}  // namespace dossierkit::sqlite
