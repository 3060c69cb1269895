#include "adapters/odbc/odbc_handle.h"

#include <sqlucode.h>

#include <array>
#include <cstddef>
#include <utility>

namespace dossierkit::odbc {
namespace {

using environment::DateTime;

SQLUSMALLINT ColumnNumber(int column) { return static_cast<SQLUSMALLINT>(column + 1); }
SQLPOINTER Number(std::uintptr_t value) {
  // How ODBC takes a number in the place of a pointer.
  return reinterpret_cast<SQLPOINTER>(value);  // NOLINT(performance-no-int-to-ptr)
}

// "[driver][server]ERROR: words;\nError while executing the query" less what the user has no use for.
std::string WordsOf(std::string message) {
  while (message.starts_with('[')) {
    const std::size_t close = message.find(']');
    if (close == std::string::npos) break;
    message.erase(0, close + 1);
  }
  for (const char* beginning : {"ERROR: ", "FATAL: "}) {
    if (message.starts_with(beginning)) message.erase(0, std::char_traits<char>::length(beginning));
  }
  if (const std::size_t end = message.rfind(";\nError while executing the query"); end != std::string::npos)
    message.erase(end);
  std::string words;
  for (const char c : message) {
    const bool blank = c == '\n' || c == '\r' || c == '\t' || c == ' ';
    if (!blank) {
      words += c;
    } else if (!words.empty() && words.back() != ' ') {
      words += ' ';
    }
  }
  while (words.ends_with(' ') || words.ends_with('.')) words.pop_back();
  return words;
}

Diagnosis DiagnosisOf(SQLSMALLINT kind, SQLHANDLE handle) {
  Diagnosis diagnosis{"HY000", 0, {}};
  std::string message;
  for (SQLSMALLINT record = 1;; ++record) {
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 2048> text{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, record, state.data(), &number, text.data(),
                                      static_cast<SQLSMALLINT>(text.size()), &length))) {
      break;
    }
    const Wide told(text.data());
    if (record == 1) {
      diagnosis.state = ToUtf8(Wide(state.data()));
      diagnosis.number = number;
    } else {
      message += ' ';
    }
    message += ToUtf8(told);
  }
  diagnosis.words = WordsOf(std::move(message));
  return diagnosis;
}

}  // namespace

template <SQLSMALLINT kind>
Handle<kind>::Handle(SQLHANDLE parent) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(kind, parent, &handle_)))
    throw DriverFailure({"HY001", 0, "SQLAllocHandle"});
}

template <SQLSMALLINT kind>
void Handle<kind>::Require(SQLRETURN result) const {
  if (!SQL_SUCCEEDED(result)) throw DriverFailure(DiagnosisOf(kind, handle_));
}

Link::Link(const std::string& connection_string, unsigned seconds)
    : environment_(SQL_NULL_HANDLE), connection_([this] {
        environment_.Require(
            SQLSetEnvAttr(environment_.Get(), SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), SQL_IS_UINTEGER));
        return environment_.Get();
      }()) {
  SQLSetConnectAttrW(connection_.Get(), SQL_ATTR_LOGIN_TIMEOUT, Number(seconds), SQL_IS_UINTEGER);
  Wide text = ToWide(connection_string);
  connection_.Require(SQLDriverConnectW(connection_.Get(), nullptr, text.data(),
                                        static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr,
                                        SQL_DRIVER_NOPROMPT));
}

// A connection that was never made has nothing to close.
Link::~Link() { SQLDisconnect(connection_.Get()); }

std::string Link::Info(SQLUSMALLINT what) const {
  std::array<SQLWCHAR, 256> text{};
  SQLSMALLINT bytes = 0;
  connection_.Require(SQLGetInfoW(connection_.Get(), what, text.data(),
                                  static_cast<SQLSMALLINT>(text.size() * sizeof(SQLWCHAR)), &bytes));
  return ToUtf8(Wide(text.data()));
}

void Link::SetInTransaction(bool in_transaction) {
  connection_.Require(SQLSetConnectAttrW(connection_.Get(), SQL_ATTR_AUTOCOMMIT,
                                         Number(in_transaction ? SQL_AUTOCOMMIT_OFF : SQL_AUTOCOMMIT_ON),
                                         SQL_IS_UINTEGER));
}

