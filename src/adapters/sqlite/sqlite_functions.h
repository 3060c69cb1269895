// What the dialect needs of SQLite beyond what it has: its names of functions, like, and failures in Chinese.
#pragma once

#include <sqlite3.h>

#include <string>

#include "platform/environment/failure.h"

namespace dossierkit::sqlite {

// The statement with SQLite's own length for len, since an index may stand on it.
std::string WithLength(const std::string& statement);

// Registers the dialect's like on a connection.
void RegisterFunctions(sqlite3* database);

// The failure that a connection has just reported, in the words of the users' language.
environment::Failure FailureOf(sqlite3* database, const std::string& statement);

}  // namespace dossierkit::sqlite
