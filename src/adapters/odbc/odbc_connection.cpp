#include "adapters/odbc/odbc_connection.h"

#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/odbc_session.h"
#include "adapters/odbc/odbc_statements.h"
#include "adapters/odbc/odbc_transactions.h"
#include "platform/environment/failure.h"

namespace dossierkit::odbc {

// What is open together.
struct OdbcConnection::Parts {
  Parts(const std::string& connection_string, std::chrono::milliseconds busy_timeout)
      : session(connection_string, busy_timeout) {}

  Session session;
  Transactions transactions{session};
  Statements statements{session};
};

OdbcConnection::OdbcConnection(const std::string& connection_string, std::chrono::milliseconds busy_timeout)
    : parts_(std::make_unique<Parts>(connection_string, busy_timeout)) {}

OdbcConnection::~OdbcConnection() = default;

void OdbcConnection::Close() { parts_.reset(); }

bool OdbcConnection::IsOpen() const { return parts_ != nullptr; }

OdbcConnection::Parts& OdbcConnection::OpenParts(const std::string& statement) const {
  if (!parts_) throw environment::MakeFailure(environment::kConnectionClosed, statement);
  return *parts_;
}

ado::Snapshot OdbcConnection::Run(const std::string& statement) {
  Parts& parts = OpenParts(statement);
  parts.transactions.RequireUsable();
  return parts.statements.Run(statement);
}

std::int32_t OdbcConnection::BeginTrans() { return OpenParts({}).transactions.Begin(); }

void OdbcConnection::CommitTrans() { OpenParts({}).transactions.Commit(); }

void OdbcConnection::RollbackTrans() { OpenParts({}).transactions.Rollback(); }

std::string OdbcConnection::EngineName() const { return std::string(OpenParts({}).session.engine().name); }

const jet::Renderer& OdbcConnection::EngineRenderer() const {
  return OpenParts({}).session.engine().renderer;
}

ado::Snapshot OdbcConnection::RunNative(const std::string& statement) {
  Parts& parts = OpenParts(statement);
  parts.transactions.RequireUsable();
  return parts.statements.RunNative(statement);
}

std::string ShownConnectionString(const std::string& connection_string) {
  std::string shown;
  for (const auto& [name, value] : AttributesOf(connection_string)) {
    shown.append(shown.empty() ? "" : ";")
        .append(name)
        .append("=")
        .append(HoldsPassword(name, value) ? "***" : value);
  }
  return shown;
}

}  // namespace dossierkit::odbc
