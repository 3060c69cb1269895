// Engine: a database that is open, with its transactions and the statements that run on it.
#pragma once

#include <string>

#include "adapters/sqlite/sqlite_handle.h"
#include "adapters/sqlite/sqlite_statements.h"
#include "adapters/sqlite/sqlite_transactions.h"

namespace dossierkit::sqlite {

struct Engine {
  Engine(const std::string& path, int flags) : handle(path, flags), transactions(handle, path) {}

  Handle handle;
  Transactions transactions;
  Statements statements{handle};
};

}  // namespace dossierkit::sqlite
