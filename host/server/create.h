// Makes a dossier database on a server.
#pragma once

#include <string>

#include "adapters/odbc/odbc_connection.h"
#include "platform/ado/connection.h"

namespace dossierkit::server {

// Makes in the empty database of `to` the tables, indexes and triggers of `from`, a database of the embedded
// engine, and copies its rows, all of them or nothing. Throws a Failure; a database that has a table or view
// already, or whose order is not that of bytes, is refused before anything is done.
void CreateFrom(ado::Connection& from, odbc::OdbcConnection& to);

}  // namespace dossierkit::server
