#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "host/server/schema.h"
#include "host/server/words.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/environment/value.h"
#include "platform/jet/coerce.h"

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

// What stands in the first parentheses, cut at the commas that stand in no others; without blanks and quotes.
std::vector<std::string> Items(const std::string& sql) {
  std::vector<std::string> items(1);
  int depth = 0;
  for (const char c : sql) {
    if (c == ')' && --depth == 0) break;
    if (c == ',' && depth == 1) {
      items.emplace_back();
    } else if (depth > 0 && std::string_view(" \t\r\n\"`[]").find(c) == std::string_view::npos) {
      items.back() += c;
    }
    if (c == '(') ++depth;
  }
  return items;
}

// The only item of an index that is no column: length(column). Empty for any other.
std::string LengthIn(const std::string& sql, std::size_t item) {
  constexpr std::string_view kLength = "length(";
  const std::vector<std::string> items = Items(WithoutComments(sql));
  if (item >= items.size() || !LowerCase(items[item]).starts_with(kLength)) return {};
  const std::string column = items[item].substr(kLength.size());
  return column.find_first_of("()") == column.size() - 1 ? std::string(kLength) + column : std::string();
}

[[noreturn]] void RefuseType(const std::string& table, const std::string& column, const std::string& own) {
  throw environment::Failure(environment::kEngineFailure,
                             "表 " + table + " 的列 " + column + " 的类型“" + own +
                                 "”不能复制，没有做任何改动：请改用本系统的类型。");
}

// A type as a file declares it, in any of the words that the dialect knows, as schema.sql would; empty for
// one that it does not know.
std::string TypeOfDeclaration(const std::string& declared) {
  const jet::TableColumn column = jet::ColumnOfDeclaration({}, declared);
  switch (column.kind) {
    case ado::ColumnKind::kBoolean: return "boolean";
    case ado::ColumnKind::kDate: return "datetime";
    case ado::ColumnKind::kInteger: return column.is_short ? "smallint" : "integer";
    case ado::ColumnKind::kFloating: return "double";
    case ado::ColumnKind::kUnknown: return {};
    case ado::ColumnKind::kText: break;
  }
  std::string length;
  for (const char c : declared.substr(std::min(declared.find('('), declared.size()))) {
    if (c >= '0' && c <= '9') length += c;
  }
  return length.empty() ? "ntext" : "varchar(" + length + ")";
}

bool DrawsIdentifier(const std::string& table, const std::string& column) {
  return EqualIgnoringCase(table, "S_GUID") && EqualIgnoringCase(column, "id");
}

std::vector<Index> IndexesOfFile(ado::Connection& file) {
  std::vector<Index> indexes;
  // Without parentheses: the dialect knows no function of that name.
  const ado::Snapshot rows = file.Run(
      "select m.name,m.tbl_name,m.sql,l.[unique],x.name,x.seqno from sqlite_master m,pragma_index_list l,"
      "pragma_index_xinfo x where m.type='index' and m.sql<>'' and l.arg=m.tbl_name and l.schema='main' and "
      "l.name=m.name and l.partial=0 and x.arg=m.name and x.schema='main' and x.[key]=1 "
      "order by m.rowid,x.seqno");
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const std::string name = CellOf(rows, row, 0);
    if (CellOf(rows, row, 5) == "0")
      indexes.push_back({name, CellOf(rows, row, 1), {}, CellOf(rows, row, 3) == "1"});
    std::vector<std::string>& items = indexes.back().items;
    const std::string column = CellOf(rows, row, 4);
    items.push_back(column.empty() ? LengthIn(CellOf(rows, row, 2), items.size()) : column);
  }
  std::erase_if(indexes, [](const Index& index) {
    return std::find(index.items.begin(), index.items.end(), "") != index.items.end();
  });
  return indexes;
}

Schema SchemaOfFile(ado::Connection& file) {
  Schema schema{TablesOfFile(file), IndexesOfFile(file)};
  for (Table& table : schema.tables) {
    for (Column& column : table.columns) {
      const std::string type = TypeOfDeclaration(column.type);
      if (type.empty()) RefuseType(table.name, column.name, column.type);
      column.type = type;
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
  RefuseType(table, column, own);
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
    schema.tables.back().columns.push_back({name, TypeOf(words, table, name, CellOf(columns, row, 2)),
                                            CellOf(columns, row, 3) == "1", DrawsIdentifier(table, name)});
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

std::vector<Table> TablesOfFile(ado::Connection& file) {
  std::vector<Table> tables;
  const ado::Snapshot rows = file.Run(
      "select m.name,x.name,x.type,x.[notnull] from sqlite_master m,pragma_table_xinfo x where "
      "m.type='table' "
      "and m.name not like 'sqlite%' and x.arg=m.name and x.schema='main' and x.hidden<>1 "
      "order by m.rowid,x.cid");
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    const std::string table = CellOf(rows, row, 0);
    if (tables.empty() || tables.back().name != table) tables.push_back({table, {}});
    const std::string name = CellOf(rows, row, 1);
    tables.back().columns.push_back(
        {name, CellOf(rows, row, 2), CellOf(rows, row, 3) == "1", DrawsIdentifier(table, name)});
  }
  return tables;
}

Schema SchemaOf(const Store& database) {
  const Words& words = WordsOf(database.engine);
  return words.columns.empty() ? SchemaOfFile(*database.connection) : SchemaOfServer(database, words);
}

}  // namespace dossierkit::server
