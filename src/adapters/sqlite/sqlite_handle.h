// Handle: an open SQLite database and what it prepares.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

namespace dossierkit::sqlite {

struct Finalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, Finalizer>;

// SQLite's text, empty for none.
std::string TextOf(const unsigned char* text);

// Closes the database behind the last statement that was prepared. Every failure is a Failure with the
// statement, which is the one that the user's program sent where a text was made of it.
class Handle {
 public:
  // Opens `path` with SQLite's flags, with the dialect's functions and no text in double quotes.
  Handle(const std::string& path, int flags);
  ~Handle();
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  sqlite3* Get() const { return database_; }

  // Prepares one statement; should a second one ever come through, neither runs.
  Prepared Prepare(const std::string& text, const std::string& statement) const;
  // The older way to prepare: such a statement fails (SQLITE_SCHEMA) once the schema has changed, instead of
  // being prepared anew unasked.
  Prepared PrepareForThisSchema(const std::string& text, const std::string& statement) const;
  // True while there is a row.
  bool Step(sqlite3_stmt* prepared, const std::string& statement) const;
  // Runs statements of SQLite's own SQL.
  void RunScript(const std::string& script) const;

 private:
  sqlite3* database_ = nullptr;
};

}  // namespace dossierkit::sqlite
