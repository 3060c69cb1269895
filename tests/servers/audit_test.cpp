// Who changed which record when.
#include "host/server/audit.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "host/server/schema.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "tests/support/memory_database.h"
#include "tests/support/program.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

constexpr char kDatabase[] = "audit";

class Audit : public testing::Test {
 protected:
  Audit() {
    fs::create_directories(folder_);
    MakeDatabase(engine_, kDatabase);
    const auto source = OpenInMemory();
    source->RunScript(
        "create table s_infotable (tblname varchar(10) collate nocase);"
        "create table S_GUID (id varchar(38) collate nocase default ('x'), val varchar(10));"
        "create table A01 (A00 varchar(36) collate nocase, A0101 varchar(20) collate nocase, A0199 integer);"
        "create table A02 (A00 varchar(36) collate nocase, A0202 ntext collate nocase, A0203 datetime, "
        "A0204 boolean, A0205 double, A0299 integer);"
        "create table A12 (A00 varchar(36) collate nocase, A1201 varchar(20) collate nocase);");
    database_ = OpenServer(engine_, kDatabase);
    server::CopyDatabase(server::StoreOf(*source), server::StoreOf(*database_));
  }
  ~Audit() override { fs::remove_all(folder_); }

  Outcome History(const std::string& person) {
    return RunProgram(
        folder_, "history --person '" + person + "' --connection '" + ServerString(engine_, kDatabase) + "'");
  }

  Outcome Restore(const std::string& number) {
    return RunProgram(
        folder_, "restore --change '" + number + "' --connection '" + ServerString(engine_, kDatabase) + "'");
  }
  // The number of a person's change, from 0, the last one by default.
  std::int64_t Change(std::size_t index = 1000) {
    const auto changes = server::HistoryOf(*database_, "P");
    return changes.at(std::min(index, changes.size() - 1)).number;
  }
  std::string Rows(const std::string& query) {
    const auto rows = database_->Execute(query);
    std::string text;
    for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
      for (std::size_t column = 0; column < rows->FieldCount(); ++column)
        text += (column > 0 ? "|" : "") + environment::TextOr(rows->ValueAt(row, column), "NULL");
      text += "\n";
    }
    return text;
  }
  std::string Told(std::int64_t number) {
    try {
      server::RestoreRecord(*database_, number);
      return "restored";
    } catch (const environment::Failure& failure) {
      return failure.description();
    }
  }

  const std::string engine_ = ServerOfThisRun();
  std::shared_ptr<odbc::OdbcConnection> database_;
  fs::path folder_ = fs::temp_directory_path() / ("dossier-audit-" + std::to_string(getpid()));
};

TEST_F(Audit, EveryChangeIsWrittenDownOnceWithBothRows) {
  server::PrepareAudit(*database_);
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('p','甲',1)");
  database_->Run("insert into A02(A00,A0202,A0299) values('P','学','1')");
  database_->Run("update A02 set A0202 = '院' where A00='P' and A0299 = 1");
  database_->Run("update A02 set A0202 = '院' where A00='P' and A0299 = 1");
  database_->Run("insert into A02(A00,A0202,A0299) values('Q','他人的','1')");
  database_->Run("delete from A01 where A00='P' ");
  const auto changes = server::HistoryOf(*database_, "P");
  ASSERT_EQ(changes.size(), 5U) << "an update that changes nothing is none";
  EXPECT_EQ(changes[0].action + " " + changes[0].table, "insert a01");
  EXPECT_EQ(changes[0].before, "");
  EXPECT_NE(changes[0].after.find("\"甲\""), std::string::npos) << changes[0].after;
  EXPECT_EQ(changes[1].action + " " + changes[1].table, "insert a02");
  EXPECT_EQ(changes[2].action + " " + changes[2].table, "update a02");
  EXPECT_NE(changes[2].before.find("\"学\""), std::string::npos) << changes[2].before;
  EXPECT_NE(changes[2].after.find("\"院\""), std::string::npos) << changes[2].after;
  std::string deleted;
  for (int i : {3, 4}) {
    const auto& change = changes[static_cast<std::size_t>(i)];
    EXPECT_EQ(change.action, "delete");
    EXPECT_EQ(change.after, "");
    deleted += change.table;
  }
  EXPECT_TRUE(deleted == "a01a02" || deleted == "a02a01") << "his rows went with him: " << deleted;
  for (const server::Change& change : changes) {
    EXPECT_TRUE(change.user.starts_with("dossierkit")) << change.user;
    ASSERT_EQ(change.time.size(), 19U) << change.time;
    EXPECT_EQ(change.time[10], ' ');
  }
  EXPECT_EQ(server::HistoryOf(*database_, "nobody").size(), 0U);
}

