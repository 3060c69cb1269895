// The sample database on a server: each test has a copy of its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/support/database.h"

namespace dossierkit::tests {

// A fresh copy of the sample database on that server.
std::shared_ptr<Database> SampleOnServer(const std::string& engine);

// The statements of a script, cut at the ";" that stand in no quotes.
std::vector<std::string> StatementsOf(const std::string& script);

// A statement of a test, which is written for SQLite, in that server's own SQL.
std::string ForServer(const std::string& engine, const std::string& statement);

}  // namespace dossierkit::tests
