// RecordLists: the columns and values of the statement that Save writes.
#pragma once

#include <string>

#include "metadata/record_checks.h"

namespace dossierkit {

// Two ways of writing down a field: column and value for an insert, assignment for an update. All
// values are quoted as they stand; nothing is escaped.
class RecordLists {
 public:
  // The lists of an insert start with the columns that are no fields; those of an update are empty.
  RecordLists() = default;
  RecordLists(std::string columns, std::string values)
      : insert_(true), columns_(std::move(columns)), values_(std::move(values)) {}

  void AddQuoted(const std::string& column, const std::string& value);
  // A cleared date: set to NULL by an update, left out of an insert.
  void AddCleared(const std::string& column);

  // Writes down a field by its type; a type that is not known is left out.
  void AddText(const cFieldItem& item, const std::string& text);
  void AddMasked(const cFieldItem& item, const toolkit::MaskEdBox& box);

  const std::string& Columns() const { return columns_; }
  const std::string& Values() const { return values_; }
  const std::string& Assignments() const { return assignments_; }

 private:
  bool insert_ = false;
  std::string columns_;
  std::string values_;
  std::string assignments_;
};

}  // namespace dossierkit
