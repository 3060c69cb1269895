#include "adapters/sqlite/sqlite_functions.h"

#include <exception>
#include <memory>
#include <string_view>

#include "platform/environment/text.h"
#include "platform/jet/like.h"
#include "platform/jet/tokens.h"

namespace dossierkit::sqlite {
namespace {

// The value as text; empty where memory ran out.
std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text == nullptr ? std::string_view()
                         : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

// like(pattern, text): how SQLite calls "text like pattern".
void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
    return sqlite3_result_null(context);
  }
  try {
    // A constant pattern is taken apart once for all rows.
    const auto* pattern = static_cast<const jet::LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<jet::LikePattern> made;
    if (pattern == nullptr) {
      made = std::make_unique<jet::LikePattern>(TextOf(arguments[0]));
      pattern = made.get();
    }
    sqlite3_result_int(context, pattern->Matches(TextOf(arguments[1])) ? 1 : 0);
    if (made) {
      sqlite3_set_auxdata(context, 0, made.release(),
                          [](void* old) { delete static_cast<jet::LikePattern*>(old); });
    }
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

// The piece of `message` behind `start` and before `end`; false where it does not begin so.
bool Cut(std::string_view message, std::string_view start, std::string_view end, std::string& piece) {
  const std::size_t found = message.find(start);
  if (found == std::string_view::npos) return false;
  const std::string_view rest = message.substr(found + start.size());
  piece = std::string(end.empty() ? rest : rest.substr(0, rest.find(end)));
  return true;
}

// Failures that SQLite tells by its message alone.
environment::Failure FailureOfMessage(const std::string& message, const std::string& statement) {
  using environment::Failure;
  std::string piece;
  if (Cut(message, "no such table: ", "", piece)) {
    return Failure(environment::kNoSuchTable,
                   "找不到输入表或查询“" + piece + "”。确定它是否存在，以及它的名称的拼写是否正确。",
                   statement);
  }
  if (Cut(message, "no such column: ", "", piece)) {
    return Failure(environment::kUnknownName, "至少一个参数没有被指定值：未知的名称“" + piece + "”。",
                   statement);
  }
  if (Cut(message, "has no column named ", "", piece)) {
    return Failure(environment::kUnknownName,
                   "语句包含下列未知的字段名：“" + piece + "”。确保输入的名称正确。", statement);
  }
  if (Cut(message, "ambiguous column name: ", "", piece)) {
    return Failure(environment::kSyntaxError, "特定字段“" + piece + "”可以参考 SQL 语句中的多个表。",
                   statement);
  }
  if (Cut(message, "near \"", "\": syntax error", piece)) {
    return Failure(environment::kSyntaxError, "SQL 语句语法错误：“" + piece + "”附近有错。", statement);
  }
  if (message == "incomplete input")
    return Failure(environment::kSyntaxError, "SQL 语句语法错误：语句不完整。", statement);
  if (message == "row value misused") {
    return Failure(environment::kSyntaxError, "SQL 语句语法错误：只要一个值的地方有多个值。", statement);
  }
  return Failure(environment::kSyntaxError, "SQL 语句语法错误：" + message + "。", statement);
}

}  // namespace

std::string WithLength(const std::string& statement) {
  // A function of that name stands in few statements.
  if (environment::LowerCase(statement).find("len") == std::string::npos) return statement;
  std::string result;
  std::size_t copied = 0;
  const auto tokens = jet::Tokenize(statement);
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    if (!tokens[i].Is("len") || !tokens[i + 1].Is("(")) continue;
    result.append(statement, copied, tokens[i].End() - copied).append("gth");
    copied = tokens[i].End();
  }
  return result.append(statement, copied);
}

void RegisterFunctions(sqlite3* database) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  sqlite3_create_function(database, "like", 2, kFlags, nullptr, Like, nullptr, nullptr);
}

environment::Failure FailureOf(sqlite3* database, const std::string& statement) {
  const std::string message = environment::ValidUtf8(sqlite3_errmsg(database));
  const auto engine_failure = [&](const std::string& description) {
    return environment::Failure(environment::kEngineFailure, description, statement);
  };
  switch (sqlite3_errcode(database) & 0xFF) {
    case SQLITE_ERROR: return FailureOfMessage(message, statement);
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return engine_failure("数据库正被占用，请稍后再试。");
    case SQLITE_READONLY: return engine_failure("不能更新：数据库是只读的。");
    case SQLITE_FULL: return engine_failure("磁盘已满。");
    case SQLITE_IOERR: return engine_failure("磁盘读写错误：" + message + "。");
    case SQLITE_CORRUPT: return engine_failure("数据库已损坏：" + message + "。");
    case SQLITE_NOTADB: return engine_failure("文件不是数据库。");
    case SQLITE_CANTOPEN: return engine_failure("无法打开数据库文件。");
    case SQLITE_CONSTRAINT: return engine_failure("违反了数据库的约束：" + message + "。");
    case SQLITE_NOMEM: return engine_failure("内存不足。");
    case SQLITE_TOOBIG: return engine_failure("语句或数据太长。");
    default: return engine_failure("数据库错误：" + message + "。");
  }
}

}  // namespace dossierkit::sqlite
