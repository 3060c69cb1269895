// What the dialect needs of SQLite beyond what it has: its names of functions, like, and failures in Chinese.
#pragma once

#include <sqlite3.h>

#include <string>

#include "platform/environment/failure.h"
#include "platform/jet/renderer.h"

namespace dossierkit::sqlite {

// SQLite's ways: its own length for len, since an index may stand on it, and Booleans as 1 and 0. Its text
// columns are declared so that they disregard case, and NULL comes first by itself.
inline constexpr jet::Renderer kRenderer{.len = "length", .true_constant = "1", .false_constant = "0"};

// Registers the dialect's like on a connection.
void RegisterFunctions(sqlite3* database);

// The failure that a connection has just reported, in the words of the users' language.
environment::Failure FailureOf(sqlite3* database, const std::string& statement);

}  // namespace dossierkit::sqlite
