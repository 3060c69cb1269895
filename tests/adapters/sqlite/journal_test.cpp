// The journal of a file under a connection.
#include <gtest/gtest.h>

#include <string>

#include "platform/ado/recordset.h"
#include "tests/adapters/sqlite/database_file.h"

namespace dossierkit::sqlite {
namespace {

using environment::Value;

const char* const kTable = "create table t(n integer); insert into t values(1);";

TEST(SqliteFile, TheJournalModeStaysAsTheHostChoseIt) {
  const DatabaseFile file(kTable);
  file.Write("log.db", file.Read());
  DatabaseFile::UseLog(file.Path("log.db"));
  constexpr std::size_t kFormatVersions = 18;
  const struct {
    std::string name;
    std::string mode;
    std::string versions;
  } kFiles[] = {{"专家.db", "delete", "\1\1"}, {"log.db", "wal", "\2\2"}};
  for (const auto& one : kFiles) {
    for (int time = 0; time < 2; ++time) {
      SqliteConnection connection(file.Path(one.name));
      connection.Run("update t set n = n + 1");
      EXPECT_EQ(connection.Pragma("journal_mode"), one.mode);
    }
    EXPECT_EQ(file.Read(one.name).substr(kFormatVersions, 2), one.versions) << one.name;
    EXPECT_EQ(SqliteConnection(file.Path(one.name)).Execute("select n from t")->Fields(0), Value(3));
  }
}

TEST(SqliteFile, EveryCommitIsFlushedInEitherMode) {
  const DatabaseFile file(kTable);
  EXPECT_EQ(SqliteConnection(file.Path()).Pragma("synchronous"), "3") << "EXTRA: the folder as well";
  DatabaseFile::UseLog(file.Path());
  EXPECT_EQ(SqliteConnection(file.Path()).Pragma("synchronous"), "3");
}

}  // namespace
}  // namespace dossierkit::sqlite
