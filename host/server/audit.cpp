#include "host/server/audit.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>

#include "host/server/schema.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/environment/value.h"
#include "platform/jet/renderer.h"

namespace dossierkit::server {
namespace {

constexpr char kAudited[] = "tr_dossierkit_audit";

std::vector<std::string> PostgresqlStatements(const Schema& schema) {
  std::vector<std::string> statements = {
      "create table if not exists dossierkit_audit (number bigint generated always as identity primary key, "
      "changed timestamp(0) not null default localtimestamp, who varchar(128) not null, tbl varchar(30) not "
      "null, "
      "person varchar(36), action varchar(6) not null, before text, after text)",
      "create index if not exists ix_dossierkit_audit on dossierkit_audit (lower(person), number)",
      // A clerk writes it without a right to, and cannot change it.
      "create or replace function tr_dossierkit_audit() returns trigger language plpgsql security definer as "
      "$$ "
      "declare schema_name text := tg_table_schema; begin "
      "if tg_op = 'UPDATE' and old is not distinct from new then return null; end if; "
      "execute format('insert into %I.dossierkit_audit (who, tbl, person, action, before, after) values "
      "($1, $2, $3, $4, $5, $6)', schema_name) using session_user::text, tg_table_name::text, "
      "case when tg_op = 'DELETE' then old.a00 else new.a00 end, lower(tg_op), "
      "case when tg_op <> 'INSERT' then to_json(old)::text end, "
      "case when tg_op <> 'DELETE' then to_json(new)::text end; return null; end $$",
  };
  for (const Table& table : schema.tables) {
    if (!IsSet(table)) continue;
    statements.push_back(
        "create or replace trigger tr_dossierkit_audit after insert or update or delete on " +
        QuotedName("PostgreSQL", table.name) + " for each row execute function " + kAudited + "()");
  }
  return statements;
}

// The row "new" or "old" of a trigger as a JSON object.
std::string ObjectOf(const Table& table, const std::string& row) {
  std::string object = "json_object(";
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const std::string& name = table.columns[i].name;
    object += (i > 0 ? ", '" : "'") + environment::LowerCase(name) + "', " + row + "." +
              QuotedName("MariaDB", name);
  }
  return object + ")";
}

std::vector<std::string> MariadbStatements(const Schema& schema) {
  std::vector<std::string> statements = {
      "create table if not exists dossierkit_audit (number bigint unsigned not null auto_increment primary "
      "key, "
      "changed datetime not null, who varchar(128) not null, tbl varchar(30) not null, person varchar(36), "
      "action varchar(6) not null, `before` longtext, `after` longtext, key (person, number)) engine = "
      "InnoDB "
      "character set utf8mb4 collate utf8mb4_general_nopad_ci"};
  for (const Table& table : schema.tables) {
    if (!IsSet(table)) continue;
    const std::string small = environment::LowerCase(table.name);
    for (const std::string action : {"insert", "update", "delete"}) {
      const std::string before = action == "insert" ? "null" : ObjectOf(table, "old");
      const std::string after = action == "delete" ? "null" : ObjectOf(table, "new");
      statements.push_back(
          "create or replace trigger tr_dossierkit_audit_" + small + "_" + action + " after " + action +
          " on " + QuotedName("MariaDB", table.name) + " for each row " +
          // Its columns disregard the case of letters, and what stands beyond U+FFFF.
          (action == "update" ? "if binary " + before + " <> binary " + after + " then " : "") +
          "insert into dossierkit_audit (changed, who, tbl, person, action, `before`, `after`) "
          "values (now(), user(), '" +
          small + "', " + (action == "delete" ? "old" : "new") + ".A00, '" + action + "', " + before + ", " +
          after + ")" + (action == "update" ? "; end if" : ""));
    }
  }
  return statements;
}

bool IsPostgresql(const odbc::OdbcConnection& server) { return server.EngineName() == "PostgreSQL"; }

std::string ConstantOf(const odbc::OdbcConnection& server, const std::string& text) {
  return jet::ConstantOf(text, server.EngineRenderer());
}

[[noreturn]] void Refuse(const std::string& sentence) {
  throw environment::Failure(environment::kInvalidCall, sentence);
}

// The answer to a question about what was written down.
ado::Snapshot Audit(odbc::OdbcConnection& server, const std::string& question) {
  try {
    return server.RunNative(question);
  } catch (const environment::Failure& failure) {
    if (failure.number() != environment::kNoSuchTable) throw;
    throw environment::Failure(
        failure.number(), "数据库没有记录修改，请由管理员运行 dossier create-audit，此后的修改才会记录。");
  }
}

// One record on its way back into its table.
class Restoring {
 public:
  // `object` is the row as the triggers wrote it down.
  Restoring(odbc::OdbcConnection& server, const Table& table, const std::string& person,
            const std::string& object)
      : server_(server),
        table_(table),
        name_(Quoted(table.name)),
        person_(ConstantOf(server, person)),
        object_(ConstantOf(server, object)) {}

