#include "adapters/sqlite/sqlite_transactions.h"

#include "platform/environment/failure.h"
#include "platform/jet/engine_failure.h"

namespace dossierkit::sqlite {

std::int32_t Transactions::Begin() {
  RequireUsable("BeginTrans");
  handle_.RunScript(level_ == 0 ? "begin immediate" : "savepoint nested");
  return ++level_;
}

void Transactions::Commit() {
  RequireOpenOne();
  RequireUsable("CommitTrans");
  handle_.RunScript(level_ == 1 ? "commit" : "release nested");
  --level_;
}

void Transactions::Rollback() {
  RequireOpenOne();
  if (!WasRolledBack()) handle_.RunScript(level_ == 1 ? "rollback" : "rollback to nested; release nested");
  --level_;
}

void Transactions::RequireUsable(const std::string& statement) const {
  // A deleted file lives on, unseen, as long as somebody has it open. One look at its name: 0.7 µs, where
  // the simplest select takes 8.
  int moved = 0;
  sqlite3_file_control(handle_.Get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  if (moved != 0) {
    throw environment::Failure(environment::kEngineFailure, "数据库文件已被移走或替换：" + path_, statement);
  }
  // A full disk or a trigger makes SQLite do so.
  if (WasRolledBack()) throw jet::FailureOf(jet::EngineFailure::kRolledBack, {}, {});
}

void Transactions::RequireOpenOne() const {
  if (level_ == 0) throw environment::MakeFailure(environment::kNoTransaction);
}

bool Transactions::WasRolledBack() const { return level_ > 0 && sqlite3_get_autocommit(handle_.Get()) != 0; }

}  // namespace dossierkit::sqlite
