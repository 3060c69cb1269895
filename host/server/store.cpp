#include "host/server/store.h"

namespace dossierkit::server {

Store StoreOf(sqlite::SqliteConnection& file) {
  // It writes constants as the dialect does.
  static const jet::Renderer kRenderer;
  return {"SQLite", &file, &kRenderer, [&file](const std::string& statement) {
            file.RunScript(statement);
            return ado::Snapshot();
          }};
}

Store StoreOf(odbc::OdbcConnection& server) {
  return {server.EngineName(), &server, &server.EngineRenderer(),
          [&server](const std::string& statement) { return server.RunNative(statement); }};
}

}  // namespace dossierkit::server
