#include "host/database.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>
#include <utility>

#include "adapters/sqlite/sqlite_connection.h"
#ifdef DOSSIERKIT_SERVERS
#include "adapters/odbc/odbc_connection.h"
#endif
#include "host/json.h"
#include "host/paths.h"
#include "platform/ado/recordset.h"
#include "platform/ado/tracing_connection.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

using environment::Failure;

// What a connection string of the embedded engine says.
struct Embedded {
  bool is_meant = false;
  std::string file;
};

Embedded EmbeddedOf(const std::string& connection) {
  std::string driver;
  std::string file;
  for (const std::string& part : environment::Split(connection, ";")) {
    const auto equals = part.find('=');
    if (equals == std::string::npos) continue;
    const std::string name = environment::LowerCase(part.substr(0, equals));
    if (name == "driver") driver = environment::LowerCase(part.substr(equals + 1));
    if (name == "database") file = part.substr(equals + 1);
  }
  return {driver == "sqlite3" || driver == "sqlite", file};
}

// The same as it may stand in a message.
std::string Shown(const std::string& connection) {
#ifdef DOSSIERKIT_SERVERS
  return odbc::ShownConnectionString(connection);
#else
  return connection.substr(0, connection.find(';'));
#endif
}

[[noreturn]] void RefuseConnection(const std::string& connection, const std::string& how) {
  throw Failure(environment::kInvalidCall, "连接字符串“" + Shown(connection) + "”不能使用，" + how);
}

// As messages name it.
std::string NameOf(const Options& options) {
  if (!options.connection.empty()) {
    const Embedded embedded = EmbeddedOf(options.connection);
    return embedded.is_meant ? embedded.file : Shown(options.connection);
  }
  return options.database.empty() ? TextOf(WorkingDatabase()) : options.database;
}

std::shared_ptr<ado::Connection> OpenServer(const std::string& connection) {
#ifdef DOSSIERKIT_SERVERS
  try {
    return std::make_shared<odbc::OdbcConnection>(connection);
  } catch (const Failure& failure) {
    throw Failure(failure.number(), "无法打开数据库 " + Shown(connection) + "（" + failure.description() +
                                        "），请检查连接字符串和服务器。");
  }
#else
  RefuseConnection(connection, "请写成 Driver=SQLite3;Database=数据库文件 的形式。");
#endif
}

std::shared_ptr<ado::Connection> Open(const std::string& file) {
  try {
    return std::make_shared<sqlite::SqliteConnection>(file);
  } catch (const Failure& failure) {
    // Where there is a file, it may be somebody's only one.
    std::error_code error;
    const bool missing = !std::filesystem::exists(PathOf(file), error) && !error;
    throw Failure(failure.number(),
                  "无法打开数据库 " + file + "（" + failure.description() + "），" +
                      (missing ? "请检查路径，或用 dossier create-empty 建立没有人员的数据库。"
                               : "请检查此文件，或从备份恢复。"));
  }
}

// A database without the tables that every visit reads is refused before a window opens.
void RequireSchema(ado::Connection& connection, const std::string& name) {
  for (const char* table :
       {"s_infotable", "s_infoitem", "s_CodeTableDefine", "s_CodeLevDefine", "S_GUID", "a01"}) {
    try {
      connection.Execute(std::string("select count(*) from ") + table);
    } catch (const Failure& failure) {
      throw Failure(failure.number(),
                    "数据库 " + name + " 不能使用（读取表 " + table + " 失败：" + failure.description() +
                        "），请选择人员档案数据库，或从备份恢复；新的数据库可用 dossier create-empty 建立。");
    }
  }
}

// Writes one JSON object per line and statement.
class TraceFile {
 public:
  explicit TraceFile(const std::string& path) : out_(PathOf(path), std::ios::trunc) {
    if (!out_) {
      throw Failure(environment::kPathAccess, "无法写入跟踪文件 " + path + "，请换一个可以写入的位置。");
    }
  }

  void Write(const ado::Trace& trace) {
    std::map<std::string, std::string> line{{"sql", JsonText(trace.statement)}};
    if (trace.error.empty()) {
      line["rows"] = std::to_string(trace.rows);
      line["ms"] = JsonNumber(trace.milliseconds);
    } else {
      line["error"] = JsonText(trace.error);
    }
    out_ << JsonObject(line) << std::endl;
  }

 private:
  std::ofstream out_;
};

}  // namespace

std::optional<std::string> FileOf(const std::string& connection) {
  const Embedded embedded = EmbeddedOf(connection);
  if (!embedded.is_meant) return {};
  if (embedded.file.empty())
    RefuseConnection(connection, "请写成 Driver=SQLite3;Database=数据库文件 的形式。");
  return embedded.file;
}

std::shared_ptr<ado::Connection> OpenUnchecked(const Options& options) {
  if (!options.connection.empty() && !FileOf(options.connection)) return OpenServer(options.connection);
  return Open(NameOf(options));
}

std::shared_ptr<ado::Connection> OpenDatabase(const Options& options) {
  auto connection = OpenUnchecked(options);
  RequireSchema(*connection, NameOf(options));
  return connection;
}

std::shared_ptr<ado::Connection> TracedForTheComponent(std::shared_ptr<ado::Connection> database,
                                                       const Options& options) {
  if (options.trace_file.empty()) return database;
  const auto trace = std::make_shared<TraceFile>(options.trace_file);
  return std::make_shared<ado::TracingConnection>(std::move(database),
                                                  [trace](const ado::Trace& line) { trace->Write(line); });
}

}  // namespace dossierkit::host
