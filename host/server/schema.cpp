#include "host/server/schema.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::server {
namespace {

using environment::LowerCase;

// How a server writes what others write in another way.
struct Words {
  const char* engine;
  const char* quote;
  bool small_names;  // it knows bare names in small letters
  const char* ntext;
  const char* datetime;
  const char* identifier;  // a version 4 GUID in braces
  const char* first_column;
  const char* behind_table;
  const char* any_table;  // a question for the name of a table or view that is there
  const char* unfit;      // a question that gives a row where a database cannot be used, with its settings
};

constexpr Words kPostgresql{
    "PostgreSQL", "\"", true, "text", "timestamp(0)",
    "('{' || upper(cast(gen_random_uuid() as text)) || '}')", "", "",
    "select relname from pg_class where relnamespace = to_regnamespace(current_schema()) "
    "and relkind in ('r', 'p', 'v', 'm', 'f') order by relname limit 1",
    // Rows are wanted in the order of the bytes of their texts.
    "select pg_encoding_to_char(encoding) || ', ' || datcollate from pg_database where "
    "datname = current_database() and not (pg_encoding_to_char(encoding) = 'UTF8' and "
    "datcollate in ('C', 'POSIX', 'C.UTF-8', 'C.utf8'))"};
// Columns of a key that "select *" does not show: a cluster wants one, and rows come back as they were
// entered.
constexpr Words kMariadb{
    "MariaDB", "`", false, "mediumtext", "datetime",
    "(concat('{', substr(hex(random_bytes(4)), 1, 8), '-', hex(random_bytes(2)), '-4', "
    "substr(hex(random_bytes(2)), 2), "
    "'-', substr('89AB', 1 + (ord(random_bytes(1)) & 3), 1), substr(hex(random_bytes(2)), 2), '-', "
    "hex(random_bytes(6)), '}'))",
    "entry_number bigint unsigned not null auto_increment invisible primary key, ",
    " engine = InnoDB character set utf8mb4 collate utf8mb4_general_nopad_ci",
    "select table_name from information_schema.tables where table_schema = database() order by table_name "
    "limit 1",
    // Each table brings its own.
    nullptr};

const Words& WordsOf(const std::string& engine) {
  if (engine == kPostgresql.engine) return kPostgresql;
  if (engine == kMariadb.engine) return kMariadb;
  throw environment::Failure(environment::kEngineFailure, "没有为数据库服务器“" + engine + "”准备的表结构。");
}

std::string Quoted(const Words& words, const std::string& name) {
  return words.quote + (words.small_names ? LowerCase(name) : name) + words.quote;
}

// A script without its comments, which stand at the ends of lines.
std::string WithoutComments(const std::string& sql) {
  std::string plain;
  for (const std::string& line : environment::Split(sql, "\n"))
    plain += line.substr(0, line.find("--")) + "\n";
  return plain;
}

// What stands in the first parentheses, cut at the commas that stand in no others.
std::vector<std::string> Items(const std::string& sql) {
  std::vector<std::string> items;
  std::string item;
  int depth = 0;
  for (const char c : sql) {
    if (c == ')' && --depth == 0) break;
    if (c == ',' && depth == 1) {
      items.push_back(std::exchange(item, {}));
    } else if (depth > 0) {
      item += c;
    }
    if (c == '(') ++depth;
  }
  items.push_back(item);
  for (std::string& one : items) {
    const std::size_t begin = one.find_first_not_of(" \n");
    one = begin == std::string::npos ? "" : one.substr(begin, one.find_last_not_of(" \n") - begin + 1);
  }
  return items;
}

Column ColumnOf(const std::string& declared) {
  Column column;
  const std::size_t end = declared.find(' ');
  column.name = environment::Replace(declared.substr(0, end), "\"", "");
  const std::size_t type = declared.find_first_not_of(' ', end);
  column.type = LowerCase(declared.substr(type, declared.find(' ', type) - type));
  column.not_null = declared.find(" not null") != std::string::npos;
  column.draws_identifier = declared.find(" default ") != std::string::npos;
  return column;
}

std::string TypeOf(const Words& words, const Column& column) {
  if (column.type == "ntext") return words.ntext;
  if (column.type == "datetime") return words.datetime;
  return column.type;
}

std::string TableStatement(const Words& words, const Table& table) {
  std::string text = "create table " + Quoted(words, table.name) + " (" + words.first_column;
  bool first = true;
  for (const Column& column : table.columns) {
    if (!std::exchange(first, false)) text += ", ";
    text += Quoted(words, column.name) + " " + TypeOf(words, column);
    if (column.draws_identifier) text += std::string(" default ") + words.identifier;
    if (column.not_null) text += " not null";
  }
  return text + ")" + words.behind_table;
}

bool IsText(const Schema& schema, const std::string& table, const std::string& column) {
  for (const Table& known : schema.tables) {
    if (known.name != table) continue;
    for (const Column& one : known.columns) {
      if (one.name == column) return one.type.starts_with("varchar") || one.type == "ntext";
    }
  }
  return false;
}

// In the form in which the statements of the dialect reach the server; empty for one that it cannot have.
std::string IndexStatement(const Words& words, const Schema& schema, const Index& index) {
  std::string items;
  for (const std::string& item : index.items) {
    const bool is_call = item.find('(') != std::string::npos;
    // This server has no index on a function.
    if (is_call && !words.small_names) return {};
    std::string written = is_call ? item : Quoted(words, item);
    if (words.small_names) {
      if (IsText(schema, index.table, item)) written = "lower(" + written + ")";
      written += " nulls first";
    }
    items += (items.empty() ? "" : ", ") + written;
  }
  return "create index " + Quoted(words, index.name) + " on " + Quoted(words, index.table) + " (" + items +
         ")";
}

// The rows of a person in all other sets go with his last one of A01.
std::vector<std::string> TriggerStatements(const Words& words, const Schema& schema) {
  const bool is_folded = words.small_names;
  const std::string same = is_folded ? "lower(a00) = lower(old.a00)" : "A00 = old.A00";
  std::string body =
      "begin if not exists (select 1 from " + Quoted(words, "A01") + " where " + same + ") then ";
  for (const Table& table : schema.tables) {
    if (table.name == "A01" || table.columns.front().name != "A00") continue;
    body += "delete from " + Quoted(words, table.name) + " where " + same + "; ";
  }
  body += "end if; ";
  if (!is_folded) return {"create trigger tr_A01_delete after delete on A01 for each row " + body + "end"};
  return {"create function tr_a01_delete() returns trigger language plpgsql as $$ " + body +
              "return null; end $$",
          "create trigger tr_a01_delete after delete on a01 for each row execute function tr_a01_delete()"};
}

}  // namespace

