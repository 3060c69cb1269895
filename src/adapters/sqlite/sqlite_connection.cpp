#include "adapters/sqlite/sqlite_connection.h"

#include <sqlite3.h>

#include <filesystem>
#include <system_error>
#include <utility>

#include "adapters/sqlite/sqlite_engine.h"
#include "adapters/sqlite/sqlite_functions.h"
#include "platform/environment/failure.h"

namespace dossierkit::sqlite {
namespace {

using environment::Failure;

void RequireDatabaseFile(const std::string& path) {
  const auto fail = [&](const std::string& what) {
    throw Failure(environment::kEngineFailure, what + "：" + path);
  };
  std::error_code error;
  const std::filesystem::path file(std::u8string(path.begin(), path.end()));
  if (!std::filesystem::exists(file, error)) fail("数据库文件不存在");
  if (std::filesystem::is_directory(file, error)) fail("不是数据库，而是文件夹");
  // SQLite takes an empty file for a new database; here it is a file that lost its content.
  if (std::filesystem::file_size(file, error) == 0) fail("文件不是数据库");
}

}  // namespace

// Reads the file, so that one that is no database is told of now and not at the first statement.
void SqliteConnection::RequireReadable(const Engine& engine, const std::string& path) {
  const char* const kRead = "select count(*) from sqlite_master";
  const int code = sqlite3_exec(engine.handle.Get(), kRead, nullptr, nullptr, nullptr) & 0xFF;
  // The file itself is open by now: it is the log beside it that cannot be written.
  if (code == SQLITE_CANTOPEN || code == SQLITE_READONLY) {
    throw Failure(environment::kEngineFailure, "无法写入数据库的日志，请检查所在文件夹的权限：" + path);
  }
  if (code != SQLITE_OK) throw FailureOf(engine.handle.Get(), kRead);
}

SqliteConnection::SqliteConnection(const std::string& path, std::chrono::milliseconds busy_timeout) {
  RequireDatabaseFile(path);
  engine_ = std::make_unique<Engine>(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
  sqlite3_busy_timeout(engine_->handle.Get(), static_cast<int>(busy_timeout.count()));
  RequireReadable(*engine_, path);
  // The journal stays as the host chose it. In either mode what was reported as saved outlives a power cut:
  // EXTRA flushes the file, its log or journal, and the folder from which a journal is removed.
  engine_->handle.RunScript("pragma synchronous=extra");
  // 16 MiB, taken as needed: a code table of 100,000 rows with its indexes stays in memory.
  engine_->handle.RunScript("pragma cache_size=-16384");
}

void SqliteConnection::CreateFile(const std::string& path) {
  std::error_code error;
  const std::filesystem::path file(std::u8string(path.begin(), path.end()));
  if (std::filesystem::symlink_status(file, error).type() != std::filesystem::file_type::not_found)
    throw Failure(environment::kFileExists, "已有文件：" + path);
  // Only this writes the first page.
  Engine(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX)
      .handle.RunScript("pragma journal_mode=wal");
}

SqliteConnection::SqliteConnection(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

SqliteConnection::~SqliteConnection() = default;

void SqliteConnection::Close() { engine_.reset(); }

bool SqliteConnection::IsOpen() const { return engine_ != nullptr; }

Engine& SqliteConnection::OpenEngine(const std::string& statement) const {
  if (!engine_) throw environment::MakeFailure(environment::kConnectionClosed, statement);
  return *engine_;
}

ado::Snapshot SqliteConnection::Run(const std::string& statement) {
  Engine& engine = OpenEngine(statement);
  engine.transactions.RequireUsable(statement);
  return engine.statements.Run(statement);
}

std::int32_t SqliteConnection::BeginTrans() { return OpenEngine({}).transactions.Begin(); }

void SqliteConnection::CommitTrans() { OpenEngine({}).transactions.Commit(); }

void SqliteConnection::RollbackTrans() { OpenEngine({}).transactions.Rollback(); }

void SqliteConnection::StoreInFile(bool they_do) { OpenEngine({}).statements.StoreInFile(they_do); }

void SqliteConnection::RunScript(const std::string& script) { OpenEngine(script).handle.RunScript(script); }

std::string SqliteConnection::Pragma(const std::string& name) const {
  const std::string text = "pragma " + name;
  const Handle& handle = OpenEngine(text).handle;
  const Prepared prepared = handle.Prepare(text, text);
  return handle.Step(prepared.get(), text) ? TextOf(sqlite3_column_text(prepared.get(), 0)) : std::string();
}

std::string SqliteConnection::Bytes() const {
  sqlite3_int64 size = 0;
  unsigned char* bytes = sqlite3_serialize(OpenEngine({}).handle.Get(), "main", &size, 0);
  if (bytes == nullptr) return {};
  std::string copy(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
  sqlite3_free(bytes);
  return copy;
}

}  // namespace dossierkit::sqlite
