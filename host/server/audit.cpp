#include "host/server/audit.h"

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
          (action == "update" ? "if " + before + " <> " + after + " then " : "") +
          "insert into dossierkit_audit (changed, who, tbl, person, action, `before`, `after`) "
          "values (now(), user(), '" +
          small + "', " + (action == "delete" ? "old" : "new") + ".A00, '" + action + "', " + before + ", " +
          after + ")" + (action == "update" ? "; end if" : ""));
    }
  }
  return statements;
}

}  // namespace

void PrepareAudit(odbc::OdbcConnection& server) {
  const Schema schema = SchemaOf(StoreOf(server));
  const auto statements =
      server.EngineName() == "PostgreSQL" ? PostgresqlStatements(schema) : MariadbStatements(schema);
  for (const std::string& statement : statements) server.RunNative(statement);
}

std::vector<Change> HistoryOf(odbc::OdbcConnection& server, const std::string& person) {
  const bool is_postgresql = server.EngineName() == "PostgreSQL";
  const std::string constant = jet::ConstantOf(person, server.EngineRenderer());
  std::vector<Change> changes;
  try {
    const ado::Snapshot rows = server.RunNative(
        is_postgresql
            ? "select to_char(changed, 'YYYY-MM-DD HH24:MI:SS'), who, tbl, action, before, after from "
              "dossierkit_audit where lower(person) = lower(" +
                  constant + ") order by number"
            : "select date_format(changed, '%Y-%m-%d %H:%i:%s'), who, tbl, action, `before`, `after` from "
              "dossierkit_audit where person = " +
                  constant + " order by number");
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      const auto cell = [&](std::size_t column) {
        return environment::TextOr(rows.ValueAt(row, column), "");
      };
      changes.push_back({cell(0), cell(1), cell(2), cell(3), cell(4), cell(5)});
    }
  } catch (const environment::Failure& failure) {
    if (failure.number() != environment::kNoSuchTable) throw;
    throw environment::Failure(
        failure.number(), "数据库没有记录修改，请由管理员运行 dossier create-audit，此后的修改才会记录。");
  }
  return changes;
}

}  // namespace dossierkit::server
