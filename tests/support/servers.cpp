#include "tests/support/servers.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "platform/environment/text.h"
#include "tests/support/server_faults.h"

namespace dossierkit::tests {
namespace {

[[noreturn]] void EndProgram(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
  std::exit(2);
}

// As scripts/servers.sh tells it.
std::string StringOf(const std::string& engine) {
  const std::string variable = "DOSSIERKIT_" + environment::UpperCase(engine);
  const char* string = std::getenv(variable.c_str());
  if (string == nullptr || *string == '\0')
    EndProgram(variable +
               " is not set: scripts/servers.sh starts the servers and runs a command beside them.");
  return string;
}

// With another value of one attribute.
std::string With(const std::string& string, const std::string& name, const std::string& value) {
  std::string other;
  for (const std::string& attribute : environment::Split(string, ";"))
    other +=
        (other.empty() ? "" : ";") + (attribute.starts_with(name + "=") ? name + "=" + value : attribute);
  return other;
}

std::string ToDatabase(const std::string& string, const std::string& database) {
  return database.empty() ? string : With(string, "Database", database);
}

}  // namespace

std::string ServerString(const std::string& engine, const std::string& database) {
  return engine == "galera" ? NodeString(0, database) : ToDatabase(StringOf(engine), database);
}

std::string NodeString(std::size_t node, const std::string& database) {
  const std::string cluster = StringOf("galera");
  const std::string nodes = cluster.substr(cluster.find("Server=") + 7);
  return ToDatabase(
      With(cluster, "Server", environment::Split(nodes.substr(0, nodes.find(';')), ",").at(node)), database);
}

std::string ClusterString(const std::string& database) { return ToDatabase(StringOf("galera"), database); }

std::shared_ptr<odbc::OdbcConnection> OpenServer(const std::string& engine, const std::string& database) {
  return std::make_shared<odbc::OdbcConnection>(ServerString(engine, database), kPatience);
}

void RunAlone(odbc::OdbcConnection& server, const std::string& statement) {
  std::string told;
  const bool has_ended = WaitUntil([&] {
    told = Told([&] { server.RunNative(statement); });
    return told.find("is being accessed by other users") == std::string::npos;
  });
  if (!has_ended || !told.empty()) throw std::runtime_error(statement + ": " + told);
}

void MakeDatabase(const std::string& engine, const std::string& database) {
  const auto server = OpenServer(engine);
  RunAlone(*server, "drop database if exists " + database);
  RunAlone(*server, "create database " + database +
                        (engine == "postgresql" ? " template template0 encoding 'UTF8' locale 'C'"
                                                : " character set utf8mb4 collate utf8mb4_general_nopad_ci"));
}

std::string ServerOfThisRun() {
  const char* name = std::getenv("DOSSIERKIT_ENGINE");
  const std::string engine = name == nullptr ? "" : name;
  if (engine != "postgresql" && engine != "mariadb" && engine != "galera")
    EndProgram("DOSSIERKIT_ENGINE=" + engine +
               ": these tests run on a server, on postgresql, mariadb or galera.");
  return engine;
}

}  // namespace dossierkit::tests
