#include "adapters/odbc/odbc_handle.h"

#include <sqlucode.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace dossierkit::odbc {
namespace {

using ado::ColumnKind;
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
  for (const char* beginning : {"ERROR: ", "FATAL: ", "错误: ", "致命错误: "}) {
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

// What stands before the NUL that a driver ends its text with.
template <typename Text>
void CutAtNul(Text& text) {
  text.resize(std::min(text.find(typename Text::value_type{}), text.size()));
}

// A text of ours as an argument.
SQLCHAR* Bytes(std::string& text) { return reinterpret_cast<SQLCHAR*>(text.data()); }

// One record of a failure; false where there is none.
bool GetRecord(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record, bool in_utf8, std::string& state,
               SQLINTEGER& number, std::string& words) {
  constexpr SQLSMALLINT kMost = 2048;
  SQLSMALLINT length = 0;
  if (in_utf8) {
    state.assign(6, '\0');
    words.assign(kMost, '\0');
    if (!SQL_SUCCEEDED(
            SQLGetDiagRec(kind, handle, record, Bytes(state), &number, Bytes(words), kMost, &length)))
      return false;
    CutAtNul(state);
    CutAtNul(words);
    return true;
  }
  Wide wide_state(6, 0);
  Wide wide_words(kMost, 0);
  if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, record, wide_state.data(), &number, wide_words.data(),
                                    kMost, &length)))
    return false;
  CutAtNul(wide_state);
  CutAtNul(wide_words);
  state = ToUtf8(wide_state);
  words = ToUtf8(wide_words);
  return true;
}

Diagnosis DiagnosisOf(SQLSMALLINT kind, SQLHANDLE handle, bool in_utf8) {
  Diagnosis diagnosis{"HY000", 0, {}};
  std::string message;
  std::string state;
  std::string words;
  SQLINTEGER number = 0;
  for (SQLSMALLINT record = 1; GetRecord(kind, handle, record, in_utf8, state, number, words); ++record) {
    if (record == 1) {
      diagnosis.state = state;
      diagnosis.number = number;
    } else {
      message += ' ';
    }
    message += words;
  }
  diagnosis.words = WordsOf(std::move(message));
  return diagnosis;
}

}  // namespace

template <SQLSMALLINT kind>
Handle<kind>::Handle(SQLHANDLE parent) {
  if (SQL_SUCCEEDED(SQLAllocHandle(kind, parent, &handle_))) return;
  // Some drivers look here already whether the server is still there, and tell it of the parent.
  if (kind == SQL_HANDLE_STMT) throw DriverFailure(DiagnosisOf(SQL_HANDLE_DBC, parent, false));
  throw DriverFailure({"HY001", 0, "SQLAllocHandle"});
}

template <SQLSMALLINT kind>
void Handle<kind>::Require(SQLRETURN result) const {
  if (!SQL_SUCCEEDED(result)) throw DriverFailure(DiagnosisOf(kind, handle_, speaks_utf8_));
}

Link::Link(const std::string& connection_string, unsigned seconds, bool speaks_utf8, bool keeps_statements)
    : environment_(SQL_NULL_HANDLE),
      connection_([this] {
        environment_.Require(
            SQLSetEnvAttr(environment_.Get(), SQL_ATTR_ODBC_VERSION, Number(SQL_OV_ODBC3), SQL_IS_UINTEGER));
        return environment_.Get();
      }()),
      speaks_utf8_(speaks_utf8),
      keeps_statements_(keeps_statements) {
  connection_.SetSpeaksUtf8(speaks_utf8);
  SQLSetConnectAttr(connection_.Get(), SQL_ATTR_LOGIN_TIMEOUT, Number(seconds), SQL_IS_UINTEGER);
  if (speaks_utf8) {
    std::string text = connection_string;
    connection_.Require(SQLDriverConnect(connection_.Get(), nullptr, Bytes(text),
                                         static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr,
                                         SQL_DRIVER_NOPROMPT));
  } else {
    Wide text = ToWide(connection_string);
    connection_.Require(SQLDriverConnectW(connection_.Get(), nullptr, text.data(),
                                          static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr,
                                          SQL_DRIVER_NOPROMPT));
  }
}

Link::~Link() {
  // Its connection takes it along.
  spare_.reset();
  // One that was never made has nothing to close.
  SQLDisconnect(connection_.Get());
}

Link::Statement Link::Take() const {
  if (spare_) return std::move(spare_);
  auto statement = std::make_unique<Handle<SQL_HANDLE_STMT>>(connection_.Get());
  statement->SetSpeaksUtf8(speaks_utf8_);
  // A brace in a text is no escape of ODBC's.
  statement->Require(
      SQLSetStmtAttr(statement->Get(), SQL_ATTR_NOSCAN, Number(SQL_NOSCAN_ON), SQL_IS_UINTEGER));
  return statement;
}

