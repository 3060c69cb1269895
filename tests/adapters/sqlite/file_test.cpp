// The file under a connection: its rights, its name.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "tests/adapters/sqlite/database_file.h"

namespace dossierkit::sqlite {
namespace {

namespace fs = std::filesystem;

using environment::Failure;
using environment::Value;

const char* const kTable = "create table t(n integer); insert into t values(1);";

// The description of the failure of `action`, or empty.
template <typename Action>
std::string Told(Action action) {
  try {
    action();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), environment::kEngineFailure);
    return failure.description();
  }
  return {};
}

// While it lives the test has nobody's rights, whoever runs it.
class Unprivileged {
 public:
  Unprivileged() {
    if (was_ == 0 && seteuid(65534) != 0) ADD_FAILURE() << "root's rights could not be laid down";
  }
  ~Unprivileged() {
    if (was_ == 0 && seteuid(0) != 0) ADD_FAILURE() << "root's rights could not be taken up again";
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  uid_t was_ = geteuid();
};

// A folder in which nothing can be made, as on a read-only medium; its files have the mode `files`.
class ReadOnly {
 public:
  explicit ReadOnly(const DatabaseFile& file, fs::perms files = fs::perms(0444)) : folder_(file.Folder()) {
    for (const auto& entry : fs::directory_iterator(folder_)) fs::permissions(entry.path(), files);
    fs::permissions(folder_, fs::perms(0555));
    nobody_.emplace();
  }
  ~ReadOnly() {
    nobody_.reset();
    fs::permissions(folder_, fs::perms(0755));
  }
  ReadOnly(const ReadOnly&) = delete;
  ReadOnly& operator=(const ReadOnly&) = delete;

 private:
  std::string folder_;
  std::optional<Unprivileged> nobody_;
};

TEST(SqliteFile, OnAReadOnlyMediumItIsOpenedForReading) {
  const DatabaseFile file(kTable);
  const ReadOnly medium(file);
  SqliteConnection connection(file.Path());
  EXPECT_EQ(connection.Execute("select n from t")->Fields(0), Value(1));
  for (const char* statement : {"update t set n = 2", "insert into t(n) values(2)", "delete from t"}) {
    EXPECT_EQ(Told([&] { connection.Run(statement); }), "不能更新：数据库是只读的。") << statement;
  }
  EXPECT_EQ(connection.Execute("select n from t")->Fields(0), Value(1));
}

TEST(SqliteFile, InAFolderThatTakesNoJournalItIsReadAlone) {
  const DatabaseFile file(kTable);
  const ReadOnly medium(file, fs::perms(0666));
  SqliteConnection connection(file.Path());
  EXPECT_EQ(Told([&] { connection.Run("update t set n = 2"); }), "不能更新：数据库是只读的。");
}

TEST(SqliteFile, OnAReadOnlyMediumALogIsToldWithTheFile) {
  const DatabaseFile file(kTable);
  DatabaseFile::UseLog(file.Path());
  const ReadOnly medium(file);
  EXPECT_EQ(Told([&] { SqliteConnection connection(file.Path()); }),
            "无法写入数据库的日志，请检查所在文件夹的权限：" + file.Path());
}

TEST(SqliteFile, ALogThatOnlySomebodyElseMayOpenIsToldWithTheFile) {
  const DatabaseFile file(kTable);
  DatabaseFile::UseLog(file.Path());
  std::ofstream(file.Path() + "-wal").close();
  fs::permissions(file.Path(), fs::perms(0666));
  fs::permissions(file.Path() + "-wal", fs::perms::none);
  const Unprivileged nobody;
  EXPECT_EQ(Told([&] { SqliteConnection connection(file.Path()); }),
            "无法写入数据库的日志，请检查所在文件夹的权限：" + file.Path());
}

class MovedFile : public testing::TestWithParam<bool> {
 protected:
  MovedFile() {
    if (GetParam()) DatabaseFile::UseLog(file_.Path());
    file_.Write("other.db", file_.Read());
    connection_ = std::make_unique<SqliteConnection>(file_.Path());
    connection_->Run("update t set n = 7");
  }

  void ExpectRefused() {
    for (const char* statement : {"select n from t", "update t set n = 7", "update t set n = 8",
                                  "insert into t(n) values(2)", "delete from t"}) {
      try {
        connection_->Run(statement);
        ADD_FAILURE() << statement;
      } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), environment::kEngineFailure);
        EXPECT_EQ(failure.description(), "数据库文件已被移走或替换：" + file_.Path());
        EXPECT_EQ(failure.statement(), statement);
      }
    }
    EXPECT_EQ(Told([&] { connection_->BeginTrans(); }), "数据库文件已被移走或替换：" + file_.Path());
  }

  DatabaseFile file_{kTable};
  std::unique_ptr<SqliteConnection> connection_;
};

TEST_P(MovedFile, ThatIsDeletedIsToldByTheNextStatement) {
  fs::remove(file_.Path());
  ExpectRefused();
  EXPECT_FALSE(fs::exists(file_.Path()));
}

TEST_P(MovedFile, ThatIsMovedIsToldUntilItIsBack) {
  fs::rename(file_.Path(), file_.Path("elsewhere.db"));
  ExpectRefused();
  fs::rename(file_.Path("elsewhere.db"), file_.Path());
  EXPECT_EQ(connection_->Execute("select n from t")->Fields(0), Value(7));
  connection_->Run("update t set n = 8");
  EXPECT_EQ(connection_->Execute("select n from t")->Fields(0), Value(8));
}

TEST_P(MovedFile, ThatIsReplacedIsToldAndTheOtherOneUntouched) {
  const std::string other = file_.Read("other.db");
  fs::rename(file_.Path("other.db"), file_.Path());
  ExpectRefused();
  EXPECT_EQ(file_.Read(), other);
}

TEST_P(MovedFile, CommitsNothing) {
  connection_->BeginTrans();
  connection_->Run("update t set n = 9");
  fs::rename(file_.Path(), file_.Path("elsewhere.db"));
  EXPECT_EQ(Told([&] { connection_->CommitTrans(); }), "数据库文件已被移走或替换：" + file_.Path());
  connection_->RollbackTrans();
  fs::rename(file_.Path("elsewhere.db"), file_.Path());
  EXPECT_EQ(connection_->Execute("select n from t")->Fields(0), Value(7));
}

INSTANTIATE_TEST_SUITE_P(SqliteFile, MovedFile, testing::Bool(),
                         [](const auto& with_log) { return with_log.param ? "WithALog" : "WithAJournal"; });

TEST(DatabaseFiles, AreMadeWhereNothingIs) {
  const fs::path folder = fs::temp_directory_path() / ("dossier-create-file-" + std::to_string(getpid()));
  fs::create_directories(folder);
  const std::string path = (folder / "新.db").string();
  SqliteConnection::CreateFile(path);
  {
    SqliteConnection made(path);
    EXPECT_EQ(made.Run("select * from sqlite_master").RowCount(), 0U);
    EXPECT_EQ(made.Pragma("journal_mode"), "wal");
    made.RunScript(kTable);
  }
  try {
    SqliteConnection::CreateFile(path);
    ADD_FAILURE();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), environment::kFileExists);
    EXPECT_EQ(failure.description(), "已有文件：" + path);
  }
  EXPECT_EQ(SqliteConnection(path).Execute("select n from t")->Fields(0), Value(1));
  EXPECT_THROW(SqliteConnection::CreateFile((folder / "none" / "a.db").string()), Failure);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace dossierkit::sqlite

#endif
