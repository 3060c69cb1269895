// The schema of a dossier database, read from one that is there and written for a server.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/ado/connection.h"

namespace dossierkit::server {

struct Column {
  std::string name;
  std::string type;  // as data/schema.sql declares it: varchar(30), ntext, integer, datetime, boolean
  bool not_null = false;
  bool draws_identifier = false;  // a GUID in braces by default
};

struct Index {
  std::string name;
  std::string table;
  std::vector<std::string> items;  // columns, or length(column)
};

struct Table {
  std::string name;
  std::vector<Column> columns;
};

struct Schema {
  std::vector<Table> tables;
  std::vector<Index> indexes;
};

// The schema of the embedded engine's database. Throws a Failure where it cannot be read.
Schema SchemaOf(ado::Connection& database);

// What a server makes of it: statements of its own, to be run one after the other in an empty database.
// `engine` is "PostgreSQL" or "MariaDB"; throws a Failure for any other. Record numbers have 32 bits, texts
// are compared without regard to case, and the rows of a person go with his last row of A01.
std::vector<std::string> StatementsFor(const std::string& engine, const Schema& schema);

// Questions in that server's own SQL: for the name of any table or view that is there already, and for the
// settings of a database that cannot be used; neither gives a row where all is well.
std::string AnyTableQuestion(const std::string& engine);
std::optional<std::string> UnfitQuestion(const std::string& engine);

// A name as that server writes it in its own SQL.
std::string QuotedName(const std::string& engine, const std::string& name);

}  // namespace dossierkit::server
