// The schema of a dossier database: read from any engine, and written for any.
#pragma once

#include <string>
#include <vector>

#include "host/server/store.h"

namespace dossierkit::server {

struct Column {
  std::string name;
  std::string type;  // as data/schema.sql declares it: varchar(30), ntext, integer, datetime, boolean, ..
  bool not_null = false;
  bool draws_identifier = false;  // a GUID in braces by default
};

struct Index {
  std::string name;
  std::string table;
  std::vector<std::string> items;  // columns, or length(column)
  bool is_unique = false;
};

struct Table {
  std::string name;
  std::vector<Column> columns;
};

struct Schema {
  std::vector<Table> tables;
  std::vector<Index> indexes;
};

// The schema of a database; what the component's own views and triggers need besides is left out, and of a
// file an index that has a condition, or an item that is neither a column nor the length of one. Throws a
// Failure where it cannot be read, or for a column of a type that not every engine has.
Schema SchemaOf(const Store& database);

// The tables of a file alone, with types as it declares them, whatever they are. Throws a Failure where they
// cannot be read.
std::vector<Table> TablesOfFile(ado::Connection& file);

// What an engine makes of it: statements of its own, to be run one after the other in an empty database, the
// former before there are rows and the latter behind them. Throws a Failure for an unknown engine. Record
// numbers have 32 bits, texts are compared without regard to case, S_GUID is private to a connection on a
// server, and the rows of a person go with his last row of A01.
std::vector<std::string> TableStatements(const std::string& engine, const Schema& schema);
std::vector<std::string> TriggerStatements(const std::string& engine, const Schema& schema);
// The statements that undo them, each whether or not there is anything to undo.
std::vector<std::string> DropStatements(const std::string& engine, const Schema& schema);

// True for the scratch table of identifiers, whose rows belong to nobody.
bool IsScratch(const Table& table);

// True for an information set, and for one of many records a person.
bool IsSet(const Table& table);
bool IsSetOfMany(const Table& table);

// A name as that engine writes it in its own SQL.
std::string QuotedName(const std::string& engine, const std::string& name);

}  // namespace dossierkit::server
