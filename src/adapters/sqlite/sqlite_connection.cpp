#include "adapters/sqlite/sqlite_connection.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>
#include <vector>

#include "adapters/sqlite/sqlite_functions.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/jet/statement.h"
#include "platform/jet/tokens.h"

namespace dossierkit::sqlite {
namespace {

using environment::Failure;
using environment::Value;

struct Finalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, Finalizer>;

std::string TextOf(const unsigned char* text) {
  return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

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

// The open handle and what is remembered of the schema.
class SqliteConnection::Engine {
 public:
  Engine(const std::string& path, int flags) : path_(path) {
    const int result = sqlite3_open_v2(path.c_str(), &database_, flags, nullptr);
    if (result != SQLITE_OK) {
      const Failure failure(environment::kEngineFailure, "无法打开数据库文件：" + path);
      sqlite3_close_v2(database_);
      throw failure;
    }
    RegisterFunctions(database_);
    // A name in double quotes is never a text.
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  }
  ~Engine() {
    update_.reset();
    schema_version_.reset();
    sqlite3_close_v2(database_);
  }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  sqlite3* database() const { return database_; }

  Prepared Prepare(const std::string& text, const std::string& statement) const {
    sqlite3_stmt* prepared = nullptr;
    const char* tail = nullptr;
    if (sqlite3_prepare_v2(database_, text.data(), static_cast<int>(text.size()), &prepared, &tail) !=
        SQLITE_OK) {
      throw FailureOf(database_, statement);
    }
    Prepared owned(prepared);
    // The dialect lets one statement through; should it ever err, the second one does not run either.
    if (prepared == nullptr || tail != text.data() + text.size()) {
      throw Failure(environment::kSyntaxError, "SQL 语句语法错误：不是单独一条语句。", statement);
    }
    return owned;
  }

  // Translates and runs an update. A renumbering sends the same one for every row of a table, so that the
  // schema is not looked at each time: should it have changed, the engine refuses what was prepared.
  void RunUpdate(const std::string& statement) {
    while (true) {
      try {
        const auto update =
            jet::Translate(statement, [this](std::string_view table) { return KnownColumnsOf(table); });
        if (TryUpdate(update, statement)) return;
      } catch (const Failure&) {
        // A constant may fit the table as it is declared by now.
        if (!ForgetOldSchema()) throw;
      }
    }
  }

  // True while there is a row.
  bool Step(sqlite3_stmt* prepared, const std::string& statement) const {
    const int result = sqlite3_step(prepared);
    if (result != SQLITE_ROW && result != SQLITE_DONE) throw FailureOf(database_, statement);
    return result == SQLITE_ROW;
  }

  // The columns of a table as they were when the schema was last looked at, or nullptr.
  const jet::TableColumns* KnownColumnsOf(std::string_view table) {
    const std::string key = environment::LowerCase(table);
    const auto known = tables_.find(key);
    if (known != tables_.end()) return &known->second;
    const std::string text = "select name, type from pragma_table_info(" + jet::LiteralOf(key) + ")";
    const Prepared prepared = Prepare(text, text);
    jet::TableColumns columns;
    while (Step(prepared.get(), text)) {
      columns.push_back(jet::ColumnOfDeclaration(TextOf(sqlite3_column_text(prepared.get(), 0)),
                                                 TextOf(sqlite3_column_text(prepared.get(), 1))));
    }
    return columns.empty() ? nullptr : &(tables_[key] = std::move(columns));
  }

  // The columns of a table as it is declared now, or nullptr.
  const jet::TableColumns* ColumnsOf(std::string_view table) {
    ForgetOldSchema();
    return KnownColumnsOf(table);
  }

  void RunScript(const std::string& script) const {
    if (sqlite3_exec(database_, script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw FailureOf(database_, script);
    }
  }

  std::int32_t BeginTrans() {
    RequireUsable("BeginTrans");
    RunScript(level_ == 0 ? "begin immediate" : "savepoint nested");
    return ++level_;
  }

  void CommitTrans() {
    RequireTransaction();
    RequireUsable("CommitTrans");
    RunScript(level_ == 1 ? "commit" : "release nested");
    --level_;
  }

  void RollbackTrans() {
    RequireTransaction();
    if (!WasRolledBack()) RunScript(level_ == 1 ? "rollback" : "rollback to nested; release nested");
    --level_;
  }

  // Whatever is stored from now on must be found again.
  void RequireUsable(const std::string& statement) const {
    RequireFileInPlace(statement);
    RequireWholeTransaction();
  }

 private:
  void RequireTransaction() const {
    if (level_ == 0) throw environment::MakeFailure(environment::kNoTransaction);
  }

  // A deleted file lives on, unseen, as long as somebody has it open. One look at its name: 0.7 µs, where
  // the simplest select takes 8.
  void RequireFileInPlace(const std::string& statement) const {
    int moved = 0;
    sqlite3_file_control(database_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    if (moved != 0)
      throw Failure(environment::kEngineFailure, "数据库文件已被移走或替换：" + path_, statement);
  }

  // Some failures (a full disk, a trigger) make the engine roll back the whole transaction. What follows in
  // it is refused, since it would be stored at once and without what came before.
  void RequireWholeTransaction() const {
    if (WasRolledBack())
      throw Failure(environment::kEngineFailure, "数据库已经撤销了这个事务：请回滚后再重新开始。");
  }

  bool WasRolledBack() const { return level_ > 0 && sqlite3_get_autocommit(database_) != 0; }

  // Runs an update with its constants as parameters, and keeps the last one prepared. False, and nothing was
  // done, where the schema has changed since the text was translated.
  bool TryUpdate(const jet::Statement& translated, const std::string& statement) {
    std::string shape;
    std::size_t copied = 0;
    for (const jet::Constant& constant : translated.constants) {
      shape.append(translated.text, copied, constant.position - copied).append("?");
      copied = constant.position + constant.size;
    }
    shape.append(translated.text, copied);
    if (!update_ || shape != update_shape_) {
      update_.reset();
      if (ForgetOldSchema()) return false;
      update_ = PrepareForThisSchema(shape, statement);
      update_shape_ = std::move(shape);
    }
    int index = 0;
    for (const jet::Constant& constant : translated.constants) Bind(++index, constant.value);
    sqlite3_step(update_.get());
    // Takes no lock into the next statement, and tells what the step came to.
    const int result = sqlite3_reset(update_.get());
    if (result == SQLITE_SCHEMA) {
      update_.reset();
      return false;
    }
    if (result != SQLITE_OK) throw FailureOf(database_, statement);
    return true;
  }

  // As the same constant in an insert is stored.
  void Bind(int index, const Value& value) const {
    if (const auto* whole = value.As<std::int64_t>()) {
      sqlite3_bind_int64(update_.get(), index, *whole);
    } else if (const auto* number = value.As<double>()) {
      sqlite3_bind_double(update_.get(), index, *number);
    } else if (const auto* truth = value.As<bool>()) {
      sqlite3_bind_int(update_.get(), index, *truth ? 1 : 0);
    } else {
      const auto* date = value.As<environment::DateTime>();
      const std::string text = date ? jet::TextOfDate(*date) : environment::TextOf(value);
      sqlite3_bind_text(update_.get(), index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
  }

  // The older way to prepare: such a statement fails (SQLITE_SCHEMA) once the schema has changed, instead of
  // being prepared anew unasked.
  Prepared PrepareForThisSchema(const std::string& text, const std::string& statement) const {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare(database_, text.data(), static_cast<int>(text.size()), &prepared, nullptr) !=
        SQLITE_OK)
      throw FailureOf(database_, statement);
    return Prepared(prepared);
  }

  // Another program may change a table while this one is connected. True where one did.
  bool ForgetOldSchema() {
    static const std::string kText = "pragma schema_version";
    if (!schema_version_) schema_version_ = Prepare(kText, kText);
    const bool row = Step(schema_version_.get(), kText);
    const sqlite3_int64 version = row ? sqlite3_column_int64(schema_version_.get(), 0) : 0;
    sqlite3_reset(schema_version_.get());
    if (version == known_version_) return false;
    tables_.clear();
    known_version_ = version;
    return true;
  }

  std::string path_;
  sqlite3* database_ = nullptr;
  std::int32_t level_ = 0;  // transactions that are open
  Prepared schema_version_;
  Prepared update_;
  std::string update_shape_;
  sqlite3_int64 known_version_ = -1;
  std::map<std::string, jet::TableColumns> tables_;  // by name in small letters
};

namespace {

bool IsUpdate(std::string_view statement) {
  const std::size_t start = std::min(statement.find_first_not_of(" \t\r\n"), statement.size());
  return environment::EqualIgnoringCase(statement.substr(start, 6), "update");
}

ado::Column ColumnAt(sqlite3_stmt* prepared, int index, const jet::Statement& statement) {
  const char* name = sqlite3_column_name(prepared, index);
  const char* declared = sqlite3_column_decltype(prepared, index);
  ado::Column column{name == nullptr ? "" : name, ado::ColumnKind::kUnknown, {}};
  if (declared != nullptr) column.kind = jet::ColumnOfDeclaration({}, declared).kind;
  const auto place = static_cast<std::size_t>(index);
  if (place < statement.columns.size()) {
    column.format = statement.columns[place].format;
    if (declared == nullptr) column.kind = statement.columns[place].kind;
  }
  return column;
}

void AppendCell(ado::Snapshot& rows, sqlite3_stmt* prepared, int index) {
  switch (sqlite3_column_type(prepared, index)) {
    case SQLITE_NULL: return rows.AppendNull();
    case SQLITE_INTEGER: return rows.AppendInteger(sqlite3_column_int64(prepared, index));
    case SQLITE_FLOAT: return rows.AppendFloating(sqlite3_column_double(prepared, index));
    default: break;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, index));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(prepared, index));
  rows.AppendText(text == nullptr ? std::string_view() : std::string_view(text, size));
}

}  // namespace

// Reads the file, so that one that is no database is told of now and not at the first statement.
void SqliteConnection::RequireReadable(const Engine& engine, const std::string& path) {
  const char* const kRead = "select count(*) from sqlite_master";
  const int code = sqlite3_exec(engine.database(), kRead, nullptr, nullptr, nullptr) & 0xFF;
  // The file itself is open by now: it is the log beside it that cannot be written.
  if (code == SQLITE_CANTOPEN || code == SQLITE_READONLY) {
    throw Failure(environment::kEngineFailure, "无法写入数据库的日志，请检查所在文件夹的权限：" + path);
  }
  if (code != SQLITE_OK) throw FailureOf(engine.database(), kRead);
}

SqliteConnection::SqliteConnection(const std::string& path, std::chrono::milliseconds busy_timeout) {
  RequireDatabaseFile(path);
  engine_ = std::make_unique<Engine>(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
  sqlite3_busy_timeout(engine_->database(), static_cast<int>(busy_timeout.count()));
  RequireReadable(*engine_, path);
  // The journal stays as the host chose it. In either mode what was reported as saved outlives a power cut:
  // EXTRA flushes the file, its log or journal, and the folder from which a journal is removed.
  engine_->RunScript("pragma synchronous=extra");
  // 16 MiB, taken as needed: a code table of 100,000 rows with its indexes stays in memory.
  engine_->RunScript("pragma cache_size=-16384");
}

SqliteConnection::SqliteConnection(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

SqliteConnection::~SqliteConnection() = default;

std::shared_ptr<SqliteConnection> SqliteConnection::OpenInMemory(const std::string& bytes) {
  auto engine =
      std::make_unique<Engine>(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX);
  if (!bytes.empty()) {
    auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
    if (copy == nullptr) throw Failure(environment::kEngineFailure, "内存不足。");
    std::memcpy(copy, bytes.data(), bytes.size());
    // A file that was written with a log says so in its header; in memory there is none.
    constexpr std::size_t kFormatVersions = 18;
    if (bytes.size() > kFormatVersions + 1) copy[kFormatVersions] = copy[kFormatVersions + 1] = 1;
    const auto size = static_cast<sqlite3_int64>(bytes.size());
    if (sqlite3_deserialize(engine->database(), "main", copy, size, size,
                            SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE) != SQLITE_OK) {
      throw FailureOf(engine->database(), {});
    }
    engine->RunScript("select count(*) from sqlite_master");
  }
  return std::shared_ptr<SqliteConnection>(new SqliteConnection(std::move(engine)));
}

void SqliteConnection::Close() { engine_.reset(); }

bool SqliteConnection::IsOpen() const { return engine_ != nullptr; }

SqliteConnection::Engine& SqliteConnection::OpenEngine(const std::string& statement) const {
  if (!engine_) throw environment::MakeFailure(environment::kConnectionClosed, statement);
  return *engine_;
}

ado::Snapshot SqliteConnection::Run(const std::string& statement) {
  Engine& engine = OpenEngine(statement);
  engine.RequireUsable(statement);
  if (IsUpdate(statement)) {
    engine.RunUpdate(statement);
    return {};
  }
  const jet::Statement translated =
      jet::Translate(statement, [&](std::string_view table) { return engine.ColumnsOf(table); });
  const Prepared prepared = engine.Prepare(WithLength(translated.text), statement);
  const int column_count = sqlite3_column_count(prepared.get());
  ado::Snapshot rows;
  // The first step compiles the statement anew if the schema has changed: only then are the columns
  // those of the rows.
  bool more = engine.Step(prepared.get(), statement);
  for (int i = 0; i < column_count; ++i) rows.AddColumn(ColumnAt(prepared.get(), i, translated));
  for (; more; more = engine.Step(prepared.get(), statement)) {
    for (int i = 0; i < column_count; ++i) AppendCell(rows, prepared.get(), i);
  }
  return rows;
}

std::int32_t SqliteConnection::BeginTrans() { return OpenEngine({}).BeginTrans(); }

void SqliteConnection::CommitTrans() { OpenEngine({}).CommitTrans(); }

void SqliteConnection::RollbackTrans() { OpenEngine({}).RollbackTrans(); }

void SqliteConnection::RunScript(const std::string& script) { OpenEngine(script).RunScript(script); }

std::string SqliteConnection::Pragma(const std::string& name) const {
  const std::string text = "pragma " + name;
  const Engine& engine = OpenEngine(text);
  const Prepared prepared = engine.Prepare(text, text);
  return engine.Step(prepared.get(), text) ? TextOf(sqlite3_column_text(prepared.get(), 0)) : std::string();
}

std::string SqliteConnection::Bytes() const {
  sqlite3_int64 size = 0;
  unsigned char* bytes = sqlite3_serialize(OpenEngine({}).database(), "main", &size, 0);
  if (bytes == nullptr) return {};
  std::string copy(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
  sqlite3_free(bytes);
  return copy;
}

}  // namespace dossierkit::sqlite
