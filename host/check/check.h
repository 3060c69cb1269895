// Check: what a host's database lacks or holds wrongly, said before a clerk meets it. For any host: it needs
// the connection port, the compiled pages and, for the photographs, the limits of a picture file.
#pragma once

#include <string>
#include <vector>

#include "platform/ado/connection.h"
#include "platform/environment/export.h"

namespace dossierkit::check {

// One thing that is wrong. Where it lies in no single table, row or column, that one is empty.
struct Fault {
  std::string table;
  std::string row;
  std::string column;
  // One sentence in Chinese: where, what is wrong, what the clerk would meet, how to mend it.
  std::string text;
};

// Metadata against the compiled pages and the tables, code tables, then the records of all persons; once
// through each table. Changes nothing: what has to be tried by writing (S_GUID, and whether a text is
// compared without regard to case) is rolled back. A table of metadata or codes that the connection may not
// write is not tried so. Throws a Failure where the database cannot be read, or is busy.
DOSSIERKIT_EXPORT std::vector<Fault> CheckDatabase(ado::Connection& connection);

// The photographs of a folder against the persons. Throws a Failure where folder or persons cannot be read.
DOSSIERKIT_EXPORT std::vector<Fault> CheckPhotos(ado::Connection& connection, const std::string& folder);

}  // namespace dossierkit::check
