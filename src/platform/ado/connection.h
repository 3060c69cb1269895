// Connection: the port through which all SQL reaches an engine.
#pragma once

#include <memory>
#include <string>

#include "platform/ado/snapshot.h"

namespace dossierkit::ado {

class Recordset;

// An ADO-like connection. An engine implements Run; tracing and fault injection wrap another
// connection.
class Connection {
 public:
  virtual ~Connection() = default;

  virtual bool IsOpen() const = 0;

  // Runs exactly one statement of the dialect and gives its rows (no columns for one that gives
  // none). Throws a Failure with the engine's description and the statement.
  virtual Snapshot Run(const std::string& statement) = 0;

  // Run, with the rows as an open recordset standing on its first row.
  std::shared_ptr<Recordset> Execute(const std::string& statement);
};

// A connection that was never opened: every statement fails (3709).
class UnopenedConnection : public Connection {
 public:
  bool IsOpen() const override { return false; }
  Snapshot Run(const std::string& statement) override;
};

}  // namespace dossierkit::ado
