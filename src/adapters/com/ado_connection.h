// AdoConnection: the host's own ADODB.Connection, late bound. Its engine has the dialect already: every
// statement goes to it as it stands.
#pragma once

#include "adapters/com/late_bound.h"
#include "platform/ado/connection.h"

namespace dossierkit::com {

class AdoConnection : public ado::Connection {
 public:
  // Holds a reference on the host's object until its own end, and never opens or closes it.
  explicit AdoConnection(IDispatch* connection) : connection_(connection) {}

  bool IsOpen() const override;
  // Failures have ADO's number and words.
  ado::Snapshot Run(const std::string& statement) override;
  std::int32_t BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;

 private:
  LateBound connection_;
};

// A new ADODB.Connection that nobody has opened. Throws 429 where the machine has none.
Pointer<IDispatch> MakeUnopenedConnection();

}  // namespace dossierkit::com
