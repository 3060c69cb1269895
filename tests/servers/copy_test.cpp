// A whole database moved from one engine to another.
#include "host/server/copy.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/schema.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/environment/value.h"
#include "tests/support/failing_connection.h"
#include "tests/support/memory_database.h"
#include "tests/support/paths.h"
#include "tests/support/program.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;
using server::StoreOf;

using Figures = std::map<std::string, std::pair<std::int64_t, std::uint64_t>>;

// By the tables' names in small letters.
Figures FiguresOf(const std::vector<server::CopiedTable>& tables) {
  Figures figures;
  for (const server::CopiedTable& table : tables)
    figures[environment::LowerCase(table.name)] = {table.rows, table.checksum};
  return figures;
}

std::vector<std::string> SortedIndexes(const server::Schema& schema) {
  std::vector<std::string> indexes;
  for (const server::Index& index : schema.indexes) {
    std::string line = index.name + " " + index.table + (index.is_unique ? " unique" : "");
    for (const std::string& item : index.items) line += " " + item;
    indexes.push_back(environment::LowerCase(line));
  }
  std::sort(indexes.begin(), indexes.end());
  return indexes;
}

class Copying : public testing::Test {
 protected:
  Copying() {
    fs::create_directories(folder_);
    MakeDatabase(engine_, "copied");
  }
  ~Copying() override { fs::remove_all(folder_); }

  Outcome Copy(const std::string& from, const std::string& to) {
    return RunProgram(folder_, "copy --from '" + from + "' --to '" + to + "'");
  }
  std::string In(const std::string& name) const { return (folder_ / name).string(); }
  // Whatever a copy makes is gone.
  void ExpectNothingMade() {
    MakeDatabaseOfNothing();
    EXPECT_TRUE(server::SchemaOf(StoreOf(*server_)).tables.empty());
  }

  void MakeDatabaseOfNothing() { server_ = OpenServer(engine_, "copied"); }

  const std::string engine_ = ServerOfThisRun();
  const std::string string_ = ServerString(engine_, "copied");
  std::shared_ptr<odbc::OdbcConnection> server_;
  fs::path folder_ = fs::temp_directory_path() / ("dossier-copying-" + std::to_string(getpid()));
};

TEST_F(Copying, FromEngineToEngineAndBackKeepsEveryChecksum) {
  MakeDatabase("postgresql", "copied");
  MakeDatabase("mariadb", "copied");
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  const auto postgresql = OpenServer("postgresql", "copied");
  const auto mariadb = OpenServer("mariadb", "copied");
  sqlite::SqliteConnection::CreateFile(In("back.db"));
  sqlite::SqliteConnection back(In("back.db"));
  const auto begin = FiguresOf(server::ChecksumsOf(StoreOf(sample)));
  ASSERT_EQ(begin.size(), 39U) << "all tables but S_GUID";
  EXPECT_EQ(begin.at("a01").first, 12);
  EXPECT_EQ(FiguresOf(server::CopyDatabase(StoreOf(sample), StoreOf(*postgresql))), begin);
  EXPECT_EQ(FiguresOf(server::CopyDatabase(StoreOf(*postgresql), StoreOf(*mariadb))), begin);
  EXPECT_EQ(FiguresOf(server::CopyDatabase(StoreOf(*mariadb), StoreOf(back))), begin);
  EXPECT_EQ(FiguresOf(server::ChecksumsOf(StoreOf(back))), begin);
  // With its indexes, among them those that MariaDB cannot have.
  EXPECT_EQ(SortedIndexes(server::SchemaOf(StoreOf(back))), SortedIndexes(server::SchemaOf(StoreOf(sample))));
  // And its triggers: a person's rows go with him.
  back.Run("delete from A01 where A0199=1");
  EXPECT_EQ(*back.Run("select count(*) from A02 where A00 not in (select A00 from A01)")
                 .ValueAt(0, 0)
                 .As<std::int64_t>(),
            0);
  EXPECT_LT(*back.Run("select count(*) from A02").ValueAt(0, 0).As<std::int64_t>(), begin.at("a02").first);
}

