// Transactions: their levels on a server.
#pragma once

#include <cstdint>
#include <string>

#include "adapters/odbc/odbc_session.h"

namespace dossierkit::odbc {

class Transactions {
 public:
  // `session` must outlive it.
  explicit Transactions(Session& session) : session_(session) {}

  std::int32_t Begin();
  void Commit();
  void Rollback();

  // Connects anew where the server had gone. In a transaction it throws a Failure instead: what came before
  // in it is gone.
  void RequireUsable();

 private:
  void RequireOpenOne() const;
  std::string Savepoint() const { return "dossierkit_" + std::to_string(level_); }

  Session& session_;
  std::int32_t level_ = 0;  // transactions that are open
};

}  // namespace dossierkit::odbc
