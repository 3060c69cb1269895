// A database made on a server, by the command and by the library.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "host/server/schema.h"
#include "platform/ado/recordset.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/program.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

constexpr char kDatabase[] = "made";

// All rows of a table as lines, in an order of their own.
std::vector<std::string> Lines(ado::Connection& database, const std::string& table) {
  const auto rows = database.Execute("select * from " + table);
  std::vector<std::string> lines;
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    std::string line;
    for (std::size_t column = 0; column < rows->FieldCount(); ++column)
      line += "|" + environment::TextOr(rows->ValueAt(row, column), "NULL");
    lines.push_back(line);
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

class Creation : public testing::Test {
 protected:
  Creation() {
    fs::create_directories(folder_);
    MakeDatabase(engine_, kDatabase);
  }
  ~Creation() override { fs::remove_all(folder_); }

  Outcome Run(const std::string& command, const std::string& connection) {
    return RunProgram(folder_, command + " --connection '" + connection + "'",
                      "env -u DISPLAY -u QT_QPA_PLATFORM ");
  }
  std::int64_t TableCount() {
    const auto rows = OpenServer(engine_, kDatabase)
                          ->RunNative(std::string("select count(*) from information_schema.tables where "
                                                  "table_schema = ") +
                                      (engine_ == "postgresql" ? "'public'" : "database()"));
    return *rows.ValueAt(0, 0).As<std::int64_t>();
  }

  const std::string engine_ = ServerOfThisRun();
  const std::string string_ = ServerString(engine_, kDatabase);
  sqlite::SqliteConnection sample_{SampleDatabaseFile()};
  fs::path folder_ = fs::temp_directory_path() / ("dossier-creation-" + std::to_string(getpid()));
};

TEST_F(Creation, CreateServerMakesTheSample) {
  const Outcome outcome = Run("create-server", string_);
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  EXPECT_EQ(outcome.out + outcome.error, "");
  const auto made = OpenServer(engine_, kDatabase);
  const server::Schema schema = server::SchemaOf(server::StoreOf(sample_));
  ASSERT_EQ(schema.tables.size(), 40U);
  for (const server::Table& table : schema.tables)
    EXPECT_EQ(Lines(*made, table.name), Lines(sample_, table.name)) << table.name;
  const Outcome check = Run("check", string_);
  EXPECT_EQ(check.code, 0) << check.out << check.error;
}

TEST_F(Creation, CreateEmptyLeavesThePeopleOut) {
  const Outcome outcome = Run("create-empty", string_);
  EXPECT_EQ(outcome.code, 0) << outcome.error;
  const auto made = OpenServer(engine_, kDatabase);
  for (const char* table : {"A01", "A02", "B01"}) EXPECT_EQ(Lines(*made, table).size(), 0U) << table;
  for (const char* table : {"s_infotable", "s_infoitem", "GB2261"})
    EXPECT_EQ(Lines(*made, table), Lines(sample_, table)) << table;
}

TEST_F(Creation, ADatabaseThatHoldsATableIsRefused) {
  OpenServer(engine_, kDatabase)->RunNative("create table of_another (a integer)");
  for (const char* command : {"create-server", "create-sample", "create-empty"}) {
    const Outcome outcome = Run(command, string_);
    EXPECT_EQ(outcome.code, 1) << command;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "dossier: 数据库中已有表 of_another，没有做任何改动：请指定一个空的数据库。\n");
  }
  EXPECT_EQ(TableCount(), 1);
}

TEST_F(Creation, ADatabaseOfAnotherEncodingIsRefused) {
  if (engine_ != "postgresql") GTEST_SKIP() << "each table brings its own encoding";
  const auto server = OpenServer(engine_);
  server->RunNative(std::string("drop database ") + kDatabase);
  server->RunNative(std::string("create database ") + kDatabase +
                    " template template0 encoding 'LATIN1' locale 'C'");
  const Outcome outcome = Run("create-server", string_);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_NE(outcome.error.find("LATIN1, C"), std::string::npos) << outcome.error;
  EXPECT_NE(outcome.error.find("没有做任何改动"), std::string::npos) << outcome.error;
  EXPECT_EQ(TableCount(), 0);
}

TEST_F(Creation, APasswordStandsInNoMessageTraceOrLog) {
  ASSERT_EQ(Run("create-server", string_).code, 0);
  std::string password;
  for (const std::string& attribute : environment::Split(string_, ";")) {
    if (attribute.starts_with("Pwd=")) password = attribute.substr(4);
  }
  ASSERT_NE(password, "");
  const std::string wrong = environment::Replace(string_, password, "geheim" + password);
  const std::string nowhere = environment::Replace(string_, "Server=127.0.0.1", "Server=127.0.0.2");
  const std::string missing = environment::Replace(string_, kDatabase, "no_such_database");
  for (const std::string& string : {string_, wrong, nowhere, missing}) {
    for (const char* command : {"create-server", "create-empty", "check"}) {
      const Outcome outcome = Run(command, string);
      EXPECT_EQ((outcome.out + outcome.error).find(password), std::string::npos) << outcome.error;
      if (string == string_) continue;
      EXPECT_NE(outcome.code, 0) << command;
      EXPECT_NE(outcome.error.find("无法连接数据库服务器"), std::string::npos) << outcome.error;
    }
  }
  // A visit that a photograph ends at once, with its trace.
  const std::string person = "47EAA099-2CB6-416D-A6DC-283CF0480FF9";
  std::ofstream(folder_ / (person + ".jpg")) << "no picture";
  const std::string trace = (folder_ / "trace.json").string();
  const Outcome visit = RunProgram(folder_,
                                   "--person " + person + " --connection '" + string_ + "' --photos '" +
                                       folder_.string() + "' --trace-sql '" + trace + "'",
                                   "QT_QPA_PLATFORM=offscreen ");
  EXPECT_NE(visit.error.find("无效图片"), std::string::npos) << visit.error;
  EXPECT_NE(Read(trace).find("s_infotable"), std::string::npos) << "the trace was written";
  for (const auto& file : fs::directory_iterator(folder_))
    EXPECT_EQ(Read(file.path()).find(password), std::string::npos) << file.path();
}

}  // namespace
}  // namespace dossierkit::tests
