// Statements: runs statements of the dialect on an open database.
#pragma once

#include <cstdint>
#include <string>

#include "adapters/sqlite/sqlite_handle.h"
#include "platform/ado/snapshot.h"
#include "platform/environment/value.h"
#include "platform/jet/column_cache.h"
#include "platform/jet/renderer.h"
#include "platform/jet/statement.h"

namespace dossierkit::sqlite {

class Statements {
 public:
  // `handle` must outlive it.
  explicit Statements(const Handle& handle);

  // The rows that one statement gives, no columns for one that gives none.
  ado::Snapshot Run(const std::string& statement);

  // Inserts, updates and deletes go to the tables of the database file, also where a temporary view of the
  // same name stands before one.
  void StoreInFile(bool they_do);

 private:
  std::int64_t SchemaVersion();
  jet::TableColumns ColumnsOf(const std::string& table) const;
  ado::Snapshot Rows(const jet::Statement& translated, const std::string& statement) const;
  bool TryUpdate(const jet::Statement& translated, const std::string& statement);
  void Bind(int index, const environment::Value& value) const;

  const Handle& handle_;
  jet::ColumnCache tables_;
  Prepared schema_version_;
  Prepared update_;  // the last one
  std::string update_shape_;
  jet::Renderer renderer_;
};

}  // namespace dossierkit::sqlite
