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

}  // namespace dossierkit::tests
