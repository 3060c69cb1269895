#include "host/care/care.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::care {
namespace {

using environment::Value;
using Row = std::vector<Value>;

struct Rows {
  std::vector<std::string> columns;
  std::vector<Row> rows;

  std::size_t ColumnOf(const std::string& name) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (environment::LowerCase(columns[i]) == environment::LowerCase(name)) return i;
    }
    throw environment::MakeFailure(environment::kUnknownItem);
  }
};

// A set of many records per person.
struct Set {
  std::string table;
  std::string order;  // of its list
};

// Rolled back unless it was committed.
class Transaction {
 public:
  explicit Transaction(ado::Connection& connection) : connection_(connection) { connection_.BeginTrans(); }
  ~Transaction() {
    if (committed_) return;
    try {
      connection_.RollbackTrans();
    } catch (const std::exception&) {
      // The failure that is on its way counts.
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit() {
    connection_.CommitTrans();
    committed_ = true;
  }

 private:
  ado::Connection& connection_;
  bool committed_ = false;
};

Rows Read(ado::Connection& connection, const std::string& statement) {
  const auto recordset = connection.Execute(statement);
  Rows all;
  for (std::size_t i = 0; i < recordset->FieldCount(); ++i) all.columns.push_back(recordset->FieldName(i));
  for (std::int32_t row = 1; row <= recordset->RecordCount(); ++row) {
    Row& values = all.rows.emplace_back();
    for (std::size_t i = 0; i < all.columns.size(); ++i) values.push_back(recordset->ValueAt(row, i));
  }
  return all;
}

std::string Quoted(const std::string& text) { return "'" + environment::Replace(text, "'", "''") + "'"; }

std::string OfPerson(const std::string& person) { return " where A00=" + Quoted(person); }

std::string Padded(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

// The value as a statement stores it: the same value when it is read again.
std::string Constant(const Value& value) {
  if (value.IsNull()) return "null";
  if (const bool* flag = value.As<bool>()) return *flag ? "1" : "0";
  if (const auto* number = value.As<double>()) {
    char digits[400];  // the longest number without an exponent has 309 before the point
    const auto end = std::to_chars(digits, digits + sizeof digits, *number, std::chars_format::fixed).ptr;
    return Quoted({digits, end});
  }
  if (const auto* date = value.As<environment::DateTime>()) {
    return Quoted(std::to_string(date->year) + "-" + Padded(date->month) + "-" + Padded(date->day) + " " +
                  Padded(date->hour) + ":" + Padded(date->minute) + ":" + Padded(date->second));
  }
  std::string text = environment::TextOf(value);
  // What is read in place of a bad byte; the byte itself would be lost.
  if (text.find("\uFFFD") != std::string::npos) throw environment::MakeFailure(environment::kDataMismatch);
  return Quoted(text);
}

// As the component decides it: only True, as a number -1, means one record per person.
bool HasManyRecords(const Value& property) {
  if (const bool* single = property.As<bool>()) return !*single;
  return !property.IsNull() && environment::ToInt32(property) != -1;
}

std::vector<Set> SetsOfManyRecords(ado::Connection& connection) {
  const Rows all = Read(connection, "select tblname,orderfield,Property from s_infotable");
  std::vector<Set> sets;
  for (const Row& row : all.rows) {
    const std::string table = environment::TextOr(row[0], "");
    if (table.empty() || !HasManyRecords(row[2])) continue;
    const std::string order = environment::TextOr(row[1], "");
    sets.push_back({table, order.empty() ? table + "99" : order});
  }
  return sets;
}

Rows Records(ado::Connection& connection, const Set& set, const std::string& person) {
  return Read(connection, "select * from " + set.table + OfPerson(person) + " order by " + set.order);
}

bool InOrder(const Rows& records, const Set& set) {
  const std::size_t number = records.ColumnOf(set.table + "99");
  for (std::size_t i = 0; i < records.rows.size(); ++i) {
    if (environment::TextOr(records.rows[i][number], "") != std::to_string(i + 1)) return false;
  }
  return true;
}

void WriteInOrder(ado::Connection& connection, const Set& set, const std::string& person) {
  Rows records = Records(connection, set, person);
  const std::size_t number = records.ColumnOf(set.table + "99");
  std::string columns;
  for (const std::string& column : records.columns) columns += (columns.empty() ? "" : ",") + column;
  connection.Execute("delete from " + set.table + OfPerson(person));
  for (std::size_t i = 0; i < records.rows.size(); ++i) {
    records.rows[i][number] = Value(static_cast<std::int64_t>(i + 1));
    std::string values;
    for (const Value& value : records.rows[i]) values += (values.empty() ? "" : ",") + Constant(value);
    connection.Execute("insert into " + set.table + "(" + columns + ") values(" + values + ")");
  }
  // What cannot be written as it was read stays as it was: the transaction is rolled back.
  const Set by_number{set.table, set.table + "99"};
  if (Records(connection, by_number, person).rows != records.rows)
    throw environment::MakeFailure(environment::kDataMismatch);
}

std::string RowsOfPerson(const std::string& person) {
  return "select * from A01" + OfPerson(person) + " order by A0199";
}

}  // namespace

int RenumberRecords(ado::Connection& connection, const std::string& person) {
  std::vector<Set> wrong = SetsOfManyRecords(connection);
  std::erase_if(wrong, [&](const Set& set) { return InOrder(Records(connection, set, person), set); });
  if (wrong.empty()) return 0;
  Transaction transaction(connection);
  for (const Set& set : wrong) WriteInOrder(connection, set, person);
  transaction.Commit();
  return static_cast<int>(wrong.size());
}

std::optional<DoubledPerson> FindDoubledPerson(ado::Connection& connection, const std::string& person) {
  Rows all = Read(connection, RowsOfPerson(person));
  if (all.rows.size() < 2) return std::nullopt;
  return DoubledPerson{person, std::move(all.columns), std::move(all.rows)};
}

std::vector<DoubledPerson> FindDoubledPersons(ado::Connection& connection) {
  const auto persons = connection.Execute("select A00 from A01 order by A00");
  std::vector<std::string> doubled;
  std::string former;
  for (std::int32_t row = 1; row <= persons->RecordCount(); ++row) {
    std::string person = environment::TextOr(persons->ValueAt(row, 0), "");
    const bool same = environment::LowerCase(person) == environment::LowerCase(former);
    if (same && (doubled.empty() || environment::LowerCase(doubled.back()) != environment::LowerCase(person)))
      doubled.push_back(former);
    former = std::move(person);
  }
  std::vector<DoubledPerson> found;
  for (const std::string& person : doubled) {
    if (auto rows = FindDoubledPerson(connection, person)) found.push_back(*std::move(rows));
  }
  return found;
}

void DropDoubledRow(ado::Connection& connection, const DoubledPerson& doubled, std::size_t row) {
  Transaction transaction(connection);
  const Rows present = Read(connection, RowsOfPerson(doubled.person));
  if (present.rows != doubled.rows || row >= doubled.rows.size()) {
    throw environment::Failure(environment::kInvalidCall, "此人的记录已被改动，请重新打开人员列表。");
  }
  const std::size_t number = present.ColumnOf("A0199");
  const Value& dropped = doubled.rows[row][number];
  const auto same = std::count_if(doubled.rows.begin(), doubled.rows.end(),
                                  [&](const Row& other) { return other[number] == dropped; });
  if (same != 1) {
    throw environment::Failure(environment::kInvalidCall,
                               "此人的几条记录的人员序号相同，无法区分，请管理员在数据库中处理。");
  }
  connection.Execute("delete from A01" + OfPerson(doubled.person) + " and A0199" +
                     (dropped.IsNull() ? " is null" : "=" + environment::TextOf(dropped)));
  transaction.Commit();
}

}  // namespace dossierkit::care
