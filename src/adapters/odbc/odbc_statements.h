// Statements: runs statements of the dialect on a server.
#pragma once

#include <cstdint>
#include <string>

#include "adapters/odbc/odbc_session.h"
#include "platform/ado/snapshot.h"
#include "platform/jet/column_cache.h"

namespace dossierkit::odbc {

class Statements {
 public:
  // `session` must outlive it.
  explicit Statements(Session& session);

  // The rows that one statement gives, no columns for one that gives none.
  ado::Snapshot Run(const std::string& statement);
  // The same for a text of the server's own SQL.
  ado::Snapshot RunNative(const std::string& text);

 private:
  jet::TableColumns ColumnsOf(const std::string& table);
  ado::Snapshot Rows(const jet::Statement& translated);

  Session& session_;
  jet::ColumnCache tables_;
};

}  // namespace dossierkit::odbc
