#include "bench/server_visit.h"

#include <utility>

#include "adapters/odbc/connection_string.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "platform/environment/text.h"
#include "tests/support/servers.h"

namespace dossierkit::bench {
namespace {

const odbc::Engine& EngineOf(const std::string& engine) {
  return engine == "postgresql" ? odbc::kPostgresql : odbc::kMariadb;
}

}  // namespace

void MakeCopyOnServer(const std::string& engine, const std::string& database, const std::string& file) {
  tests::MakeDatabase(engine, database);
  sqlite::SqliteConnection from(file);
  const auto to = tests::OpenServer(engine, database);
  server::CopyDatabase(server::StoreOf(from), server::StoreOf(*to));
  // What a server does by itself in its first minutes.
  for (const char* table : {"A01", "A02", "A03"})
    to->RunNative((engine == "postgresql" ? "analyze " : "analyze table ") + std::string(table));
}

std::unique_ptr<PlainOdbc> OpenBare(const std::string& engine, const std::string& connection_string) {
  const odbc::Engine& ways = EngineOf(engine);
  auto bare = std::make_unique<PlainOdbc>(
      odbc::WithAttributes(odbc::ServersOf(connection_string).front(), std::string(ways.attributes)),
      ways.speaks_utf8);
  for (const std::string_view setting : ways.session)
    bare->Run(environment::Replace(environment::Replace(setting, "%ms", "5000"), "%s", "5"));
  return bare;
}

Translator::Translator(const std::string& engine, std::shared_ptr<odbc::OdbcConnection> server)
    : engine_(EngineOf(engine)),
      server_(std::move(server)),
      tables_({[] { return std::int64_t{0}; },
               [this](const std::string& table) {
                 const ado::Snapshot rows = server_->RunNative(
                     environment::Replace(engine_.columns, "%", jet::ConstantOf(table, engine_.renderer)));
                 jet::TableColumns columns;
                 for (std::size_t row = 0; row < rows.RowCount(); ++row)
                   columns.push_back(jet::ColumnOfDeclaration(environment::TextOf(rows.ValueAt(row, 0)),
                                                              environment::TextOf(rows.ValueAt(row, 1))));
                 return columns;
               },
               true}) {}

std::string Translator::NativeOf(const std::string& statement) {
  return tables_.Translate(statement, engine_.renderer).text;
}

}  // namespace dossierkit::bench
