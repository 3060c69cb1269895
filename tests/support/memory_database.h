// A database of SQLite's in memory, for a test alone.
#pragma once

#include <memory>
#include <string>

#include "adapters/sqlite/sqlite_connection.h"

namespace dossierkit::tests {

// Begins as a copy of `bytes`, the content of a database file, which is never touched; empty for an empty
// database. Throws a Failure for what is no database.
std::shared_ptr<sqlite::SqliteConnection> OpenInMemory(const std::string& bytes = {});

}  // namespace dossierkit::tests
