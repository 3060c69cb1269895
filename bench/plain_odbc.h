// PlainOdbc: a server with nothing but ODBC between it and its statements; the yardstick of
// bench/server_bench.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

namespace dossierkit::bench {

class PlainOdbc {
 public:
  // Texts go as UTF-8 where the driver is not to be trusted with anything else.
  PlainOdbc(const std::string& connection_string, bool speaks_utf8);
  ~PlainOdbc();
  PlainOdbc(const PlainOdbc&) = delete;
  PlainOdbc& operator=(const PlainOdbc&) = delete;

  // Runs one statement of the server's own SQL and fetches all that it gives as text; how many cells. Throws
  // std::runtime_error.
  std::size_t Run(const std::string& statement);
  void SetInTransaction(bool in_transaction);
  void Commit();

 private:
  void Require(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle, const std::string& statement) const;

  SQLHENV environment_ = SQL_NULL_HENV;
  SQLHDBC connection_ = SQL_NULL_HDBC;
  bool speaks_utf8_;
};

}  // namespace dossierkit::bench
