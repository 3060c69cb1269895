#include "adapters/odbc/odbc_transactions.h"

#include "platform/environment/failure.h"
#include "platform/jet/engine_failure.h"

namespace dossierkit::odbc {

std::int32_t Transactions::Begin() {
  RequireUsable();
  if (level_ == 0) {
    session_.BeginTransaction();
    ++level_;
  } else {
    ++level_;
    try {
      session_.Run("savepoint " + Savepoint());
    } catch (...) {
      --level_;
      throw;
    }
  }
  return level_;
}

void Transactions::Commit() {
  RequireOpenOne();
  RequireUsable();
  if (level_ == 1) {
    session_.EndTransaction(true);
  } else {
    session_.Run("release savepoint " + Savepoint());
  }
  --level_;
}

void Transactions::Rollback() {
  RequireOpenOne();
  if (level_ == 1) {
    session_.EndTransaction(false);
  } else if (!session_.IsLost() && !session_.IsUndone()) {
    session_.Run("rollback to savepoint " + Savepoint());
  }
  --level_;
}

void Transactions::RequireUsable() {
  if (level_ > 0 && (session_.IsLost() || session_.IsUndone()))
    throw jet::FailureOf(jet::EngineFailure::kRolledBack, {}, {});
  if (session_.IsLost()) session_.Renew();
}

void Transactions::RequireOpenOne() const {
  if (level_ == 0) throw environment::MakeFailure(environment::kNoTransaction);
}

}  // namespace dossierkit::odbc