Schema SchemaOf(ado::Connection& database) {
  Schema schema;
  const auto rows = database.Execute("select type,name,tbl_name,sql from sqlite_master where sql<>''");
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    const auto text = [&](std::size_t column) { return environment::TextOr(rows->ValueAt(row, column), ""); };
    const std::string type = text(0);
    const std::string sql = WithoutComments(text(3));
    if (type == "table") {
      Table table{text(1), {}};
      for (const std::string& item : Items(sql)) table.columns.push_back(ColumnOf(item));
      schema.tables.push_back(std::move(table));
    } else if (type == "index") {
      schema.indexes.push_back({text(1), text(2), Items(sql)});
    }
  }
  return schema;
}

std::vector<std::string> StatementsFor(const std::string& engine, const Schema& schema) {
  const Words& words = WordsOf(engine);
  std::vector<std::string> statements;
  for (const Table& table : schema.tables) statements.push_back(TableStatement(words, table));
  for (const Index& index : schema.indexes) {
    std::string statement = IndexStatement(words, schema, index);
    if (!statement.empty()) statements.push_back(std::move(statement));
  }
  for (std::string& statement : TriggerStatements(words, schema)) statements.push_back(std::move(statement));
  return statements;
}

std::string AnyTableQuestion(const std::string& engine) { return WordsOf(engine).any_table; }

std::optional<std::string> UnfitQuestion(const std::string& engine) {
  const char* question = WordsOf(engine).unfit;
  return question == nullptr ? std::nullopt : std::optional<std::string>(question);
}

std::string QuotedName(const std::string& engine, const std::string& name) {
  return Quoted(WordsOf(engine), name);
}

}  // namespace dossierkit::server
