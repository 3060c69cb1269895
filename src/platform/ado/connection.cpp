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

}  // namespace dossierkit::ado
