// OwnRows: a visit that sees its own person's rows only. For any host, beside the care of its users.
#pragma once

#include <functional>
#include <string>

#include "adapters/odbc/odbc_connection.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "platform/environment/export.h"

namespace dossierkit::server {

// While it lives, the sets of many records show on this connection the rows of `person` and of every
// identifier drawn from S_GUID on it since, and no others: Delete then numbers one person's records from 1,
// takes milliseconds in a table of a million rows, and never comes to 32,767. A01, the sets of one record,
// metadata, code tables and S_GUID stay whole. To be made before a visit on the connection that the component
// has, and dropped behind it; one at a time on a connection. A server that had to be connected anew meanwhile
// shows all rows again.
class DOSSIERKIT_EXPORT OwnRows {
 public:
  // Throws a Failure, and nothing has changed then: a server must have been prepared by
  // `dossier create-rights`. `person` is empty for one who is not there yet.
  OwnRows(sqlite::SqliteConnection& connection, const std::string& person);
  OwnRows(odbc::OdbcConnection& connection, const std::string& person);
  // Shows all rows again.
  ~OwnRows();
  OwnRows(const OwnRows&) = delete;
  OwnRows& operator=(const OwnRows&) = delete;

 private:
  std::function<void()> take_down_;
};

}  // namespace dossierkit::server
