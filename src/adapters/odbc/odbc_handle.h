// Handles of ODBC: a link to a server and the queries that run on it, through the W functions.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "adapters/odbc/utf16.h"
#include "platform/ado/snapshot.h"
#include "platform/environment/value.h"

namespace dossierkit::odbc {

// What a driver says of its last failure.
struct Diagnosis {
  std::string state;  // five characters
  int number = 0;     // the server's own
  std::string words;  // on one line
};

// A call of the driver that failed.
class DriverFailure : public std::runtime_error {
 public:
  explicit DriverFailure(Diagnosis told) : std::runtime_error(told.words), diagnosis(std::move(told)) {}
  Diagnosis diagnosis;
};

// Owns one handle of ODBC.
template <SQLSMALLINT kind>
class Handle {
 public:
  explicit Handle(SQLHANDLE parent);
  ~Handle() { SQLFreeHandle(kind, handle_); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  SQLHANDLE Get() const { return handle_; }
  // Throws a DriverFailure unless the call's result is a success.
  void Require(SQLRETURN result) const;
  // The driver tells its failures in UTF-8 from now on.
  void SetSpeaksUtf8(bool it_does) { speaks_utf8_ = it_does; }

 private:
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
  bool speaks_utf8_ = false;
};

// A connection to a server.
class Link {
 public:
  // Connects, within `seconds`. Texts go through the W functions, or as UTF-8 past them; queries have a
  // statement each, or one after the other the same. Throws a DriverFailure.
  Link(const std::string& connection_string, unsigned seconds, bool speaks_utf8, bool keeps_statements);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  SQLHANDLE Get() const { return connection_.Get(); }
  // What the driver tells of the server, as in SQL_DBMS_NAME.
  std::string Info(SQLUSMALLINT what) const;
  // Statements belong to a transaction from now on, or each stands for itself.
  void SetInTransaction(bool in_transaction);
  void End(bool commit);
  bool SpeaksUtf8() const { return speaks_utf8_; }

  using Statement = std::unique_ptr<Handle<SQL_HANDLE_STMT>>;
  // A statement without rows for a query, and one that a query has done with: to make and free one costs a
  // driver a good part of what a short query does.
  Statement Take() const;
  void Keep(Statement statement) const;

 private:
  Handle<SQL_HANDLE_ENV> environment_;
  Handle<SQL_HANDLE_DBC> connection_;
  bool speaks_utf8_;
  bool keeps_statements_;
  mutable Statement spare_;
};

// One statement and its rows.
class Query {
 public:
  // `link` must outlive it.
  explicit Query(const Link& link);
  ~Query();
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  // Sends one text, of which the driver changes nothing.
  void Execute(const std::string& text);

  int ColumnCount();
  std::string ColumnName(int column);  // from 0, as all columns
  // What its cells are; kUnknown where ODBC has no type for them.
  ado::ColumnKind KindOf(int column);

  // True while there is a row.
  bool Fetch();
  // The cells of a row, from the left to the right; nothing is NULL.
  std::optional<std::int64_t> Integer(int column);
  std::optional<double> Floating(int column);
  std::optional<environment::DateTime> Date(int column);
  // Points into the query, until the next one.
  const std::string* Text(int column);

 private:
  template <typename C>
  bool Get(int column, SQLSMALLINT type, C& value);

  template <typename Units>
  bool AppendPieces(int column, SQLSMALLINT type, std::size_t zeros, Units& whole);

  void Require(SQLRETURN result);

  const Link& link_;
  bool speaks_utf8_;
  Link::Statement statement_;
  bool has_failed_ = false;
  Wide wide_;
  std::string text_;
};

}  // namespace dossierkit::odbc
