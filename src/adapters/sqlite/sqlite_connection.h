// SqliteConnection: the embedded engine.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/ado/connection.h"
#include "platform/environment/export.h"

namespace dossierkit::sqlite {

// One open SQLite database, used from one thread. Its journal mode stays as it is. Outside a transaction
// every statement is one of its own and is on the disk when Run returns.
struct Engine;

class DOSSIERKIT_EXPORT SqliteConnection : public ado::Connection {
 public:
  // Opens the database file at `path` (UTF-8), for reading only where it may not be written. Throws a
  // Failure for a file that does not exist, is no database or cannot be opened, also one whose log cannot
  // be written; it never makes a database.
  explicit SqliteConnection(const std::string& path,
                            std::chrono::milliseconds busy_timeout = ado::kBusyTimeout);
  ~SqliteConnection() override;
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  // Makes a database without tables at `path`, with a write-ahead log. Throws a Failure where there is
  // anything of that name, or nothing can be written.
  static void CreateFile(const std::string& path);

  // From now on every statement fails (3709). Closing twice is no failure.
  void Close();

  bool IsOpen() const override;
  // Fails as well once the file was deleted, moved or replaced.
  ado::Snapshot Run(const std::string& statement) override;
  // Level 1 takes the database for writing at once, so that nothing that is read in it is out of date
  // when it writes.
  std::int32_t BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

  // Whether inserts, updates and deletes go to the tables of the database file where a temporary view of the
  // same name stands before one; by default they do not, and fail.
  void StoreInFile(bool they_do);

  // Runs a script of SQLite's own SQL, past the dialect: schemas and test data.
  void RunScript(const std::string& script);
  // What SQLite answers to a pragma, its first row's first column: settings and checks.
  std::string Pragma(const std::string& name) const;
  // The database as the content of a file, to compare or to keep.
  std::string Bytes() const;

 protected:
  // On a database that is open already.
  explicit SqliteConnection(std::unique_ptr<Engine> engine);

 private:
  Engine& OpenEngine(const std::string& statement) const;
  static void RequireReadable(const Engine& engine, const std::string& path);

  std::unique_ptr<Engine> engine_;
};

}  // namespace dossierkit::sqlite
