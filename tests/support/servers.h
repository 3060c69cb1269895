// Servers: the servers that scripts/servers.sh started, as the tests reach them.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "adapters/odbc/odbc_connection.h"

namespace dossierkit::tests {

// For a lock and for a connection, more than a host has: on a machine that is busy, or that stood still for a
// moment, either takes its time.
inline constexpr std::chrono::minutes kPatience{1};

// The connection string of the server of that engine ("postgresql", "mariadb", "galera": the first node of
// the cluster), to a database on it unless that is empty. Where no server was started it ends the program
// with a sentence on standard error and exit code 2.
std::string ServerString(const std::string& engine, const std::string& database = {});

// The same of one node of the cluster, from 0, and of all of them in one string.
std::string NodeString(std::size_t node, const std::string& database = {});
std::string ClusterString(const std::string& database = {});

// Opens the server of an engine.
std::shared_ptr<odbc::OdbcConnection> OpenServer(const std::string& engine, const std::string& database = {});

// Runs a statement that no session of a database may be in the way of: one that has ended stays for a moment.
void RunAlone(odbc::OdbcConnection& server, const std::string& statement);

// Makes a database without a table on it, in the place of one of that name.
void MakeDatabase(const std::string& engine, const std::string& database);

// The engine of this run, where it is one of the servers; else as above.
std::string ServerOfThisRun();

}  // namespace dossierkit::tests
