#include "host/server/own_rows.h"

#include <exception>
#include <initializer_list>

#include "host/server/schema.h"
#include "platform/environment/failure.h"
#include "platform/environment/value.h"
#include "platform/jet/renderer.h"

namespace dossierkit::server {
namespace {

using environment::Failure;

std::string Answer(odbc::OdbcConnection& server, const std::string& question) {
  return environment::TextOr(server.RunNative(question).ValueAt(0, 0), "");
}

[[noreturn]] void RefuseUnprepared(const Failure& failure) {
  throw Failure(failure.number(), "数据库没有为“只看本人的记录”做好准备（" + failure.description() +
                                      "），请由管理员运行 dossier create-rights。");
}

std::function<void()> SetUpPostgresql(odbc::OdbcConnection& server, const std::string& person) {
  const std::string role = Answer(server, "select current_setting('role')");
  const auto take_down = [&server, role] {
    server.RunNative(role == "none" ? "set role none" : "set role " + QuotedName("PostgreSQL", role));
    server.RunNative("select set_config('dossierkit.persons', '', false)");
  };
  try {
    server.RunNative("select dossierkit_persons()");
    server.RunNative("set role dossierkit_visit");
    server.RunNative("select set_config('dossierkit.persons', cast(array[lower(" + person +
                     ")] as text), false)");
  } catch (const Failure& failure) {
    RefuseUnprepared(failure);
  }
  return take_down;
}

std::function<void()> SetUpMariadb(odbc::OdbcConnection& server, const std::string& person) {
  const std::string database = Answer(server, "select database()");
  const std::string visit = QuotedName("MariaDB", database) + ".dossierkit_visit";
  const std::string node = QuotedName("MariaDB", database) + ".dossierkit_node()";
  const std::string forget =
      "delete from " + visit + " where connection = connection_id() and node = " + node;
  const auto take_down = [&server, database, forget] {
    server.RunNative("use " + QuotedName("MariaDB", database));
    server.RunNative(forget);
  };
  try {
    // Of an earlier connection of that number.
    server.RunNative(forget);
    server.RunNative("use " + QuotedName("MariaDB", database + "_visit"));
    server.RunNative("insert into " + visit + " values (connection_id(), " + node + ", " + person + ")");
  } catch (const Failure& failure) {
    try {
      take_down();
    } catch (const Failure&) {
      // Nothing was set up.
    }
    RefuseUnprepared(failure);
  }
  return take_down;
}

}  // namespace

OwnRows::OwnRows(sqlite::SqliteConnection& connection, const std::string& person) {
  const Store store = StoreOf(connection);
  std::string up =
      "create temp table dossierkit_visit (person text collate nocase primary key);"
      "insert into dossierkit_visit values (" +
      jet::ConstantOf(person, *store.renderer) +
      ");"
      "create temp trigger tr_dossierkit_drawn after insert on main.S_GUID begin "
      "insert or ignore into dossierkit_visit values (substr(new.id, 2, 36)); end;";
  std::string down = "drop trigger if exists temp.tr_dossierkit_drawn;";
  for (const Table& table : TablesOfFile(connection)) {
    if (!IsSetOfMany(table)) continue;
    const std::string name = QuotedName("SQLite", table.name);
    up += "create temp view " + name + " as select * from main." + name +
          " where A00 in (select person from temp.dossierkit_visit);";
    down += "drop view if exists temp." + name + ";";
  }
  down += "drop table if exists temp.dossierkit_visit;";
  take_down_ = [&connection, down] {
    connection.StoreInFile(false);
    connection.RunScript(down);
  };
  try {
    connection.RunScript(up);
    connection.StoreInFile(true);
  } catch (...) {
    take_down_();
    throw;
  }
}

OwnRows::OwnRows(odbc::OdbcConnection& connection, const std::string& person) {
  const std::string constant = jet::ConstantOf(person, connection.EngineRenderer());
  take_down_ = connection.EngineName() == "PostgreSQL" ? SetUpPostgresql(connection, constant)
                                                       : SetUpMariadb(connection, constant);
}

OwnRows::~OwnRows() {
  try {
    take_down_();
  } catch (const std::exception&) {
    // The connection has gone, and what was set up on it.
  }
}

}  // namespace dossierkit::server