  // Gives the record's number, in a set of many.
  std::optional<std::int64_t> Run() {
    const bool is_person = environment::EqualIgnoringCase(table_.name, "A01");
    if (!is_person && Count("A01") == 0) Refuse("此人已被删除，请先恢复其 A01 的记录。");
    if (!IsSetOfMany(table_)) {
      const std::int64_t count = Count(table_.name);
      if (count > 1) {
        Refuse("此人在 " + environment::UpperCase(table_.name) + " 中有 " + std::to_string(count) +
               " 行，不能确定恢复哪一行，没有做任何改动：请先去掉多余的行。");
      }
      // A deletion in A01 would take along the person's rows in all sets.
      server_.RunNative(count > 0 ? Update() : Insert({}, {}));
      return {};
    }
    const std::string column = Quoted(table_.name + "99");
    const std::string next = "(select coalesce(max(" + column + "), 0) + 1 from " + name_ + Where() + ")";
    std::int64_t number = Number("select coalesce(" + ValueOf(table_.name + "99") + ", " + next + ")");
    if (Count(table_.name, " and " + column + " = " + std::to_string(number)) > 0)
      number = Number("select " + next);
    server_.RunNative(Insert(column, std::to_string(number)));
    return number;
  }

 private:
  std::string Quoted(const std::string& name) const { return QuotedName(server_.EngineName(), name); }
  std::int64_t Number(const std::string& question) {
    return environment::ToInt32(server_.RunNative(question).ValueAt(0, 0));
  }
  std::int64_t Count(const std::string& table, const std::string& condition = {}) {
    return Number("select count(*) from " + Quoted(table) + Where() + condition);
  }
  std::string Where() const {
    return IsPostgresql(server_) ? " where lower(a00) = lower(" + person_ + ")" : " where A00 = " + person_;
  }
  // A column of the record, in the type of its table.
  std::string ValueOf(const std::string& column) const {
    return IsPostgresql(server_) ? "(json_populate_record(cast(null as " + name_ + "), cast(" + object_ +
                                       " as json)))." + Quoted(column)
                                 : "json_value(" + object_ + ", '$." + environment::LowerCase(column) + "')";
  }
  // All columns as they were, but for the one that has another value.
  std::string Insert(const std::string& changed, const std::string& value) const {
    std::string columns;
    std::string values;
    for (const Column& column : table_.columns) {
      const std::string name = Quoted(column.name);
      columns += (columns.empty() ? "" : ", ") + name;
      values += (values.empty() ? "" : ", ") +
                (environment::EqualIgnoringCase(name, changed) ? value : ValueOf(column.name));
    }
    return "insert into " + name_ + " (" + columns + ") values (" + values + ")";
  }
  std::string Update() const {
    std::string assignments;
    for (const Column& column : table_.columns)
      assignments += (assignments.empty() ? "" : ", ") + Quoted(column.name) + " = " + ValueOf(column.name);
    return "update " + name_ + " set " + assignments + Where();
  }

  odbc::OdbcConnection& server_;
  const Table& table_;
  std::string name_;
  std::string person_;
  std::string object_;
};

}  // namespace

void PrepareAudit(odbc::OdbcConnection& server) {
  const Schema schema = SchemaOf(StoreOf(server));
  const auto statements =
      server.EngineName() == "PostgreSQL" ? PostgresqlStatements(schema) : MariadbStatements(schema);
  for (const std::string& statement : statements) server.RunNative(statement);
}

std::vector<Change> HistoryOf(odbc::OdbcConnection& server, const std::string& person) {
  const std::string constant = ConstantOf(server, person);
  const ado::Snapshot rows =
      Audit(server, IsPostgresql(server)
                        ? "select number, to_char(changed, 'YYYY-MM-DD HH24:MI:SS'), who, tbl, action, "
                          "before, after from dossierkit_audit where lower(person) = lower(" +
                              constant + ") order by number"
                        : "select number, date_format(changed, '%Y-%m-%d %H:%i:%s'), who, tbl, action, "
                          "`before`, `after` from dossierkit_audit where person = " +
                              constant + " order by number");
  std::vector<Change> changes;
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const auto cell = [&](std::size_t column) { return environment::TextOr(rows.ValueAt(row, column), ""); };
    changes.push_back({std::stoll(cell(0)), cell(1), cell(2), cell(3), cell(4), cell(5), cell(6)});
  }
  return changes;
}

RestoredRecord RestoreRecord(odbc::OdbcConnection& server, std::int64_t number) {
  const std::string ordinal = "第 " + std::to_string(number) + " 号修改";
  const ado::Snapshot change =
      Audit(server, std::string("select person, tbl, ") + (IsPostgresql(server) ? "before" : "`before`") +
                        " from dossierkit_audit where number = " + std::to_string(number));
  if (change.RowCount() == 0) Refuse("没有" + ordinal + "。");
  const auto cell = [&](std::size_t column) { return environment::TextOr(change.ValueAt(0, column), ""); };
  RestoredRecord restored{cell(0), cell(1), {}};
  if (cell(2).empty()) Refuse(ordinal + "是增加，在它之前没有可以恢复的记录。");
  const Schema schema = SchemaOf(StoreOf(server));
  const auto table = std::find_if(schema.tables.begin(), schema.tables.end(), [&](const Table& known) {
    return environment::EqualIgnoringCase(known.name, restored.table);
  });
  if (table == schema.tables.end())
    Refuse(ordinal + "所在的表 " + environment::UpperCase(restored.table) + " 已经不在数据库中。");

  server.BeginTrans();
  try {
    restored.number = Restoring(server, *table, restored.person, cell(2)).Run();
    server.CommitTrans();
  } catch (...) {
    server.RollbackTrans();
    throw;
  }
  return restored;
}

}  // namespace dossierkit::server