void Link::End(bool commit) {
  connection_.Require(SQLEndTran(SQL_HANDLE_DBC, connection_.Get(), commit ? SQL_COMMIT : SQL_ROLLBACK));
}

Query::Query(const Link& link) : statement_(link.Get()) {
  // A brace in a text is no escape of ODBC's.
  statement_.Require(
      SQLSetStmtAttrW(statement_.Get(), SQL_ATTR_NOSCAN, Number(SQL_NOSCAN_ON), SQL_IS_UINTEGER));
}

void Query::Execute(const std::string& text) {
  Wide wide = ToWide(text);
  const SQLRETURN result =
      SQLExecDirectW(statement_.Get(), wide.data(), static_cast<SQLINTEGER>(wide.size()));
  // An update or a delete that finds no row.
  if (result != SQL_NO_DATA) statement_.Require(result);
}

int Query::ColumnCount() const {
  SQLSMALLINT count = 0;
  statement_.Require(SQLNumResultCols(statement_.Get(), &count));
  return count;
}

std::string Query::Attribute(int column, SQLUSMALLINT what) const {
  std::array<SQLWCHAR, 1024> text{};
  SQLSMALLINT bytes = 0;
  statement_.Require(SQLColAttributeW(statement_.Get(), ColumnNumber(column), what, text.data(),
                                      static_cast<SQLSMALLINT>(text.size() * sizeof(SQLWCHAR)), &bytes,
                                      nullptr));
  return ToUtf8(Wide(text.data()));
}

std::string Query::ColumnName(int column) const { return Attribute(column, SQL_DESC_LABEL); }

std::string Query::TypeName(int column) const { return Attribute(column, SQL_DESC_TYPE_NAME); }

bool Query::Fetch() {
  const SQLRETURN result = SQLFetch(statement_.Get());
  if (result == SQL_NO_DATA) return false;
  statement_.Require(result);
  return true;
}

template <typename C>
bool Query::Get(int column, SQLSMALLINT type, C& value) {
  SQLLEN length = 0;
  statement_.Require(
      SQLGetData(statement_.Get(), ColumnNumber(column), type, &value, sizeof(value), &length));
  return length != SQL_NULL_DATA;
}

std::optional<std::int64_t> Query::Integer(int column) {
  std::int64_t value = 0;
  return Get(column, SQL_C_SBIGINT, value) ? std::optional(value) : std::nullopt;
}

std::optional<double> Query::Floating(int column) {
  double value = 0;
  return Get(column, SQL_C_DOUBLE, value) ? std::optional(value) : std::nullopt;
}

std::optional<DateTime> Query::Date(int column) {
  SQL_TIMESTAMP_STRUCT value{};
  if (!Get(column, SQL_C_TYPE_TIMESTAMP, value)) return {};
  return DateTime{value.year, value.month, value.day, value.hour, value.minute, value.second};
}

const std::string* Query::Text(int column) {
  text_.clear();
  // A long text comes in pieces, each but the last with a NUL at its end. A pair of units is not parted.
  Wide whole;
  std::array<SQLWCHAR, 1024> piece;
  while (true) {
    SQLLEN bytes = 0;
    const SQLRETURN result = SQLGetData(statement_.Get(), ColumnNumber(column), SQL_C_WCHAR, piece.data(),
                                        static_cast<SQLLEN>(sizeof(piece)), &bytes);
    if (result == SQL_NO_DATA) break;
    statement_.Require(result);
    if (bytes == SQL_NULL_DATA) return nullptr;
    const bool more = bytes == SQL_NO_TOTAL || bytes >= static_cast<SQLLEN>(sizeof(piece));
    const std::size_t units = more ? piece.size() - 1 : static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR);
    if (!more && whole.empty()) {
      AppendUtf8(piece.data(), units, text_);
      return &text_;
    }
    whole.append(piece.data(), units);
    if (!more) break;
  }
  AppendUtf8(whole.data(), whole.size(), text_);
  return &text_;
}

}  // namespace dossierkit::odbc
