// Transactions: their levels, and whether what is stored in one will be found again.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "adapters/sqlite/sqlite_handle.h"

namespace dossierkit::sqlite {

class Transactions {
 public:
  // `path` is told where the file is no longer there. `handle` must outlive it.
  Transactions(const Handle& handle, std::string path) : handle_(handle), path_(std::move(path)) {}

  std::int32_t Begin();
  void Commit();
  void Rollback();

  // Throws a Failure where the file was deleted, moved or replaced, and where SQLite has rolled back the
  // transaction by itself: what follows in it would be stored at once and without what came before.
  void RequireUsable(const std::string& statement) const;

 private:
  void RequireOpenOne() const;
  bool WasRolledBack() const;

  const Handle& handle_;
  std::string path_;
  std::int32_t level_ = 0;  // transactions that are open
};

}  // namespace dossierkit::sqlite
