// A database file of a test's own, gone with it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "adapters/sqlite/sqlite_connection.h"
#include "tests/support/memory_database.h"
#include "tests/support/named_file.h"

namespace dossierkit::sqlite {

class DatabaseFile {
 public:
  // A database with the tables that `script` makes.
  explicit DatabaseFile(const std::string& script) {
    folder_ = std::filesystem::path(testing::TempDir()) /
              ("dossierkit-" + std::to_string(getpid()) + "-" +
               testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::create_directories(folder_ / u8"数据库");
    const auto memory = tests::OpenInMemory();
    memory->RunScript(script);
    Write("专家.db", memory->Bytes());
  }
  ~DatabaseFile() { tests::RemoveFolder(folder_); }
  DatabaseFile(const DatabaseFile&) = delete;
  DatabaseFile& operator=(const DatabaseFile&) = delete;

  // The same with a write-ahead log.
  static void UseLog(const std::string& path) {
    EXPECT_EQ(SqliteConnection(path).Pragma("journal_mode=wal"), "wal") << path;
  }

  std::string Folder() const { return (folder_ / u8"数据库").string(); }
  std::string Path(const std::string& name = "专家.db") const {
    return (folder_ / u8"数据库" / tests::NamedFile(name)).string();
  }

  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(files::PathOf(Path(name)), std::ios::binary) << content;
  }
  std::string Read(const std::string& name = "专家.db") const {
    std::ostringstream content;
    content << std::ifstream(files::PathOf(Path(name)), std::ios::binary).rdbuf();
    return content.str();
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace dossierkit::sqlite