TEST_F(Audit, AChangeOfACaseOrAnAccentIsOne) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','abc',1)");
  const std::vector<std::string> texts = {"abc", "ABC", "é", "e", "𠮷", "𠀀", "e ", "e"};
  for (std::size_t i = 1; i < texts.size(); ++i)
    database_->Run("update A01 set A0101 = '" + texts[i] + "' where A00='P'");
  const auto changes = server::HistoryOf(*database_, "P");
  ASSERT_EQ(changes.size(), texts.size());
  for (std::size_t i = 1; i < texts.size(); ++i) {
    EXPECT_EQ(changes[i].action, "update");
    EXPECT_NE(changes[i].before.find("\"" + texts[i - 1] + "\""), std::string::npos) << changes[i].before;
    EXPECT_NE(changes[i].after.find("\"" + texts[i] + "\""), std::string::npos) << changes[i].after;
  }
  server::RestoreRecord(*database_, changes[1].number);
  EXPECT_EQ(Rows("select A0101 from A01"), "abc\n");
}

TEST_F(Audit, TheHistoryIsShownLineByLine) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A02(A00,A0202,A0299) values('P','学','1')");
  database_->Run("update A02 set A0202 = '院' where A00='P' and A0299 = 1");
  const Outcome outcome = History("P");
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  EXPECT_NE(outcome.out.find(" A02 增加\n  后 {\"a00\""), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find(" A02 修改\n  前 {\"a00\""), std::string::npos) << outcome.out;
}

TEST_F(Audit, ADeletedRecordComesBackWithAllItsValues) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  std::string text = "引号\" 反斜杠\\ 换行\r\n{\"a\": [1]}";
  for (int i = 0; i < 20000; ++i) text += "进";
  database_->Run("insert into A02(A00,A0202,A0203,A0204,A0205,A0299) values('P','" + text +
                 "','1990年03月',true,'2.5','1')");
  database_->Run("insert into A02(A00,A0299) values('P','2')");
  const std::string before = Rows("select * from A02 order by A0299");
  database_->Run("delete from A02 where A00='P'  and A0299 = 1");
  const Outcome outcome = Restore(std::to_string(Change()));
  EXPECT_EQ(outcome.out, "已恢复 P 的 A02 第 1 条。\n") << outcome.error;
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(Rows("select * from A02 order by A0299"), before);
  database_->Run("delete from A02 where A00='P'  and A0299 = 2");
  server::RestoreRecord(*database_, Change());
  EXPECT_EQ(Rows("select * from A02 order by A0299"), before) << "and what was NULL";
  EXPECT_EQ(server::HistoryOf(*database_, "P").back().action, "insert") << "it is a change like any other";
}

TEST_F(Audit, ARecordWhoseNumberIsTakenGetsTheNextAndOverwritesNone) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  database_->Run("insert into A02(A00,A0202,A0299) values('P','旧','1')");
  database_->Run("insert into A02(A00,A0202,A0299) values('P','二','2')");
  database_->Run("insert into A02(A00,A0202,A0299) values('Q','他人的','7')");
  database_->Run("update A02 set A0202 = '新' where A00='P' and A0299 = 1");
  const server::RestoredRecord restored = server::RestoreRecord(*database_, Change());
  EXPECT_EQ(restored.person, "P");
  EXPECT_EQ(restored.table, "a02");
  EXPECT_EQ(restored.number, 3);
  EXPECT_EQ(Rows("select A0202, A0299 from A02 where A00='P' order by A0299"), "新|1\n二|2\n旧|3\n");
}

TEST_F(Audit, ARecordThatHadNoNumberComesBehindTheOthers) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  database_->Run("insert into A02(A00,A0202) values('P','学')");
  database_->Run("delete from A02 where A00='P'");
  const std::int64_t change = Change();
  EXPECT_EQ(server::RestoreRecord(*database_, change).number, 1) << "the first where there is none";
  database_->Run("update A02 set A0299 = 4 where A00='P'");
  EXPECT_EQ(server::RestoreRecord(*database_, change).number, 5);
  EXPECT_EQ(Rows("select A0202, A0299 from A02 order by A0299"), "学|4\n学|5\n");
}

