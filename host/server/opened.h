// Who has a person open on a server: advisory marks, for hosts that tell a second clerk before his visit.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "adapters/odbc/odbc_connection.h"
#include "platform/environment/export.h"

namespace dossierkit::server {

// Marks `person` as open by `clerk`, whose name should tell the machine as well, until the lease ends by the
// server's clock; called again by the same clerk it begins anew. Gives nothing then, or the clerk who has the
// person open, whose mark stays. Of several at once one is given nothing. Nobody is kept from a visit by it.
// Throws a Failure.
DOSSIERKIT_EXPORT std::optional<std::string> MarkOpen(odbc::OdbcConnection& server, const std::string& person,
                                                      const std::string& clerk, std::chrono::seconds lease);

// Takes this clerk's mark away; another's stays. Throws a Failure.
DOSSIERKIT_EXPORT void UnmarkOpen(odbc::OdbcConnection& server, const std::string& person,
                                  const std::string& clerk);

}  // namespace dossierkit::server
