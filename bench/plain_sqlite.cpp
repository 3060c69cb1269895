#include "bench/plain_sqlite.h"

#include <stdexcept>

namespace dossierkit::bench {

PlainSqlite::PlainSqlite(const std::string& path) {
  if (sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
      SQLITE_OK) {
    throw std::runtime_error("cannot open " + path);
  }
  Run("pragma journal_mode=wal");
  Run("pragma synchronous=full");
}

PlainSqlite::~PlainSqlite() { sqlite3_close(database_); }

std::vector<std::string> PlainSqlite::Run(const std::string& statement) {
  std::vector<std::string> texts;
  sqlite3_stmt* prepared = nullptr;
  int result = sqlite3_prepare_v2(database_, statement.c_str(), -1, &prepared, nullptr);
  while (result == SQLITE_OK || result == SQLITE_ROW) {
    result = sqlite3_step(prepared);
    if (result != SQLITE_ROW) break;
    for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, i));
      texts.emplace_back(text == nullptr ? "" : text);
    }
  }
  sqlite3_finalize(prepared);
  if (result != SQLITE_DONE) {
    throw std::runtime_error(std::string(sqlite3_errmsg(database_)) + ": " + statement);
  }
  return texts;
}

}  // namespace dossierkit::bench