TEST_F(Audit, ASetOfOneRecordIsPutBackAsItWas) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  database_->Run("insert into A02(A00,A0202,A0299) values('P','学','1')");
  database_->Run("insert into A12(A00,A1201) values('P','旧')");
  database_->Run("insert into A12(A00,A1201) values('Q','他人的')");
  database_->Run("update A12 set A1201 = '新' where A00='P'");
  EXPECT_EQ(server::RestoreRecord(*database_, Change()).number, std::nullopt);
  EXPECT_EQ(Rows("select * from A12 order by A00"), "P|旧\nQ|他人的\n");
  database_->Run("delete from A12 where A00='P' ");
  server::RestoreRecord(*database_, Change());
  EXPECT_EQ(Rows("select * from A12 order by A00"), "P|旧\nQ|他人的\n");
  database_->Run("update A01 set A0101 = '乙' where A00='P'");
  EXPECT_EQ(Restore(std::to_string(Change())).out, "已恢复 P 的 A01。\n");
  EXPECT_EQ(Rows("select * from A01"), "P|甲|1\n");
  EXPECT_EQ(Rows("select A0202 from A02"), "学\n") << "the person's other records stay";
}

TEST_F(Audit, APersonComesBackBeforeHisRecords) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  database_->Run("insert into A02(A00,A0202,A0299) values('P','学','1')");
  database_->Run("delete from A01 where A00='P' ");
  const auto changes = server::HistoryOf(*database_, "P");
  ASSERT_EQ(changes.size(), 4U);
  const std::int64_t person = changes[changes[2].table == "a01" ? 2 : 3].number;
  const std::int64_t record = changes[changes[2].table == "a02" ? 2 : 3].number;
  EXPECT_EQ(Told(record), "此人已被删除，请先恢复其 A01 的记录。");
  EXPECT_EQ(Told(person), "restored");
  EXPECT_EQ(Told(record), "restored");
  EXPECT_EQ(Rows("select * from A01"), "P|甲|1\n");
  EXPECT_EQ(Rows("select A00, A0202, A0299 from A02"), "P|学|1\n");
}

TEST_F(Audit, WhatCannotBeRestoredIsTold) {
  server::PrepareAudit(*database_);
  EXPECT_EQ(Told(1), "没有第 1 号修改。");
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  const std::string number = std::to_string(Change());
  EXPECT_EQ(Told(Change()), "第 " + number + " 号修改是增加，在它之前没有可以恢复的记录。");
  const Outcome outcome = Restore(number);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error, "dossier: 第 " + number + " 号修改是增加，在它之前没有可以恢复的记录。\n");
  database_->Run("insert into A12(A00,A1201) values('P','旧')");
  database_->Run("delete from A12 where A00='P' ");
  database_->RunNative("drop table " + server::QuotedName(database_->EngineName(), "A12"));
  EXPECT_EQ(Told(Change()), "第 " + std::to_string(Change()) + " 号修改所在的表 A12 已经不在数据库中。");
  EXPECT_EQ(Rows("select * from A01"), "P|甲|1\n");
}

// Both rows would become one, the numbers of the persons as well, and no care could tell them apart again.
TEST_F(Audit, ASetOfOneRecordWithSeveralRowsIsLeftAlone) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲',1)");
  database_->Run("update A01 set A0101 = '乙' where A00='P'");
  const std::int64_t change = Change();
  database_->Run("insert into A01(A00,A0101,A0199) values('p','丙',2)");
  EXPECT_EQ(Told(change), "此人在 A01 中有 2 行，不能确定恢复哪一行，没有做任何改动：请先去掉多余的行。");
  EXPECT_EQ(Rows("select A0101, A0199 from A01 order by A0199"), "乙|1\n丙|2\n");
  database_->Run("delete from A01 where A0199=2");
  EXPECT_EQ(Told(change), "restored");
  EXPECT_EQ(Rows("select A0101, A0199 from A01"), "甲|1\n");
}

// A row that its table does not take any more.
TEST_F(Audit, ARestoreThatFailsLeavesEverything) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A01(A00,A0101,A0199) values('P','甲乙丙',1)");
  database_->Run("update A01 set A0101 = '丁' where A00='P'");
  database_->RunNative(engine_ == "postgresql" ? "alter table a01 alter column a0101 type varchar(1)"
                                               : "alter table A01 modify A0101 varchar(1)");
  const auto before = server::HistoryOf(*database_, "P").size();
  EXPECT_THROW(server::RestoreRecord(*database_, Change()), environment::Failure);
  EXPECT_EQ(Rows("select * from A01"), "P|丁|1\n");
  EXPECT_EQ(server::HistoryOf(*database_, "P").size(), before);
  EXPECT_EQ(database_->BeginTrans(), 1) << "no transaction is left open";
  database_->RollbackTrans();
}

TEST_F(Audit, AServerWithoutOneSaysSo) {
  EXPECT_EQ(Told(1), "数据库没有记录修改，请由管理员运行 dossier create-audit，此后的修改才会记录。");
  const Outcome outcome = History("P");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error,
            "dossier: 数据库没有记录修改，请由管理员运行 dossier create-audit，此后的修改才会记录。\n");
}

}  // namespace
}  // namespace dossierkit::tests
