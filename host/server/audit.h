// Audit on a server: who changed which record when, and from what into what.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "adapters/odbc/odbc_connection.h"
#include "platform/environment/export.h"

namespace dossierkit::server {

// From now on every change of a row of the information sets is written down, by whatever program. Doing it
// again, as after a new set or column, does no harm. Throws a Failure: its user needs the right to make
// triggers.
DOSSIERKIT_EXPORT void PrepareAudit(odbc::OdbcConnection& server);

struct Change {
  std::int64_t number = 0;  // rises from change to change
  std::string time;         // of the server, yyyy-mm-dd hh:mm:ss
  std::string user;         // of the connection
  std::string table;        // in small letters
  std::string action;       // "insert", "update" or "delete"
  std::string before;       // the row as a JSON object, empty for a new one
  std::string after;        // empty for one that was deleted
};

// The changes of a person's rows, the oldest first; none where nothing was written down. Throws a Failure
// where the audit was not prepared.
DOSSIERKIT_EXPORT std::vector<Change> HistoryOf(odbc::OdbcConnection& server, const std::string& person);

// Where a record came back.
struct RestoredRecord {
  std::string person;
  std::string table;                   // in small letters
  std::optional<std::int64_t> number;  // in a set of many records
};

// Brings back the record as it stood before the change of that number. In a set of one record it takes the
// place of the person's present one; in a set of many it overwrites none: where its number is taken it gets
// the one behind the highest. It is itself a change that is written down. Throws a Failure, and nothing has
// changed then: where there was no record before the change, the person has no row in
// A01, or several in the set of one record.
DOSSIERKIT_EXPORT RestoredRecord RestoreRecord(odbc::OdbcConnection& server, std::int64_t number);

}  // namespace dossierkit::server
