// OdbcConnection: the servers that are reached through ODBC.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/ado/connection.h"
#include "platform/environment/export.h"

namespace dossierkit::jet {
struct Renderer;
}

namespace dossierkit::odbc {

// One session on a server, used from one thread. Outside a transaction every statement is one of its own and
// is stored when Run returns. Where the server had gone, the next statement outside a transaction connects
// anew. One whose machine gives no sign for four times as long as `busy_timeout` has gone as well; one that
// is slow has not.
class DOSSIERKIT_EXPORT OdbcConnection : public ado::Connection {
 public:
  // Connects by a connection string of ODBC (UTF-8), as in "Driver=PostgreSQL Unicode;Server=..;Database=..;
  // Uid=..;Pwd=..". "Server=a,b:3307,c" are the nodes of a cluster: the first one that answers is used, and
  // the next one once it has gone. Throws a Failure for a server that cannot be reached, refuses the user, or
  // is none of those whose ways are known; no password stands in it.
  explicit OdbcConnection(const std::string& connection_string,
                          std::chrono::milliseconds busy_timeout = ado::kBusyTimeout);
  ~OdbcConnection() override;
  OdbcConnection(const OdbcConnection&) = delete;
  OdbcConnection& operator=(const OdbcConnection&) = delete;

  // From now on every statement fails (3709). Closing twice is no failure.
  void Close();

  bool IsOpen() const override;
  ado::Snapshot Run(const std::string& statement) override;
  std::int32_t BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

  // The server's name, as in "PostgreSQL".
  std::string EngineName() const;
  // How the server writes constants and names.
  const jet::Renderer& EngineRenderer() const;
  // Runs one statement of the server's own SQL, past the dialect, and gives its rows: schemas and test data.
  ado::Snapshot RunNative(const std::string& statement);

 private:
  struct Parts;
  Parts& OpenParts(const std::string& statement) const;

  std::unique_ptr<Parts> parts_;
};

// A connection string as it may be shown: "***" for each password.
DOSSIERKIT_EXPORT std::string ShownConnectionString(const std::string& connection_string);

}  // namespace dossierkit::odbc
