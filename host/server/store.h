// Store: a database on any engine, past the dialect where its schema is read or made.
#pragma once

#include <functional>
#include <string>

#include "adapters/odbc/odbc_connection.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "platform/ado/connection.h"
#include "platform/ado/snapshot.h"
#include "platform/environment/export.h"
#include "platform/jet/renderer.h"

namespace dossierkit::server {

struct Store {
  std::string engine;  // "SQLite", "PostgreSQL", "MariaDB"
  ado::Connection* connection;
  const jet::Renderer* renderer;
  // One statement of the engine's own SQL; a server gives its rows.
  std::function<ado::Snapshot(const std::string& statement)> run_native;
};

// The connection must outlive the store.
DOSSIERKIT_EXPORT Store StoreOf(sqlite::SqliteConnection& file);
DOSSIERKIT_EXPORT Store StoreOf(odbc::OdbcConnection& server);

}  // namespace dossierkit::server
