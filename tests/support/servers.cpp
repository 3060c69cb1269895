#include "tests/support/servers.h"

#include <cstdio>
#include <cstdlib>

#include "platform/environment/text.h"

namespace dossierkit::tests {
namespace {

[[noreturn]] void EndProgram(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
  std::exit(2);
}

}  // namespace

std::string ServerString(const std::string& engine, const std::string& database) {
  const std::string variable = "DOSSIERKIT_" + environment::UpperCase(engine);
  const char* string = std::getenv(variable.c_str());
  if (string == nullptr || *string == '\0')
    EndProgram(variable +
               " is not set: scripts/servers.sh starts the servers and runs a command beside them.");
  if (database.empty()) return string;
  std::string other;
  for (const std::string& attribute : environment::Split(string, ";")) {
    other += (other.empty() ? "" : ";") +
             (attribute.starts_with("Database=") ? "Database=" + database : attribute);
  }
  return other;
}

std::shared_ptr<odbc::OdbcConnection> OpenServer(const std::string& engine, const std::string& database) {
  return std::make_shared<odbc::OdbcConnection>(ServerString(engine, database));
}

void MakeDatabase(const std::string& engine, const std::string& database) {
  const auto server = OpenServer(engine);
  server->RunNative("drop database if exists " + database);
  server->RunNative("create database " + database +
                    (engine == "postgresql" ? " template template0 encoding 'UTF8' locale 'C'"
                                            : " character set utf8mb4 collate utf8mb4_general_nopad_ci"));
}

std::string ServerOfThisRun() {
  const char* name = std::getenv("DOSSIERKIT_ENGINE");
  const std::string engine = name == nullptr ? "" : name;
  if (engine != "postgresql" && engine != "mariadb")
    EndProgram("DOSSIERKIT_ENGINE=" + engine + ": these tests run on a server, on postgresql or mariadb.");
  return engine;
}

}  // namespace dossierkit::tests