TEST_F(Copying, IndexesThatBearOneNameOnMariadbComeToAnyEngine) {
  MakeDatabase("postgresql", "copied");
  MakeDatabase("mariadb", "copied");
  const auto mariadb = OpenServer("mariadb", "copied");
  for (const std::string table : {"GB1", "GB2"})
    mariadb->RunNative("create table " + table + " (dmcod varchar(10), key dmcod (dmcod))");
  const auto postgresql = OpenServer("postgresql", "copied");
  const auto file = OpenInMemory();
  for (const server::Store& to : {StoreOf(*postgresql), StoreOf(*file)}) {
    EXPECT_EQ(Told([&] { server::CopyDatabase(StoreOf(*mariadb), to); }), "");
    EXPECT_EQ(SortedIndexes(server::SchemaOf(to)),
              (std::vector<std::string>{"dmcod gb1 dmcod", "gb2_dmcod gb2 dmcod"}));
  }
}

TEST_F(Copying, TheCommandSaysWhatItCompared) {
  const Outcome there = Copy(SampleDatabaseFile(), string_);
  EXPECT_EQ(there.code, 0) << there.error;
  EXPECT_EQ(there.error, "") << "no bar where no terminal is";
  EXPECT_NE(there.out.find("A01：12 行，校验和 "), std::string::npos) << there.out;
  EXPECT_NE(there.out.find("共 39 张表、"), std::string::npos) << there.out;
  EXPECT_NE(there.out.find("已经复制，核对一致。\n"), std::string::npos) << there.out;
  const Outcome back = Copy(string_, In("back.db"));
  EXPECT_EQ(back.code, 0) << back.error;
  const auto lines = [](const std::string& out) {
    auto sorted = environment::Split(environment::LowerCase(out), "\n");
    std::sort(sorted.begin(), sorted.end());
    return sorted;
  };
  EXPECT_EQ(lines(back.out), lines(there.out));
  const Outcome check = RunProgram(folder_, "check --database '" + In("back.db") + "'");
  EXPECT_EQ(check.code, 0) << check.out << check.error;
  EXPECT_FALSE(fs::exists(In("back.db.copying")));
}

TEST_F(Copying, TheBarEndsAtAHundred) {
  const std::string command = "copy --from " + SampleDatabaseFile() + " --to " + In("b.db");
  const std::string typescript = In("typescript");
  ASSERT_EQ(std::system(("script -qec '\"" + DossierProgram() + "\" " + command + "' /dev/null >'" +
                         typescript + "' </dev/null")
                            .c_str()),
            0);
  const std::string shown = Read(typescript);
  EXPECT_NE(shown.find("\r[----------------------------------------] 0%"), std::string::npos) << shown;
  EXPECT_NE(shown.find("\r[########################################] 100%"), std::string::npos) << shown;
}

TEST_F(Copying, ATargetThatIsNotEmptyIsRefused) {
  OpenServer(engine_, "copied")->RunNative("create table of_another (a integer)");
  const Outcome outcome = Copy(SampleDatabaseFile(), string_);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.error, "dossier: 数据库中已有表 of_another，没有做任何改动：请指定一个空的数据库。\n");
  std::ofstream(In("there.db")) << "mine";
  const Outcome file = Copy(SampleDatabaseFile(), In("there.db"));
  EXPECT_EQ(file.code, 1);
  EXPECT_EQ(file.error, "dossier: 无法建立数据库 " + In("there.db") + "（已有文件 " + In("there.db") +
                            "），请换一个位置。\n");
  EXPECT_EQ(Read(In("there.db")), "mine");
}

TEST_F(Copying, AFailureAtAnyStatementLeavesNothing) {
  const auto sample = std::make_shared<sqlite::SqliteConnection>(SampleDatabaseFile());
  for (const std::size_t statement : {3U, 80U}) {
    FailingConnection failing(sample);
    failing.FailAt(statement);
    server::Store from = StoreOf(*sample);
    from.connection = &failing;
    {
      const auto server = OpenServer(engine_, "copied");
      EXPECT_THROW(server::CopyDatabase(from, StoreOf(*server)), environment::Failure);
    }
    EXPECT_TRUE(failing.HasFailed());
    ExpectNothingMade();
  }
  // At the target: its k-th statement fails.
  for (const int k : {2, 60, 103}) {
    {
      const auto server = OpenServer(engine_, "copied");
      server::Store to = StoreOf(*server);
      int count = 0;
      to.run_native = [&](const std::string& text) {
        if (++count == k) throw environment::Failure(environment::kEngineFailure, "磁盘已满。");
        return server->RunNative(text);
      };
      EXPECT_THROW(server::CopyDatabase(StoreOf(*sample), to), environment::Failure) << k;
      EXPECT_GE(count, k);
    }
    ExpectNothingMade();
  }
}

