// Who changed which record when.
#include "host/server/audit.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
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
        "create table A02 (A00 varchar(36) collate nocase, A0202 ntext collate nocase, A0299 integer);");
    database_ = OpenServer(engine_, kDatabase);
    server::CopyDatabase(server::StoreOf(*source), server::StoreOf(*database_));
  }
  ~Audit() override { fs::remove_all(folder_); }

  Outcome History(const std::string& person) {
    return RunProgram(
        folder_, "history --person '" + person + "' --connection '" + ServerString(engine_, kDatabase) + "'");
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

TEST_F(Audit, TheHistoryIsShownLineByLine) {
  server::PrepareAudit(*database_);
  database_->Run("insert into A02(A00,A0202,A0299) values('P','学','1')");
  database_->Run("update A02 set A0202 = '院' where A00='P' and A0299 = 1");
  const Outcome outcome = History("P");
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  EXPECT_NE(outcome.out.find(" A02 增加\n  后 {\"a00\""), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find(" A02 修改\n  前 {\"a00\""), std::string::npos) << outcome.out;
}

TEST_F(Audit, AServerWithoutOneSaysSo) {
  const Outcome outcome = History("P");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error,
            "dossier: 数据库没有记录修改，请由管理员运行 dossier create-audit，此后的修改才会记录。\n");
}

}  // namespace
}  // namespace dossierkit::tests
