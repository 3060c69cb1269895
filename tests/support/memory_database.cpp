#include "tests/support/memory_database.h"

#include <sqlite3.h>

#include <cstring>
#include <new>
#include <utility>

#include "adapters/sqlite/sqlite_engine.h"
#include "adapters/sqlite/sqlite_functions.h"

namespace dossierkit::tests {
namespace {

class MemoryDatabase : public sqlite::SqliteConnection {
 public:
  explicit MemoryDatabase(std::unique_ptr<sqlite::Engine> engine) : SqliteConnection(std::move(engine)) {}
};

void Read(const std::string& bytes, const sqlite::Handle& handle) {
  auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, bytes.data(), bytes.size());
  // A file that was written with a log says so in its header; in memory there is none.
  constexpr std::size_t kFormatVersions = 18;
  if (bytes.size() > kFormatVersions + 1) copy[kFormatVersions] = copy[kFormatVersions + 1] = 1;
  const auto size = static_cast<sqlite3_int64>(bytes.size());
  if (sqlite3_deserialize(handle.Get(), "main", copy, size, size,
                          SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE) != SQLITE_OK) {
    throw sqlite::FailureOf(handle.Get(), {});
  }
  handle.RunScript("select count(*) from sqlite_master");
}

}  // namespace

std::shared_ptr<sqlite::SqliteConnection> OpenInMemory(const std::string& bytes) {
  auto engine = std::make_unique<sqlite::Engine>(
      ":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX);
  if (!bytes.empty()) Read(bytes, engine->handle);
  return std::make_shared<MemoryDatabase>(std::move(engine));
}

}  // namespace dossierkit::tests