// From some statement on nothing reaches the target any more.
TEST_F(Copying, WhatIsLeftWhereAServerGoesAwayIsClearedAwayByTheNextCopy) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  const auto begin = FiguresOf(server::ChecksumsOf(StoreOf(sample)));
  for (const std::string last : {"insert into", "create trigger tr_a01_number"}) {
    SCOPED_TRACE(last);
    MakeDatabase(engine_, "copied");
    {
      const auto server = OpenServer(engine_, "copied");
      server::Store to = StoreOf(*server);
      bool has_gone = false;
      to.run_native = [&](const std::string& text) {
        if (has_gone) throw environment::Failure(environment::kEngineFailure, "与数据库服务器的连接已断开。");
        has_gone = environment::LowerCase(text).starts_with(last);
        return server->RunNative(text);
      };
      EXPECT_THROW(server::CopyDatabase(StoreOf(sample), to), environment::Failure);
      EXPECT_TRUE(has_gone);
    }
    const auto server = OpenServer(engine_, "copied");
    EXPECT_EQ(server::SchemaOf(StoreOf(*server)).tables.empty(), engine_ == "postgresql");
    EXPECT_EQ(FiguresOf(server::CopyDatabase(StoreOf(sample), StoreOf(*server))), begin);
    EXPECT_EQ(FiguresOf(server::ChecksumsOf(StoreOf(*server))), begin);
    EXPECT_THROW(server::CopyDatabase(StoreOf(sample), StoreOf(*server)), environment::Failure);
    EXPECT_EQ(server::SchemaOf(StoreOf(*server)).tables.size(), 40U) << "what was completed stays";
  }
}

// A table of somebody else, who took what was left for his.
TEST_F(Copying, NoTableOfAnotherIsClearedAway) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  const auto server = OpenServer(engine_, "copied");
  if (engine_ != "postgresql")
    server->RunNative("create table dossierkit_unfinished (n integer primary key)");
  server->RunNative("create table of_another (a integer)");
  EXPECT_EQ(Copy(SampleDatabaseFile(), string_).error,
            "dossier: 数据库中已有表 of_another，没有做任何改动：请指定一个空的数据库。\n");
  EXPECT_EQ(environment::TextOf(server->RunNative("select count(*) from of_another").ValueAt(0, 0)), "0");
}

TEST_F(Copying, OfTwoIntoOneDatabaseTheSecondIsToldAndTheFirstIsCompleted) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  sqlite::SqliteConnection same(SampleDatabaseFile());
  const auto one = OpenServer(engine_, "copied");
  odbc::OdbcConnection other(string_, std::chrono::milliseconds(200));
  std::string told;
  const auto copied =
      server::CopyDatabase(StoreOf(sample), StoreOf(*one), [&](std::int64_t done, std::int64_t) {
        if (done == 0 || !told.empty()) return;
        try {
          server::CopyDatabase(StoreOf(same), StoreOf(other));
          told = "copied";
        } catch (const environment::Failure& failure) {
          told = failure.description();
        }
      });
  EXPECT_EQ(told, "数据库正被占用，请稍后再试。");
  EXPECT_EQ(FiguresOf(copied), FiguresOf(server::ChecksumsOf(StoreOf(*one))));
  EXPECT_EQ(copied.size(), 39U);
  EXPECT_EQ(server::SchemaOf(StoreOf(*one)).tables.size(), 40U) << "and S_GUID";
  try {
    server::CopyDatabase(StoreOf(same), StoreOf(other));
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_TRUE(failure.description().starts_with("数据库中已有表 ")) << failure.description();
  }
}

