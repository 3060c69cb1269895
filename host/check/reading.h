// What the parts of the check share: tables as they are read, and the list of faults.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/check/check.h"
#include "pages/compiled_pages.h"
#include "platform/ado/snapshot.h"
#include "platform/environment/value.h"

namespace dossierkit::check {

// The faults found so far.
class Findings {
 public:
  // `text` says what is wrong, what the clerk meets and how to mend it, without a full stop.
  void Add(const std::string& table, const std::string& row, const std::string& column,
           const std::string& text);
  std::vector<Fault> Take() { return std::move(faults_); }

 private:
  std::vector<Fault> faults_;
};

// As the database compares names.
struct IgnoringCase {
  bool operator()(const std::string& left, const std::string& right) const;
};

// The kinds of a table's columns.
using Columns = std::map<std::string, ado::ColumnKind, IgnoringCase>;

// A row of s_infoitem.
struct Item {
  std::string column;
  std::string caption;
  std::string type;
  std::string length;
  std::string code_table;
  std::string style;
  std::string rule;
  environment::Value width;
  environment::Value may_be_empty;
};

// A row of s_infotable whose set has a page, with its fields.
struct Set {
  std::string name;
  std::string caption;
  std::string order;  // of its records
  bool many = false;  // records per person
  const CompiledPage* page = nullptr;
  std::optional<Columns> columns;  // of its table, where there is one
  std::vector<Item> items;

  bool Has(const std::string& column) const;
  const CompiledField* FieldOf(const std::string& column) const;
  // Whether the field is a text, short or long, that stands on the page without codes and without a mask.
  bool IsFreeText(const Item& item) const;
};

inline constexpr int kLongestShortText = 255;  // characters that a save takes

using Names = std::set<std::string, IgnoringCase>;

// The identifiers of all persons, in small letters.
using Persons = std::unordered_set<std::string>;

// The codes of each code table.
using CodeTables = std::map<std::string, Names, IgnoringCase>;

ado::Snapshot Read(ado::Connection& connection, const std::string& statement);
// A cell as text; Null is empty.
std::string TextAt(const ado::Snapshot& rows, std::size_t row, std::size_t column);
// The columns of a table, or nothing where there is no such table, or its name cannot be written bare.
std::optional<Columns> ColumnsOf(ado::Connection& connection, const std::string& table);
// Why the database refuses a statement for its names or its form, or nothing where it runs. Any other failure
// is thrown.
std::optional<std::string> RefusalOf(ado::Connection& connection, const std::string& statement);
bool IsShortText(const Item& item);
// The most characters that the box of a free text takes, or nothing where it has no limit.
std::optional<int> LimitOf(const Item& item);
// Whether a value can be read as a number of 16 bits.
bool Fits16Bits(const environment::Value& value);

// The parts. Each adds to `findings`.
std::vector<Set> CheckSets(ado::Connection& connection, const std::vector<CompiledPage>& pages,
                           Findings& findings);
void CheckFields(ado::Connection& connection, const Set& set, Findings& findings);
CodeTables CheckCodeTables(ado::Connection& connection, const std::vector<Set>& sets, Findings& findings);
// `persons` is nullptr where they cannot be told.
void CheckRecords(ado::Connection& connection, const Set& set, const CodeTables& codes,
                  const Persons* persons, Findings& findings);
std::optional<Persons> ReadPersons(ado::Connection& connection);
void CheckByWriting(ado::Connection& connection, const std::vector<Set>& sets, const CodeTables& codes,
                    Findings& findings);

}  // namespace dossierkit::check
