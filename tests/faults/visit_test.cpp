// The component, and a database that is being made, while the server goes away in the middle.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "tests/faults/proxy.h"
#include "tests/support/faulty_visit.h"
#include "tests/support/paths.h"
#include "tests/support/program.h"
#include "tests/support/server_faults.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

constexpr char kDatabase[] = "faulty";

class ServerFaults : public testing::Test {
 protected:
  ServerFaults() {
    fs::create_directories(folder_);
    MakeDatabase(engine_, kDatabase);
    proxy_ = std::make_unique<Proxy>(ServerString(engine_, kDatabase));
  }
  ~ServerFaults() override { fs::remove_all(folder_); }

  std::string String() const { return ServerString(engine_, kDatabase); }
  std::shared_ptr<odbc::OdbcConnection> Host() const {
    return std::make_shared<odbc::OdbcConnection>(proxy_->String(), kPatience);
  }
  void Kill() const { KillServer(ServerString(engine_), SIGKILL); }
  // The server is there, and can be reached. What was cut off is no longer at work.
  void Mend() {
    const bool was_cut = proxy_->IsCut();
    proxy_->Mend();
    ASSERT_TRUE(was_cut ? WaitUntilAtRest(String()) : WaitUntil([&] { return Answers(String()); }));
  }

  void PlayTheWalk(const std::function<void()>& fault) {
    FaultyVisit visit(Host());
    visit.FailBefore(4, fault);
    const std::string told = visit.DeleteTheSecondPost();
    EXPECT_TRUE(told.starts_with(kLost)) << told;
    // A visit meanwhile.
    const std::string away = Told([&] { visit.Posts(); });
    EXPECT_TRUE(away.empty() || away.starts_with(kUnreachable)) << away;
    Mend();
    EXPECT_EQ(visit.Posts(), (std::vector<std::string>{"1", "2", "4"})) << "what ran before the failure";
    EXPECT_EQ(visit.SaveTheHours("8", 1), std::vector<std::string>{});
    EXPECT_EQ(visit.Hours(), "8");
  }

  void PlayTheSave(const std::function<void()>& fault) {
    FaultyVisit visit(Host());
    visit.FailBefore(2, fault);
    const auto told = visit.SaveTheHours("7", 1);
    ASSERT_EQ(told.size(), 1U) << testing::PrintToString(told);
    EXPECT_TRUE(told[0].starts_with(kLost)) << told[0];
    Mend();
    EXPECT_EQ(visit.Hours(), "no row") << "deleted, and not stored anew";
    EXPECT_EQ(visit.SaveTheHours("9", 1), std::vector<std::string>{});
    EXPECT_EQ(visit.Hours(), "9");
  }

  // All rows of all tables that are there.
  static int RowsOf(const server::Store& store) {
    int rows = 0;
    for (const server::CopiedTable& table : server::ChecksumsOf(store)) rows += static_cast<int>(table.rows);
    return rows;
  }
  int RowsThere() const {
    odbc::OdbcConnection database(String(), kPatience);
    return RowsOf(server::StoreOf(database));
  }

  void PlayTheCopy(const std::function<void()>& fault) {
    const auto host = Host();
    sqlite::SqliteConnection sample(SampleDatabaseFile());
    bool has_failed = false;
    const std::string told = Told([&] {
      server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*host),
                           [&](std::int64_t done, std::int64_t) {
                             if (done > 0 && !std::exchange(has_failed, true)) fault();
                           });
    });
    EXPECT_NE(told.find(kLost), std::string::npos) << told;
    Mend();
    EXPECT_EQ(RowsThere(), 0) << "all or nothing";
    EXPECT_EQ(server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*host)).size(), 39U);
  }

  const std::string engine_ = ServerOfThisRun();
  fs::path folder_ = fs::temp_directory_path() / ("dossier-faults-" + std::to_string(getpid()));
  std::unique_ptr<Proxy> proxy_;
};

TEST_F(ServerFaults, AKilledServerInTheWalkOfDelete) {
  PlayTheWalk([&] { Kill(); });
}

TEST_F(ServerFaults, ACutNetworkInTheWalkOfDelete) {
  PlayTheWalk([&] { proxy_->Cut(); });
}

TEST_F(ServerFaults, AKilledServerInASave) {
  PlayTheSave([&] { Kill(); });
}

TEST_F(ServerFaults, ACutNetworkInASave) {
  PlayTheSave([&] { proxy_->Cut(); });
}

TEST_F(ServerFaults, AKilledServerInACopy) {
  PlayTheCopy([&] { Kill(); });
}

TEST_F(ServerFaults, ACutNetworkInACopy) {
  PlayTheCopy([&] { proxy_->Cut(); });
}