// The second one waits as long as any command does.
TEST_F(Copying, OfTwoIntoOneDatabaseNoneDestroysWhatTheOtherCompletes) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  const auto one = OpenServer(engine_, "copied");
  std::string told;
  std::atomic<bool> has_ended = false;
  std::thread second;
  const auto copied =
      server::CopyDatabase(StoreOf(sample), StoreOf(*one), [&](std::int64_t done, std::int64_t) {
        if (done == 0 || second.joinable()) return;
        second = std::thread([&] {
          sqlite::SqliteConnection same(SampleDatabaseFile());
          const auto other = OpenServer(engine_, "copied");
          try {
            server::CopyDatabase(StoreOf(same), StoreOf(*other));
            told = "copied";
          } catch (const environment::Failure& failure) {
            told = failure.description();
          }
          has_ended = true;
        });
        for (int i = 0; i < 200 && !has_ended; ++i)
          std::this_thread::sleep_for(std::chrono::milliseconds(10));
      });
  second.join();
  EXPECT_EQ(told, "数据库正被占用，请稍后再试。");
  EXPECT_EQ(FiguresOf(server::ChecksumsOf(StoreOf(*one))), FiguresOf(copied));
  EXPECT_EQ(server::SchemaOf(StoreOf(*one)).tables.size(), 40U) << "and S_GUID";
}

// The first one loses its session and finds that out once another copy is complete.
TEST_F(Copying, WhatAnotherCompletedMeanwhileStays) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  sqlite::SqliteConnection same(SampleDatabaseFile());
  const auto one = OpenServer(engine_, "copied");
  const auto other = OpenServer(engine_, "copied");
  const bool is_postgresql = engine_ == "postgresql";
  const std::string session = environment::TextOf(
      one->RunNative(is_postgresql ? "select pg_backend_pid()" : "select connection_id()").ValueAt(0, 0));
  std::vector<server::CopiedTable> completed;
  server::Store to = StoreOf(*one);
  to.run_native = [&](const std::string& text) {
    if (completed.empty() && text.starts_with("insert into")) {
      other->RunNative(is_postgresql ? "select pg_terminate_backend(" + session + ", 60000)"
                                     : "kill " + session);
      // A session that is killed keeps what it holds for a moment.
      WaitUntil([&] {
        return Told([&] { completed = server::CopyDatabase(StoreOf(same), StoreOf(*other)); }).empty();
      });
    }
    return one->RunNative(text);
  };
  const std::string told = Told([&] { server::CopyDatabase(StoreOf(sample), to); });
  EXPECT_NE(told.find(kLost), std::string::npos) << told;
  EXPECT_EQ(completed.size(), 39U);
  EXPECT_EQ(FiguresOf(server::ChecksumsOf(StoreOf(*other))), FiguresOf(completed));
}

// A connection that goes away once the server has stored a transaction.
class SilentAtTheEnd : public FailingConnection {
 public:
  using FailingConnection::FailingConnection;
  void CommitTrans() override {
    FailingConnection::CommitTrans();
    throw environment::Failure(environment::kEngineFailure, "与数据库服务器的连接已断开。");
  }
};

TEST_F(Copying, WhoseLastAnswerIsLostLeavesNothing) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  {
    const auto server = OpenServer(engine_, "copied");
    SilentAtTheEnd silent(server);
    server::Store to = StoreOf(*server);
    to.connection = &silent;
    EXPECT_EQ(Told([&] { server::CopyDatabase(StoreOf(sample), to); }), "与数据库服务器的连接已断开。");
  }
  ExpectNothingMade();
}

TEST_F(Copying, ARowThatTheTargetCannotHoldIsNamed) {
  const auto source = OpenInMemory();
  source->RunScript(
      "create table A01 (A00 varchar(3) collate nocase); insert into A01 values ('abc'), ('abcd');");
  const auto server = OpenServer(engine_, "copied");
  try {
    server::CopyDatabase(StoreOf(*source), StoreOf(*server));
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.description(), "表 A01 的第 1 至 2 行不能写入（语句或数据太长。），没有复制任何数据。");
  }
  ExpectNothingMade();
}

