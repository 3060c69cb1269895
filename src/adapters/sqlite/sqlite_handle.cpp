#include "adapters/sqlite/sqlite_handle.h"

#include "adapters/sqlite/sqlite_functions.h"
#include "platform/environment/failure.h"
#include "platform/jet/engine_failure.h"

namespace dossierkit::sqlite {

std::string TextOf(const unsigned char* text) {
  return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

Handle::Handle(const std::string& path, int flags) {
  if (sqlite3_open_v2(path.c_str(), &database_, flags, nullptr) != SQLITE_OK) {
    sqlite3_close_v2(database_);
    throw environment::Failure(environment::kEngineFailure, "无法打开数据库文件：" + path);
  }
  RegisterFunctions(database_);
  // A name in double quotes is never a text.
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
}

Handle::~Handle() { sqlite3_close_v2(database_); }

Prepared Handle::Prepare(const std::string& text, const std::string& statement) const {
  sqlite3_stmt* prepared = nullptr;
  const char* tail = nullptr;
  if (sqlite3_prepare_v2(database_, text.data(), static_cast<int>(text.size()), &prepared, &tail) !=
      SQLITE_OK) {
    throw FailureOf(database_, statement);
  }
  Prepared owned(prepared);
  if (prepared == nullptr || tail != text.data() + text.size()) {
    throw jet::FailureOf(jet::EngineFailure::kSyntax, "不是单独一条语句", statement);
  }
  return owned;
}

Prepared Handle::PrepareForThisSchema(const std::string& text, const std::string& statement) const {
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare(database_, text.data(), static_cast<int>(text.size()), &prepared, nullptr) !=
      SQLITE_OK) {
    throw FailureOf(database_, statement);
  }
  return Prepared(prepared);
}

bool Handle::Step(sqlite3_stmt* prepared, const std::string& statement) const {
  const int result = sqlite3_step(prepared);
  if (result != SQLITE_ROW && result != SQLITE_DONE) throw FailureOf(database_, statement);
  return result == SQLITE_ROW;
}

void Handle::RunScript(const std::string& script) const {
  if (sqlite3_exec(database_, script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw FailureOf(database_, script);
  }
}

}  // namespace dossierkit::sqlite
