// Rights on a server: a role for clerks, and what a visit needs that sees its own person's rows only.
#pragma once

#include "adapters/odbc/odbc_connection.h"
#include "platform/environment/export.h"

namespace dossierkit::server {

// Makes for the dossier database of `server` the role dossierkit_clerk, which may read all of its tables and
// write the information sets and S_GUID, and nothing else; and what OwnRows needs: on PostgreSQL the role
// dossierkit_visit with row-level security on the sets of many records, on MariaDB a second database of
// views, with "_visit" behind its name. Doing it again, as after a new set or column, does no harm. Throws a
// Failure: its user needs the right to make roles, and on MariaDB databases.
DOSSIERKIT_EXPORT void PrepareRights(odbc::OdbcConnection& server);

}  // namespace dossierkit::server
