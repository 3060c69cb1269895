#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

#include "host/server/schema.h"
#include "host/server/words.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::server {
namespace {

using environment::EqualIgnoringCase;
using environment::LowerCase;

std::string CellOf(const ado::Snapshot& rows, std::size_t row, std::size_t column) {
  return environment::TextOr(rows.ValueAt(row, column), "");
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

Schema SchemaOfFile(ado::Connection& database) {
  Schema schema;
  const ado::Snapshot rows = database.Run(
      "select type,name,tbl_name,sql from sqlite_master where sql<>'' and name not like 'sqlite%'");
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const std::string type = CellOf(rows, row, 0);
    const std::string sql = WithoutComments(CellOf(rows, row, 3));
    if (type == "table") {
      Table table{CellOf(rows, row, 1), {}};
      for (const std::string& item : Items(sql)) table.columns.push_back(ColumnOf(item));
      schema.tables.push_back(std::move(table));
    } else if (type == "index") {
      const bool is_unique = LowerCase(sql).find("unique") < sql.find('(');
      schema.indexes.push_back({CellOf(rows, row, 1), CellOf(rows, row, 2),
                                Items(environment::Replace(sql, "\"", "")), is_unique});
    }
  }
  return schema;
}

// A server's own type as schema.sql would declare it.
std::string TypeOf(const Words& words, const std::string& table, const std::string& column,
                   const std::string& own) {
  std::string type = LowerCase(own);
  for (const auto& [known, beginning] : words.types) {
    if (!type.starts_with(beginning)) continue;
    if (known != "varchar") return std::string(known);
    return type.size() == beginning.size() ? "ntext" : "varchar" + type.substr(beginning.size());
  }
  for (const std::string_view known : {"varchar(", "integer", "smallint", "boolean"}) {
    if (type.starts_with(known)) return type;
  }
  throw environment::Failure(environment::kEngineFailure,
                             "表 " + table + " 的列 " + column + " 的类型“" + own +
                                 "”不能复制，没有做任何改动：请改用本系统的类型。");
}

// An item of an index: a column, or length(column); PostgreSQL writes more around it.
std::string ItemOf(std::string item) {
  for (const std::string_view without : {"::text", "::character varying", "\""})
    item = environment::Replace(item, without, "");
  while (item.find("((") != std::string::npos)
    item = environment::Replace(environment::Replace(item, "((", "("), "))", ")");
  if (item.starts_with("lower(")) item = item.substr(6, item.size() - 7);
  return item;
}

// The tree of codes is read level by level. A server without indexes on functions cannot keep this one.
void AddLevelIndexes(Schema& schema) {
  for (const Table& table : schema.tables) {
    std::vector<std::string> items = {"length(dmcod)"};
    for (const Column& column : table.columns) {
      if (!EqualIgnoringCase(column.name, "dmhnd")) items.push_back(column.name);
    }
    if (items.size() == 4 && EqualIgnoringCase(items[1], "dmcod"))
      schema.indexes.push_back({"ix_" + table.name + "_level", table.name, std::move(items)});
  }
}

Schema SchemaOfServer(const Store& database, const Words& words) {
  Schema schema;
  const ado::Snapshot columns = database.run_native(std::string(words.columns));
  for (std::size_t row = 0; row < columns.RowCount(); ++row) {
    const std::string table = CellOf(columns, row, 0);
    if (schema.tables.empty() || schema.tables.back().name != table) schema.tables.push_back({table, {}});
    const std::string name = CellOf(columns, row, 1);
    const bool draws = EqualIgnoringCase(table, "S_GUID") && EqualIgnoringCase(name, "id");
    schema.tables.back().columns.push_back(
        {name, TypeOf(words, table, name, CellOf(columns, row, 2)), CellOf(columns, row, 3) == "1", draws});
  }
  const ado::Snapshot indexes = database.run_native(std::string(words.indexes));
  for (std::size_t row = 0; row < indexes.RowCount(); ++row) {
    const std::string name = CellOf(indexes, row, 0);
    const std::string table = CellOf(indexes, row, 1);
    const bool is_next =
        schema.indexes.empty() || schema.indexes.back().name != name || schema.indexes.back().table != table;
    if (is_next) schema.indexes.push_back({name, table, {}, CellOf(indexes, row, 3) == "1"});
    schema.indexes.back().items.push_back(ItemOf(CellOf(indexes, row, 2)));
  }
  if (words.length.empty()) AddLevelIndexes(schema);
  return schema;
}

}  // namespace

Schema SchemaOf(const Store& database) {
  const Words& words = WordsOf(database.engine);
  return words.columns.empty() ? SchemaOfFile(*database.connection) : SchemaOfServer(database, words);
}

}  // namespace dossierkit::server