void Link::Keep(Statement statement) const {
  if (keeps_statements_ && SQL_SUCCEEDED(SQLFreeStmt(statement->Get(), SQL_CLOSE)))
    spare_ = std::move(statement);
}

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

Query::Query(const Link& link) : link_(link), speaks_utf8_(link.SpeaksUtf8()), statement_(link.Take()) {}

// What failed is not used again: nobody knows what a driver leaves in it.
Query::~Query() {
  if (!has_failed_) link_.Keep(std::move(statement_));
}

void Query::Require(SQLRETURN result) {
  has_failed_ = !SQL_SUCCEEDED(result);
  statement_->Require(result);
}

void Query::Execute(const std::string& text) {
  SQLRETURN result = SQL_SUCCESS;
  if (speaks_utf8_) {
    std::string bytes = text;
    result = SQLExecDirect(statement_->Get(), Bytes(bytes), static_cast<SQLINTEGER>(bytes.size()));
  } else {
    Wide wide = ToWide(text);
    result = SQLExecDirectW(statement_->Get(), wide.data(), static_cast<SQLINTEGER>(wide.size()));
  }
  // An update or a delete that finds no row.
  if (result != SQL_NO_DATA) Require(result);
}

int Query::ColumnCount() {
  SQLSMALLINT count = 0;
  Require(SQLNumResultCols(statement_->Get(), &count));
  return count;
}

std::string Query::ColumnName(int column) {
  SQLSMALLINT bytes = 0;
  if (speaks_utf8_) {
    std::array<char, 1024> text;
    Require(SQLColAttribute(statement_->Get(), ColumnNumber(column), SQL_DESC_LABEL, text.data(),
                            static_cast<SQLSMALLINT>(text.size()), &bytes, nullptr));
    return text.data();
  }
  std::array<SQLWCHAR, 1024> text;
  Require(SQLColAttributeW(statement_->Get(), ColumnNumber(column), SQL_DESC_LABEL, text.data(),
                           static_cast<SQLSMALLINT>(text.size() * sizeof(SQLWCHAR)), &bytes, nullptr));
  return ToUtf8(Wide(text.data()));
}

// The type's name would take several times as long. So would the concise type, which tells apart dates and
// times: for that one psqlODBC reads the statement and the catalogue.
ColumnKind Query::KindOf(int column) {
  SQLLEN type = 0;
  Require(
      SQLColAttribute(statement_->Get(), ColumnNumber(column), SQL_DESC_TYPE, nullptr, 0, nullptr, &type));
  switch (type) {
    case SQL_BIT:
    case SQL_TINYINT: return ColumnKind::kBoolean;  // which MariaDB holds them in
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT: return ColumnKind::kInteger;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
    case SQL_NUMERIC:
    case SQL_DECIMAL: return ColumnKind::kFloating;
    case SQL_DATETIME: return ColumnKind::kDate;
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
    case SQL_WLONGVARCHAR: return ColumnKind::kText;
    default: return ColumnKind::kUnknown;
  }
}

bool Query::Fetch() {
  const SQLRETURN result = SQLFetch(statement_->Get());
  if (result == SQL_NO_DATA) return false;
  Require(result);
  return true;
}

template <typename C>
bool Query::Get(int column, SQLSMALLINT type, C& value) {
  SQLLEN length = 0;
  Require(SQLGetData(statement_->Get(), ColumnNumber(column), type, &value, sizeof(value), &length));
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

// Adds a text in the pieces in which it comes, each with so many units of zero behind it. False for NULL.
template <typename Units>
bool Query::AppendPieces(int column, SQLSMALLINT type, std::size_t zeros, Units& whole) {
  constexpr std::size_t kUnit = sizeof(typename Units::value_type);
  std::array<typename Units::value_type, 2048> piece;
  for (bool more = true; more;) {
    SQLLEN bytes = 0;
    const SQLRETURN result = SQLGetData(statement_->Get(), ColumnNumber(column), type, piece.data(),
                                        static_cast<SQLLEN>(sizeof(piece)), &bytes);
    if (result == SQL_NO_DATA) break;
    Require(result);
    if (bytes == SQL_NULL_DATA) return false;
    more = result == SQL_SUCCESS_WITH_INFO;
    whole.append(piece.data(), more ? piece.size() - zeros : static_cast<std::size_t>(bytes) / kUnit);
  }
  return true;
}

const std::string* Query::Text(int column) {
  text_.clear();
  if (speaks_utf8_) return AppendPieces(column, SQL_C_BINARY, 0, text_) ? &text_ : nullptr;
  wide_.clear();
  if (!AppendPieces(column, SQL_C_WCHAR, 1, wide_)) return nullptr;
  AppendUtf8(wide_.data(), wide_.size(), text_);
  return &text_;
}

}  // namespace dossierkit::odbc
