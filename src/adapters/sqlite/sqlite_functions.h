// What the dialect needs of SQLite beyond what it has: len, like, and its failures in Chinese.
#pragma once

#include <sqlite3.h>

#include <string>

#include "platform/environment/failure.h"

namespace dossierkit::sqlite {

// Registers len(s) and the dialect's like on a connection.
void RegisterFunctions(sqlite3* database);

// The failure that a connection has just reported, in the words of the users' language.
environment::Failure FailureOf(sqlite3* database, const std::string& statement);

}  // namespace dossierkit::sqlite