// Made by a host, in words of its own.
TEST_F(Copying, AFileOfAHostComesOverAndItsDefaultsDrawNoIdentifier) {
  const auto source = OpenInMemory();
  source->RunScript(
      "CREATE TABLE [A01] (\n\t[A00]\tVARCHAR(36) COLLATE NOCASE NOT NULL,\n\t`A0150` TEXT DEFAULT '',\n"
      "\t[A0199]\tINT DEFAULT 0);\nCREATE INDEX ix_unique ON [A01] ([A0199]);"
      "create table A12 (A00 varchar(36) collate nocase); insert into A01 values ('P', '', 1), ('Q', 'x', "
      "null);");
  const auto server = OpenServer(engine_, "copied");
  const auto there = FiguresOf(server::CopyDatabase(StoreOf(*source), StoreOf(*server)));
  EXPECT_EQ(FiguresOf(server::ChecksumsOf(StoreOf(*source))), there);
  server->Run("insert into A01(A00,A0199) values('R',1)");
  const auto rows = server->Execute("select A0150, A0199 from A01 where A00='R'");
  EXPECT_EQ(environment::TextOr(rows->Fields(0), "NULL"), "NULL");
  EXPECT_EQ(environment::TextOr(rows->Fields(1), "NULL"), "2")
      << "the number of another is taken, and no index is unique";
  EXPECT_THROW(server->Run("insert into A01(A0199) values(7)"), environment::Failure);
  source->RunScript("create table pictures (id integer, content blob)");
  MakeDatabase(engine_, "copied_of_host");
  const auto empty = OpenServer(engine_, "copied_of_host");
  EXPECT_EQ(Told([&] { server::CopyDatabase(StoreOf(*source), StoreOf(*empty)); }),
            "表 pictures 的列 content 的类型“BLOB”不能复制，没有做任何改动：请改用本系统的类型。");
}

// Another program that writes meanwhile does not come between the tables.
TEST_F(Copying, WhatDiffersBehindTheCopyIsToldAndTakenBack) {
  const auto sample = std::make_shared<sqlite::SqliteConnection>(SampleDatabaseFile());
  const auto server = OpenServer(engine_, "copied");
  server::Store to = StoreOf(*server);
  to.run_native = [&](const std::string& text) {
    auto rows = server->RunNative(text);
    if (text.find("insert into") == 0 && text.find("A01") < 20)
      server->RunNative("update a01 set a0101 = 'x'");
    if (text.find("insert into") == 0 && text.find("a01") < 20)
      server->RunNative("update a01 set a0101 = 'x'");
    return rows;
  };
  try {
    server::CopyDatabase(StoreOf(*sample), to);
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.description(),
              "表 A01 复制后与原来不一致（原有 12 行，现有 12 行），没有复制任何数据。");
  }
  ExpectNothingMade();
}

TEST_F(Copying, APasswordStandsInNoMessage) {
  std::string password;
  for (const std::string& attribute : environment::Split(string_, ";")) {
    if (attribute.starts_with("Pwd=")) password = attribute.substr(4);
  }
  const std::string missing = environment::Replace(string_, "Database=copied", "Database=no_such_database");
  for (const auto& [from, to] : {std::pair(missing, In("c.db")), std::pair(SampleDatabaseFile(), missing)}) {
    const Outcome outcome = Copy(from, to);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.error.find("no_such_database"), std::string::npos) << outcome.error;
    EXPECT_EQ((outcome.out + outcome.error).find(password), std::string::npos) << outcome.error;
  }
}

// Texts, numbers and dates at their limits.
TEST_F(Copying, ValuesAtTheirLimitsComeBack) {
  const auto source = OpenInMemory();
  source->RunScript(
      "create table T (t varchar(60) collate nocase, l ntext collate nocase, i integer, s smallint, d "
      "datetime, "
      "b boolean, f double); insert into T values "
      "('''\\\"%_{}?;--', '𠀀甲' || char(10) || char(13) || char(9), 2147483647, -32768, '1000-01-01', 1, "
      "0.1), "
      "('', ' a ', -2147483648, 32767, '9999-12-31 23:59:59', 0, -15000000000.25), "
      "(null, null, null, null, null, null, null), ('a', 'A', 0, 0, '1990-03-01', 1, 0);");
  const auto server = OpenServer(engine_, "copied");
  const auto there = FiguresOf(server::CopyDatabase(StoreOf(*source), StoreOf(*server)));
  const auto back = OpenInMemory();
  EXPECT_EQ(FiguresOf(server::CopyDatabase(StoreOf(*server), StoreOf(*back))), there);
  EXPECT_EQ(FiguresOf(server::ChecksumsOf(StoreOf(*source))), FiguresOf(server::ChecksumsOf(StoreOf(*back))));
  EXPECT_EQ(there.at("t").first, 4);
  // A checksum that says nothing would say that two tables are equal.
  back->RunScript("update T set t = 'A' where t = 'a'");
  EXPECT_NE(FiguresOf(server::ChecksumsOf(StoreOf(*back))), there);
}

}  // namespace
}  // namespace dossierkit::tests