TEST_F(ServerFaults, TheCommandsTellACutNetworkInOneLineWithoutThePassword) {
  const std::string password = String().substr(String().find("Pwd=") + 4);
  const std::string string = "'" + proxy_->String() + "'";
  for (const long bytes : {3000L, 60000L}) {
    SCOPED_TRACE(bytes);
    MakeDatabase(engine_, kDatabase);
    proxy_->CutBehind(bytes);
    const Outcome made = RunProgram(folder_, "create-server --connection " + string);
    EXPECT_EQ(made.code, 1);
    EXPECT_TRUE(made.error.starts_with("dossier: ")) << made.error;
    EXPECT_TRUE(made.error.find(kLost) != std::string::npos ||
                made.error.find(kUnreachable) != std::string::npos)
        << made.error;
    EXPECT_EQ(made.error.find('\n'), made.error.size() - 1) << made.error;
    EXPECT_EQ(made.error.find(password), std::string::npos);
    Mend();
    EXPECT_EQ(RowsThere(), 0);
  }
  MakeDatabase(engine_, kDatabase);
  EXPECT_EQ(RunProgram(folder_, "create-server --connection " + string).code, 0);
  for (const std::string command : {"create-rights", "create-audit", "check"}) {
    SCOPED_TRACE(command);
    proxy_->CutBehind(8000);
    const Outcome cut = RunProgram(folder_, command + " --connection " + string);
    EXPECT_EQ(cut.code, command == "check" ? 2 : 1);
    EXPECT_TRUE(cut.error.starts_with("dossier: ")) << cut.error;
    EXPECT_EQ(cut.error.find(password), std::string::npos);
    Mend();
    EXPECT_EQ(RunProgram(folder_, command + " --connection " + string).code, 0);
  }
}

// The second run, which meets what the first one left, is stopped as well.
TEST_F(ServerFaults, CreateServerTellsAServerThatIsKilledOrStoppedAndTheNextRunMakesTheDatabase) {
  const std::string password = String().substr(String().find("Pwd=") + 4);
  const std::string create = "create-server --connection '" + proxy_->String() + "'";
  const int stop = engine_ == "postgresql" ? SIGINT : SIGTERM;  // PostgreSQL calls SIGINT the fast way
  for (const auto& [signal, bytes] : {std::pair(SIGKILL, 60000L), std::pair(stop, 3000L)}) {
    SCOPED_TRACE(signal);
    proxy_->ActBehind(bytes, [&, signal = signal] { KillServer(ServerString(engine_), signal); });
    const Outcome made = RunProgram(folder_, create);
    EXPECT_EQ(made.code, 1);
    EXPECT_EQ(made.out, "");
    EXPECT_TRUE(made.error.starts_with("dossier: ")) << made.error;
    EXPECT_NE(made.error.find(kLost), std::string::npos) << made.error;
    EXPECT_EQ(made.error.find('\n'), made.error.size() - 1) << made.error;
    EXPECT_EQ(made.error.find(password), std::string::npos);
    Mend();
    EXPECT_EQ(RowsThere(), 0);
  }
  const Outcome again = RunProgram(folder_, create);
  EXPECT_EQ(again.code, 0) << again.error;
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  EXPECT_EQ(RowsThere(), RowsOf(server::StoreOf(sample)));
}

TEST_F(ServerFaults, ALockIsToldAndSavingAgainWorks) {
  const auto other = std::make_shared<odbc::OdbcConnection>(String(), kPatience);
  const auto host = std::make_shared<odbc::OdbcConnection>(String());
  FaultyVisit visit(host);
  other->BeginTrans();
  other->Run("update A13 set A1303 = '1' where A00='" + kPerson + "'");
  EXPECT_EQ(visit.SaveTheHours("7", 1), std::vector<std::string>{kBusy});
  other->RollbackTrans();
  EXPECT_EQ(visit.SaveTheHours("7", 1), std::vector<std::string>{});
  EXPECT_EQ(visit.Hours(), "7");
}

// Each of two transactions wants what the other one holds. Which one is told is the server's choice; it keeps
// what it holds until it rolls back.
TEST_F(ServerFaults, OfTwoInADeadlockOneIsTold) {
  const auto one = Host();
  const auto other = Host();
  one->RunNative("create table t (n integer primary key, v integer)");
  one->Run("insert into t(n,v) values(1,0)");
  one->Run("insert into t(n,v) values(2,0)");
  one->BeginTrans();
  other->BeginTrans();
  one->Run("update t set v = 1 where n = 1");
  other->Run("update t set v = 2 where n = 2");
  const auto end = [](odbc::OdbcConnection& connection, const std::string& statement) {
    const std::string told = Told([&] { connection.Run(statement); });
    if (told.empty()) {
      connection.CommitTrans();
    } else {
      connection.RollbackTrans();
    }
    return told;
  };
  std::string told_other;
  std::thread waiting([&] { told_other = end(*other, "update t set v = 2 where n = 1"); });
  const std::string told_one = end(*one, "update t set v = 1 where n = 2");
  waiting.join();
  EXPECT_TRUE(told_one.empty() != told_other.empty()) << told_one << "|" << told_other;
  EXPECT_EQ(told_one + told_other,
            engine_ == "mariadb" ? "数据库已经撤销了这个事务：请回滚后再重新开始。" : kBusy);
  const std::string kept = told_one.empty() ? "1" : "2";
  EXPECT_EQ(Column(*one, "select v from t order by n"), (std::vector<std::string>{kept, kept}));
}

}  // namespace
}  // namespace dossierkit::tests
