// Words: how an engine writes the schema of a dossier database, as plain data. An engine is added by a file
// of its own with one of these and a line in schema.cpp.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace dossierkit::server {

struct Words {
  std::string_view engine;
  std::string_view quote;
  bool small_names;  // it knows bare names in small letters

  // The types of schema.h and its own, where they differ; its own is compared by its beginning.
  std::span<const std::pair<std::string_view, std::string_view>> types;
  // Behind the type of a text, behind a table, before the first column.
  std::string_view behind_text;
  std::string_view behind_table;
  std::string_view first_column;
  // A new version 4 GUID in braces, as the default of a column.
  std::string_view identifier;
  // In an index: the function that takes the case out of a text; the one that counts its characters, none
  // where an index cannot have it; what stands behind an item.
  std::string_view fold;
  std::string_view length;
  std::string_view behind_item;
  // An index is made with its table: there each one that comes later takes as long as the table.
  bool has_keys_in_tables;

  // S_GUID: statements that make what each connection sees as a table of its own; "{identifier}" is
  // `identifier`. None: it is a table like any other.
  std::span<const std::string_view> identifiers;
  // Statements that run behind the rows. "{deletions}" is the deletion of a person's rows in all sets but
  // A01.
  std::span<const std::string_view> triggers;
  // What is dropped besides the tables, where a database could not be completed.
  std::span<const std::string_view> drops;
  // Questions: one that gives "1" to one session of a database at a time, as often as it asks, and one that
  // takes that back once.
  std::string_view claim;
  std::string_view release;
  // Where tables do not go with the transaction in which they were made: for a table that stands in a
  // database only while it is being made, what makes it, the question that gives "1" where it stands, and
  // what drops it, behind all others.
  std::string_view begin_making;
  std::string_view is_being_made;
  std::string_view end_making;

  // Questions in the engine's own SQL: any table or view that is there; the settings of a database that
  // cannot be used; table, column, type, whether NULL is refused; index, table, item, whether it is unique.
  // Those of an engine that has none are answered by its own code.
  std::string_view any_table;
  std::string_view unfit;
  std::string_view columns;
  std::string_view indexes;
};

extern const Words kSqlite;
extern const Words kPostgresql;
extern const Words kMariadb;

// Throws a Failure for an engine without a schema.
const Words& WordsOf(std::string_view engine);

}  // namespace dossierkit::server
