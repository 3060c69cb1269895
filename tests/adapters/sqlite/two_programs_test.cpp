// Two programs on one file, and programs that are killed.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <thread>

#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "tests/adapters/sqlite/database_file.h"

namespace dossierkit::sqlite {
namespace {

using environment::Value;
using std::chrono::milliseconds;

// For one that waits for another: on a machine that is busy, or whose disk is slow, that may take long.
constexpr milliseconds kPatience(300'000);

const char* const kTable = "create table t(n integer, saved integer); insert into t values(0, 0);";

// Another program: runs `work`, which may report numbers, in a process of its own.
class Program {
 public:
  using Report = std::function<void(int)>;

  explicit Program(const std::function<void(const Report&)>& work) {
    int ends[2] = {-1, -1};
    EXPECT_EQ(pipe(ends), 0);
    process_ = fork();
    if (process_ == 0) {
      close(ends[0]);
      int code = 0;
      try {
        work([&](int number) {
          if (write(ends[1], &number, sizeof number) != sizeof number) _exit(2);
        });
      } catch (...) {
        code = 1;
      }
      _exit(code);
    }
    close(ends[1]);
    reports_ = ends[0];
  }
  ~Program() {
    Kill();
    close(reports_);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Waits for the next report; false where none will come.
  bool NextReport(int& number) const { return read(reports_, &number, sizeof number) == sizeof number; }

  // Its exit code, once it has ended.
  int Wait() {
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  void Kill() {
    if (process_ <= 0) return;
    kill(process_, SIGKILL);
    Wait();
  }

 private:
  pid_t process_ = -1;
  int reports_ = -1;
};

// Writes and keeps the write open for so long.
Program Writer(const std::string& path, milliseconds duration) {
  return Program([=](const Program::Report& report) {
    SqliteConnection connection(path, kPatience);
    connection.RunScript("begin immediate; update t set n = n + 1");
    report(1);
    std::this_thread::sleep_for(duration);
    connection.RunScript("commit");
  });
}

TEST(TwoPrograms, WriterWaitsForTheOtherOne) {
  const DatabaseFile file(kTable);
  Program other = Writer(file.Path(), milliseconds(300));
  int report = 0;
  ASSERT_TRUE(other.NextReport(report));
  SqliteConnection connection(file.Path(), kPatience);
  connection.Run("update t set n = n + 1");
  EXPECT_EQ(other.Wait(), 0);
  EXPECT_EQ(connection.Execute("select n from t")->Fields(0), Value(2));
}

TEST(TwoPrograms, ByItselfAConnectionWaitsForFiveSeconds) {
  const DatabaseFile file(kTable);
  EXPECT_EQ(SqliteConnection(file.Path()).Pragma("busy_timeout"), "5000");
}

TEST(TwoPrograms, WithALogAReaderSeesTheLastSavedStateWithoutWaiting) {
  const DatabaseFile file(kTable);
  DatabaseFile::UseLog(file.Path());
  Program other = Writer(file.Path(), milliseconds(60000));
  int report = 0;
  ASSERT_TRUE(other.NextReport(report));
  SqliteConnection connection(file.Path(), milliseconds(0));
  EXPECT_EQ(connection.Execute("select n from t")->Fields(0), Value(0));
}

TEST(TwoPrograms, WriterThatWaitedTooLongIsToldThatTheDatabaseIsBusy) {
  const DatabaseFile file(kTable);
  Program other = Writer(file.Path(), milliseconds(60000));
  int report = 0;
  ASSERT_TRUE(other.NextReport(report));
  SqliteConnection connection(file.Path(), milliseconds(50));
  try {
    connection.Run("update t set n = 5");
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.description(), "数据库正被占用，请稍后再试。");
    EXPECT_EQ(failure.statement(), "update t set n = 5");
  }
  other.Kill();
  connection.Run("update t set n = 5");
  EXPECT_EQ(connection.Execute("select n from t")->Fields(0), Value(5));
}

TEST(TwoPrograms, ATransactionTakesTheDatabaseForWritingAtOnce) {
  const DatabaseFile file(kTable);
  DatabaseFile::UseLog(file.Path());
  SqliteConnection first(file.Path(), milliseconds(0));
  SqliteConnection second(file.Path(), milliseconds(0));
  EXPECT_EQ(first.BeginTrans(), 1);
  try {
    second.BeginTrans();
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.description(), "数据库正被占用，请稍后再试。");
  }
  first.Run("update t set n = 7");
  EXPECT_EQ(second.Execute("select n from t")->Fields(0), Value(0)) << "not committed";
  first.CommitTrans();
  EXPECT_EQ(second.BeginTrans(), 1);
  EXPECT_EQ(second.Execute("select n from t")->Fields(0), Value(7));
  second.RollbackTrans();
}

TEST(TwoPrograms, BothCountUpWithoutLosingAStep) {
  const DatabaseFile file(kTable);
  const std::string path = file.Path();
  const auto count_up = [path](const Program::Report&) {
    SqliteConnection connection(path, kPatience);
    for (int i = 0; i < 100; ++i) connection.Run("update t set n = n + 1");
  };
  Program first(count_up);
  Program second(count_up);
  EXPECT_EQ(first.Wait(), 0);
  EXPECT_EQ(second.Wait(), 0);
  EXPECT_EQ(SqliteConnection(path).Execute("select n from t")->Fields(0), Value(200));
}

class KilledProgram : public testing::TestWithParam<bool> {};

TEST_P(KilledProgram, KeepsWhatItReportedAsSaved) {
  const DatabaseFile file(kTable);
  const std::string path = file.Path();
  if (GetParam()) DatabaseFile::UseLog(path);
  int next = 1;
  int saved = 0;
  unsigned state = 11;
  for (int round = 0; round < 100; ++round) {
    const int start = next;
    int last = start - 1;
    {
      Program program([&](const Program::Report& report) {
        SqliteConnection connection(path);
        for (int n = start;; ++n) {
          const std::string number = std::to_string(n);
          connection.Run("insert into t(n,saved) values('" + number + "','0')");
          connection.Run("update t set saved = 1 where n = " + number);
          report(n);
        }
      });
      // In every fourth round it may be killed before it has saved anything, even while it opens the file.
      if (round % 4 != 0) {
        ASSERT_TRUE(program.NextReport(last));
      }
      state = state * 1664525U + 1013904223U;
      std::this_thread::sleep_for(std::chrono::microseconds((state >> 8) % 12000));
      program.Kill();
      for (int report = 0; program.NextReport(report);) last = report;
    }
    SqliteConnection connection(path);
    ASSERT_EQ(connection
                  .Execute("select count(*) from t where saved = 1 and n >= " + std::to_string(start) +
                           " and n <= " + std::to_string(last))
                  ->Fields(0),
              Value(last - start + 1));
    ASSERT_EQ(connection.Pragma("integrity_check"), "ok");
    saved += last - start + 1;
    next = environment::ToInt32(connection.Execute("select max(n) from t")->Fields(0)) + 1;
  }
  EXPECT_GE(saved, 75);
}

INSTANTIATE_TEST_SUITE_P(TwoPrograms, KilledProgram, testing::Bool(),
                         [](const auto& with_log) { return with_log.param ? "WithALog" : "WithAJournal"; });

}  // namespace
}  // namespace dossierkit::sqlite

#endif
