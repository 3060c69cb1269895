#include "host/server/rights.h"

#include <string>
#include <vector>

#include "host/server/schema.h"
#include "platform/environment/value.h"

namespace dossierkit::server {
namespace {

// What a clerk may do with a table.
std::string RightsOn(const Table& table) {
  return IsSet(table) || IsScratch(table) ? "select, insert, update, delete" : "select";
}

std::vector<std::string> PostgresqlStatements(const Schema& schema) {
  std::vector<std::string> statements = {
      ("do $$ begin "
       "if not exists (select from pg_roles where rolname = 'dossierkit_visit') then "
       "create role dossierkit_visit nologin; end if; "
       "if not exists (select from pg_roles where rolname = 'dossierkit_clerk') then "
       "create role dossierkit_clerk nologin; end if; "
       // A clerk's program becomes the other one for a visit, and so may whoever runs this.
       "grant dossierkit_visit to dossierkit_clerk; "
       "execute format('grant dossierkit_visit to %I', current_user); "
       "execute format('grant usage on schema %I to dossierkit_clerk, dossierkit_visit', current_schema()); "
       "end $$"),
      // The persons of this connection's visit, their case folded.
      ("create or replace function dossierkit_persons() returns text[] language sql stable as "
       "$$ select cast(coalesce(nullif(current_setting('dossierkit.persons', true), ''), '{}') as text[]) "
       "$$"),
      // A person who is begun in the middle of a visit is its own.
      ("create or replace function tr_dossierkit_drawn() returns trigger language plpgsql as $$ begin "
       "if dossierkit_persons() <> '{}' then perform set_config('dossierkit.persons', "
       "cast(dossierkit_persons() || lower(substr(new.id, 2, 36)) as text), false); end if; return null; end "
       "$$"),
      ("create or replace trigger tr_dossierkit_drawn after insert on dossierkit_guid "
       "for each row execute function tr_dossierkit_drawn()"),
      "grant select, insert, update, delete on dossierkit_open to dossierkit_clerk, dossierkit_visit",
  };
  for (const Table& table : schema.tables) {
    const std::string name = QuotedName("PostgreSQL", table.name);
    statements.push_back("grant " + RightsOn(table) + " on " + name +
                         " to dossierkit_clerk, dossierkit_visit");
    if (!IsSetOfMany(table)) continue;
    statements.push_back("alter table " + name + " enable row level security");
    statements.push_back("drop policy if exists dossierkit_visit on " + name);
    statements.push_back("create policy dossierkit_visit on " + name +
                         " to dossierkit_visit using (lower(a00) = any (dossierkit_persons()))");
    statements.push_back("drop policy if exists dossierkit_clerk on " + name);
    statements.push_back("create policy dossierkit_clerk on " + name + " to dossierkit_clerk using (true)");
  }
  return statements;
}

std::vector<std::string> MariadbStatements(const Schema& schema, const std::string& database) {
  const std::string base = QuotedName("MariaDB", database) + ".";
  const std::string visit = QuotedName("MariaDB", database + "_visit") + ".";
  std::vector<std::string> statements = {
      "create role if not exists dossierkit_clerk",
      "create database if not exists " + QuotedName("MariaDB", database + "_visit"),
      ("create table if not exists dossierkit_visit (connection bigint unsigned not null, node varchar(255) "
       "not "
       "null, person varchar(255) not null, primary key (connection, node, person)) engine = InnoDB "
       "character "
       "set "
       "utf8mb4 collate utf8mb4_general_nopad_ci"),
      // A person who is begun in the middle of a visit is its own.
      ("create or replace trigger tr_dossierkit_drawn after insert on dossierkit_guid for each row "
       "if exists (select 1 from dossierkit_visit where connection = connection_id() and node = "
       "dossierkit_node()) "
       "then insert ignore into dossierkit_visit values (connection_id(), dossierkit_node(), substr(new.id, "
       "2, 36)); "
       "end if"),
      "grant select, insert, delete on " + base + "dossierkit_visit to dossierkit_clerk",
      "grant select, insert, update, delete on " + base + "dossierkit_open to dossierkit_clerk",
      "grant execute on function " + base + "dossierkit_node to dossierkit_clerk",
  };
  for (const Table& table : schema.tables) {
    const std::string name = QuotedName("MariaDB", table.name);
    const std::string own = " where A00 in (select person from " + base +
                            "dossierkit_visit where connection = connection_id() and node = " + base +
                            "dossierkit_node())";
    statements.push_back("create or replace view " + visit + name + " as select * from " + base + name +
                         (IsSetOfMany(table) ? own : ""));
    for (const std::string& where : {base, visit})
      statements.push_back("grant " + RightsOn(table) + " on " + where + name + " to dossierkit_clerk");
  }
  return statements;
}

}  // namespace

void PrepareRights(odbc::OdbcConnection& server) {
  const Schema schema = SchemaOf(StoreOf(server));
  const bool is_postgresql = server.EngineName() == "PostgreSQL";
  const auto statements =
      is_postgresql ? PostgresqlStatements(schema)
                    : MariadbStatements(schema, environment::TextOr(
                                                    server.RunNative("select database()").ValueAt(0, 0), ""));
  server.BeginTrans();
  try {
    for (const std::string& statement : statements) server.RunNative(statement);
    server.CommitTrans();
  } catch (...) {
    server.RollbackTrans();
    throw;
  }
}

}  // namespace dossierkit::server
