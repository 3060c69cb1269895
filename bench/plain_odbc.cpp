#include "bench/plain_odbc.h"

#include <array>
#include <cstdint>
#include <stdexcept>

#include "adapters/odbc/utf16.h"

namespace dossierkit::bench {
namespace {

SQLPOINTER Number(std::uintptr_t value) {
  // How ODBC takes a number in the place of a pointer.
  return reinterpret_cast<SQLPOINTER>(value);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

PlainOdbc::PlainOdbc(const std::string& connection_string, bool speaks_utf8) : speaks_utf8_(speaks_utf8) {
  SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), SQL_IS_UINTEGER);
  SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
  SQLRETURN result = SQL_ERROR;
  if (speaks_utf8_) {
    std::string text = connection_string;
    result =
        SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                         static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  } else {
    odbc::Wide text = odbc::ToWide(connection_string);
    result = SQLDriverConnectW(connection_, nullptr, text.data(), static_cast<SQLSMALLINT>(text.size()),
                               nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  }
  Require(result, SQL_HANDLE_DBC, connection_, "connect");
}

PlainOdbc::~PlainOdbc() {
  SQLDisconnect(connection_);
  SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

std::size_t PlainOdbc::Run(const std::string& statement) {
  SQLHSTMT handle = SQL_NULL_HSTMT;
  SQLAllocHandle(SQL_HANDLE_STMT, connection_, &handle);
  SQLSetStmtAttr(handle, SQL_ATTR_NOSCAN, Number(SQL_NOSCAN_ON), SQL_IS_UINTEGER);
  SQLRETURN result = SQL_ERROR;
  if (speaks_utf8_) {
    std::string text = statement;
    result =
        SQLExecDirect(handle, reinterpret_cast<SQLCHAR*>(text.data()), static_cast<SQLINTEGER>(text.size()));
  } else {
    odbc::Wide text = odbc::ToWide(statement);
    result = SQLExecDirectW(handle, text.data(), static_cast<SQLINTEGER>(text.size()));
  }
  if (result != SQL_NO_DATA) Require(result, SQL_HANDLE_STMT, handle, statement);
  SQLSMALLINT columns = 0;
  SQLNumResultCols(handle, &columns);
  std::array<char, 65536> buffer;
  std::size_t cells = 0;
  while (columns > 0 && SQL_SUCCEEDED(SQLFetch(handle))) {
    for (SQLSMALLINT column = 1; column <= columns; ++column, ++cells) {
      SQLLEN length = 0;
      SQLGetData(handle, static_cast<SQLUSMALLINT>(column), speaks_utf8_ ? SQL_C_CHAR : SQL_C_WCHAR,
                 buffer.data(), static_cast<SQLLEN>(buffer.size()), &length);
    }
  }
  SQLFreeHandle(SQL_HANDLE_STMT, handle);
  return cells;
}

void PlainOdbc::SetInTransaction(bool in_transaction) {
  SQLSetConnectAttr(connection_, SQL_ATTR_AUTOCOMMIT,
                    Number(in_transaction ? SQL_AUTOCOMMIT_OFF : SQL_AUTOCOMMIT_ON), SQL_IS_UINTEGER);
}

void PlainOdbc::Commit() {
  Require(SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_COMMIT), SQL_HANDLE_DBC, connection_, "commit");
}

void PlainOdbc::Require(SQLRETURN result, SQLSMALLINT kind, SQLHANDLE handle,
                        const std::string& statement) const {
  if (SQL_SUCCEEDED(result)) return;
  std::array<SQLCHAR, 6> state{};
  std::array<SQLCHAR, 512> words{};
  SQLINTEGER number = 0;
  SQLSMALLINT length = 0;
  SQLGetDiagRec(kind, handle, 1, state.data(), &number, words.data(), static_cast<SQLSMALLINT>(words.size()),
                &length);
  throw std::runtime_error(reinterpret_cast<const char*>(words.data()) + (": " + statement.substr(0, 500)));
}

}  // namespace dossierkit::bench
