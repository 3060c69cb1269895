#include "platform/ado/connection.h"

#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"

namespace dossierkit::ado {

std::shared_ptr<Recordset> Connection::Execute(const std::string& statement) {
  return std::make_shared<Recordset>(Run(statement));
}

Snapshot UnopenedConnection::Run(const std::string& statement) {
  throw environment::MakeFailure(environment::kConnectionClosed, statement);
}

std::int32_t UnopenedConnection::BeginTrans() {
  throw environment::MakeFailure(environment::kConnectionClosed);
}

void UnopenedConnection::CommitTrans() { throw environment::MakeFailure(environment::kConnectionClosed); }

void UnopenedConnection::RollbackTrans() { throw environment::MakeFailure(environment::kConnectionClosed); }

}  // namespace dossierkit::ado
