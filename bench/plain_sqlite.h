// PlainSqlite: a database file without anything between it and its statements; the yardstick of
// bench/limits.
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

namespace dossierkit::bench {

// Writes as safely as the component's connection does: a write-ahead log, flushed at each statement.
class PlainSqlite {
 public:
  explicit PlainSqlite(const std::string& path);
  ~PlainSqlite();
  PlainSqlite(const PlainSqlite&) = delete;
  PlainSqlite& operator=(const PlainSqlite&) = delete;

  // Runs one statement and reads all that it gives as text. Throws std::runtime_error.
  std::vector<std::string> Run(const std::string& statement);

 private:
  sqlite3* database_ = nullptr;
};

}  // namespace dossierkit::bench
