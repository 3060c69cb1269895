// Databases on servers: made by the program, and moved from one engine to another.
#pragma once

#include <string>

#include "host/options.h"

namespace dossierkit::host {

// Makes in the empty database of the server that the options name what the database file `source` holds.
// Throws a Failure.
void CopyTo(const Options& options, const std::string& source);

// create-rights, create-audit, history and restore on the server that the options name. Throws a Failure.
void RunServerCommand(const Options& options);

// Copies a whole database, each named by a file or a connection string, with a bar on a terminal, and prints
// a line for each table: its rows and its checksum. A file is there under its name once it is whole. Throws a
// Failure.
void CopyAndTell(const std::string& from, const std::string& to);

}  // namespace dossierkit::host
