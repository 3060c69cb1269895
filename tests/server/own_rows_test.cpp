#include "tests/server/own_rows.h"

#include <unistd.h>

#include <filesystem>

#include "tests/support/paths.h"

namespace dossierkit::tests {

SharedDatabase OpenSharedDatabase() {
  namespace fs = std::filesystem;
  const fs::path file = fs::temp_directory_path() / ("dossier-own-rows-" + std::to_string(getpid()) + ".db");
  for (const char* ending : {"", "-wal", "-shm"}) fs::remove(file.string() + ending);
  fs::copy_file(SampleDatabaseFile(), file);
  const auto connection = std::make_shared<sqlite::SqliteConnection>(file.string());
  const auto another = std::make_shared<sqlite::SqliteConnection>(file.string());
  return {connection, another, [connection](const std::string& person) {
            return std::make_unique<server::OwnRows>(*connection, person);
          }};
}

TEST_F(RowsOfAVisit, NothingOfItIsLeftInTheFile) {
  { const auto visit = database_.visit("P"); }
  EXPECT_EQ(One("select count(*) from sqlite_temp_master"), "0");
  EXPECT_EQ(One("select count(*) from sqlite_master where name like '%dossierkit%'"), "0");
  // A second one at a time fails, and the first goes on.
  const auto visit = database_.visit("P");
  EXPECT_THROW(database_.visit("Q"), environment::Failure);
}

// A host's own file, in whatever words its tables were made.
TEST_F(RowsOfAVisit, TablesOfAnySpellingShowTheOwnRowsAlone) {
  auto& file = dynamic_cast<sqlite::SqliteConnection&>(*database_.connection);
  file.RunScript(
      "drop table A02; CREATE TABLE [A02] (\n\t[A00]\tvarchar(36) COLLATE NOCASE,\n\t`A0202` text,\n"
      "\t[A0299]\tINT); create table notes (id, text); create table pictures (content blob)");
  for (const char* person : {"P", "Q"}) {
    for (const char* number : {"1", "2", "3"}) Add(person, number);
  }
  const auto visit = database_.visit("P");
  EXPECT_EQ(One("select count(*) from A02"), "3");
  Delete("P", "2");
  EXPECT_EQ(Numbers("P"), "1,2");
}

}  // namespace dossierkit::tests
