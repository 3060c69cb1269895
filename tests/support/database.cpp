#include "tests/support/database.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "tests/support/memory_database.h"
#include "tests/support/paths.h"
#ifdef DOSSIERKIT_SERVERS
#include "tests/support/server_database.h"
#endif
#ifdef _WIN32
#include "adapters/com/ado_connection.h"
#include "tests/adapters/com/stand_in.h"
#endif

namespace dossierkit::tests {
namespace {

class SqliteDatabase : public Database {
 public:
  explicit SqliteDatabase(const std::string& bytes) : connection_(OpenInMemory(bytes)) {}

  bool IsOpen() const override { return connection_->IsOpen(); }
  ado::Snapshot Run(const std::string& statement) override { return connection_->Run(statement); }
  std::int32_t BeginTrans() override { return connection_->BeginTrans(); }
  void CommitTrans() override { connection_->CommitTrans(); }
  void RollbackTrans() override { connection_->RollbackTrans(); }
  void RunScript(const std::string& script) override { connection_->RunScript(script); }
  std::string Bytes() override { return connection_->Bytes(); }
  void Close() override { connection_->Close(); }

 private:
  std::shared_ptr<sqlite::SqliteConnection> connection_;
};

std::shared_ptr<Database> SampleOnSqlite() {
  static const std::string bytes = [] {
    std::ifstream file(SampleDatabaseFile(), std::ios::binary);
    if (!file) throw std::runtime_error("no sample database at " + SampleDatabaseFile());
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }();
  return std::make_shared<SqliteDatabase>(bytes);
}

constexpr Engine kEngines[] = {
    {"sqlite", true, true, "rowid", SampleOnSqlite},
#ifdef _WIN32
    {"ado", true, true, "rowid", SampleOnSqlite},
#endif
#ifdef DOSSIERKIT_SERVERS
    {"postgresql", false, false, "ctid", [] { return SampleOnServer("postgresql"); }},
    {"mariadb", false, true, "entry_number", [] { return SampleOnServer("mariadb"); }},
    {"galera", false, true, "entry_number", [] { return SampleOnServer("galera"); }},
#endif
};

// Looked for before the first test, so that a slip is told at once.
const Engine& kEngine = EngineOfThisRun();

}  // namespace

const Engine& EngineNamed(const std::string& name) {
  std::string known;
  for (const Engine& engine : kEngines) {
    if (name == engine.name) return engine;
    known += (known.empty() ? "" : ", ") + std::string(engine.name);
  }
  std::fprintf(stderr, "%s=%s: the tests do not know this engine. They run on: %s.\n", kEngineVariable,
               name.c_str(), known.c_str());
  std::exit(2);
}

const Engine& EngineOfThisRun() {
  static const Engine& engine = [&]() -> const Engine& {
    const char* name = std::getenv(kEngineVariable);
    return EngineNamed(name == nullptr || *name == '\0' ? kEngines[0].name : name);
  }();
  return engine;
}

std::shared_ptr<ado::Connection> AsGiven(std::shared_ptr<ado::Connection> connection) {
#ifdef _WIN32
  if (kEngine.name == std::string("ado")) {
    com::Pointer<IDispatch> host;
    *host.Put() = new com::StandInConnection(std::move(connection));
    return std::make_shared<com::AdoConnection>(host.Get());
  }
#endif
  return connection;
}

std::shared_ptr<Database> SampleDatabase() { return kEngine.sample(); }

}  // namespace dossierkit::tests
