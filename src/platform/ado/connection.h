// Connection: the port through which all SQL reaches an engine.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/ado/snapshot.h"

namespace dossierkit::ado {

class Recordset;

// How long a statement waits for another program's write before it fails, on every engine.
inline constexpr std::chrono::milliseconds kBusyTimeout{5000};

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

  // Transactions, for hosts: the system itself uses none. They nest. BeginTrans gives the level that it
  // opened, 1 for the outermost; the others end the innermost one. Only the commit of level 1 stores
  // anything for good. A commit that fails leaves its transaction open, to be repeated or rolled back.
  // Without a transaction CommitTrans and RollbackTrans throw a Failure (kNoTransaction).
  virtual std::int32_t BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;
};

// A connection that was never opened: every statement and every transaction fails (3709).
class UnopenedConnection : public Connection {
 public:
  bool IsOpen() const override { return false; }
  Snapshot Run(const std::string& statement) override;
  std::int32_t BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
};

}  // namespace dossierkit::ado
