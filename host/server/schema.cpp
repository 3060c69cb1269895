#include "host/server/schema.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

#include "host/server/words.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::server {
namespace {

using environment::EqualIgnoringCase;
using environment::LowerCase;
using environment::Replace;

std::string Quoted(const Words& words, const std::string& name) {
  std::string quoted(words.quote);
  return quoted.append(words.small_names ? LowerCase(name) : name).append(words.quote);
}

bool HasColumn(const Table& table, const std::string& name) {
  return std::any_of(table.columns.begin(), table.columns.end(),
                     [&](const Column& column) { return EqualIgnoringCase(column.name, name); });
}

bool IsText(const Column& column) { return column.type.starts_with("varchar") || column.type == "ntext"; }

std::string TypeOf(const Words& words, const Column& column) {
  for (const auto& [known, own] : words.types) {
    // What ends in a parenthesis is the beginning of a type, and some engines know the word itself.
    if (column.type == known) return own.ends_with('(') ? column.type : std::string(own);
  }
  return column.type;
}

bool IsText(const Schema& schema, const std::string& table, const std::string& column) {
  for (const Table& known : schema.tables) {
    if (!EqualIgnoringCase(known.name, table)) continue;
    for (const Column& one : known.columns) {
      if (EqualIgnoringCase(one.name, column)) return IsText(one);
    }
  }
  return false;
}

// The items of an index in the form in which the statements of the dialect reach the engine; empty for one
// that it cannot have.
std::string ItemsOf(const Words& words, const Schema& schema, const Index& index) {
  std::string items;
  for (const std::string& item : index.items) {
    std::string written = Quoted(words, item);
    if (const std::size_t open = item.find('('); open != std::string::npos) {
      if (words.length.empty()) return {};
      written = std::string(words.length) + item.substr(open);
    } else if (!words.fold.empty() && IsText(schema, index.table, item)) {
      written = std::string(words.fold) + "(" + written + ")";
    }
    items.append(items.empty() ? "" : ", ").append(written).append(words.behind_item);
  }
  return items;
}

// Some engines know an index by its table and its name, others by its name alone, which no table may have
// either. `taken` are names in small letters.
std::string FreeName(const Index& index, std::set<std::string>& taken) {
  std::string name = index.name;
  if (taken.contains(LowerCase(name))) name = index.table + "_" + name;
  while (!taken.insert(LowerCase(name)).second) name += "_";
  return name;
}

std::string IndexStatement(const Words& words, const Index& index, const std::string& name,
                           const std::string& items) {
  return std::string(index.is_unique ? "create unique index " : "create index ") + Quoted(words, name) +
         " on " + Quoted(words, index.table) + " (" + items + ")";
}

std::string TableStatement(const Words& words, const Schema& schema, const Table& table) {
  std::string text = "create table " + Quoted(words, table.name) + " (" + std::string(words.first_column);
  bool first = true;
  for (const Column& column : table.columns) {
    if (!std::exchange(first, false)) text += ", ";
    text += Quoted(words, column.name) + " " + TypeOf(words, column);
    if (IsText(column)) text += words.behind_text;
    if (column.draws_identifier) text.append(" default ").append(words.identifier);
    if (column.not_null) text += " not null";
  }
  if (words.has_keys_in_tables) {
    for (const Index& index : schema.indexes) {
      if (!EqualIgnoringCase(index.table, table.name)) continue;
      const std::string items = ItemsOf(words, schema, index);
      if (items.empty()) continue;
      text.append(index.is_unique ? ", unique key " : ", key ").append(Quoted(words, index.name));
      text.append(" (").append(items).append(")");
    }
  }
  return text + ")" + std::string(words.behind_table);
}

// The deletion of a person's rows in all sets but A01.
std::string DeletionsOf(const Words& words, const Schema& schema) {
  const std::string fold(words.fold);
  const std::string same = fold.empty() ? "A00 = old.A00" : fold + "(a00) = " + fold + "(old.a00)";
  std::string deletions;
  for (const Table& table : schema.tables) {
    if (EqualIgnoringCase(table.name, "A01") || !EqualIgnoringCase(table.columns.front().name, "A00"))
      continue;
    deletions += "delete from " + Quoted(words, table.name) + " where " + same + "; ";
  }
  return deletions;
}

}  // namespace

const Words& WordsOf(std::string_view engine) {
  for (const Words* words : {&kSqlite, &kPostgresql, &kMariadb}) {
    if (words->engine == engine) return *words;
  }
  throw environment::Failure(environment::kEngineFailure,
                             "没有为数据库服务器“" + std::string(engine) + "”准备的表结构。");
}

bool IsSet(const Table& table) { return EqualIgnoringCase(table.columns.front().name, "A00"); }

bool IsSetOfMany(const Table& table) {
  // A01 has a column of that name for the numbers of the persons.
  return IsSet(table) && !EqualIgnoringCase(table.name, "A01") && HasColumn(table, table.name + "99");
}

bool IsScratch(const Table& table) { return EqualIgnoringCase(table.name, "S_GUID"); }

std::vector<std::string> TableStatements(const std::string& engine, const Schema& schema) {
  const Words& words = WordsOf(engine);
  std::vector<std::string> statements;
  for (const Table& table : schema.tables) {
    if (!IsScratch(table) || words.identifiers.empty()) {
      statements.push_back(TableStatement(words, schema, table));
      continue;
    }
    for (const std::string_view statement : words.identifiers)
      statements.push_back(Replace(statement, "{identifier}", words.identifier));
  }
  if (words.has_keys_in_tables) return statements;
  std::set<std::string> taken;
  for (const Table& table : schema.tables) taken.insert(LowerCase(table.name));
  for (const Index& index : schema.indexes) {
    const std::string items = ItemsOf(words, schema, index);
    if (!items.empty()) statements.push_back(IndexStatement(words, index, FreeName(index, taken), items));
  }
  return statements;
}

std::vector<std::string> TriggerStatements(const std::string& engine, const Schema& schema) {
  const Words& words = WordsOf(engine);
  std::vector<std::string> statements;
  const bool has_persons = std::any_of(schema.tables.begin(), schema.tables.end(), [](const Table& table) {
    return EqualIgnoringCase(table.name, "A01");
  });
  if (!has_persons) return statements;
  for (const std::string_view statement : words.triggers)
    statements.push_back(Replace(statement, "{deletions}", DeletionsOf(words, schema)));
  return statements;
}

std::vector<std::string> DropStatements(const std::string& engine, const Schema& schema) {
  const Words& words = WordsOf(engine);
  std::vector<std::string> statements(words.drops.begin(), words.drops.end());
  for (const Table& table : schema.tables) {
    if (!IsScratch(table) || words.identifiers.empty())
      statements.push_back("drop table if exists " + Quoted(words, table.name));
  }
  if (!words.end_making.empty()) statements.emplace_back(words.end_making);
  return statements;
}

std::string QuotedName(const std::string& engine, const std::string& name) {
  return Quoted(WordsOf(engine), name);
}

}  // namespace dossierkit::server
