// What the benchmarks on servers share: databases on a server, and what a visit sends to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/odbc/engine.h"
#include "adapters/odbc/odbc_connection.h"
#include "bench/plain_odbc.h"
#include "platform/jet/column_cache.h"

namespace dossierkit::bench {

// "postgresql" and "mariadb".
inline const std::vector<std::string> kServers = {"postgresql", "mariadb"};

// A database of that name like the file, made by `dossier copy`.
void MakeCopyOnServer(const std::string& engine, const std::string& database, const std::string& file);

// A bare link, with the settings that statements of the component's adapter rely on.
std::unique_ptr<PlainOdbc> OpenBare(const std::string& engine, const std::string& connection_string);

// Tells what the adapter sends to a server for a statement of the dialect.
class Translator {
 public:
  Translator(const std::string& engine, std::shared_ptr<odbc::OdbcConnection> server);
  std::string NativeOf(const std::string& statement);

 private:
  const odbc::Engine& engine_;
  std::shared_ptr<odbc::OdbcConnection> server_;
  jet::ColumnCache tables_;
};

}  // namespace dossierkit::bench
