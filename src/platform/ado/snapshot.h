// Snapshot: the rows that a statement gave, as one static block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/environment/value.h"

namespace dossierkit::ado {

enum class ColumnKind { kText, kInteger, kFloating, kBoolean, kDate, kUnknown };

struct Column {
  std::string name;
  ColumnKind kind = ColumnKind::kUnknown;
  // A pattern by which every value of the column is formatted when it is read, or empty.
  std::string format;
};

// Columns and cells in row order. All text lies in one arena; a cell is 16 bytes. Filled by an
// engine (AddColumn, then Append... column by column, row by row), then only read.
class Snapshot {
 public:
  void AddColumn(Column column);
  void AppendNull();
  void AppendInteger(std::int64_t value);  // also for Boolean columns: 0 or 1
  void AppendFloating(double value);
  void AppendText(std::string_view text);  // dates too, as ISO text yyyy-mm-dd[ hh:nn:ss]

  std::size_t ColumnCount() const { return columns_.size(); }
  std::size_t RowCount() const { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }
  const Column& ColumnAt(std::size_t column) const { return columns_.at(column); }

  // Index of the first column of that name (case ignored), or -1.
  int FindColumn(std::string_view name) const;

  // The value of a cell, of the column's kind and through its format. Text that is no valid UTF-8
  // comes back with U+FFFD in place of each bad byte.
  environment::Value ValueAt(std::size_t row, std::size_t column) const;

 private:
  struct Cell {
    enum class Kind : std::uint32_t { kNull, kInteger, kFloating, kText } kind;
    std::uint32_t length;
    union {
      std::int64_t integer;
      double floating;
      std::size_t offset;
    };
  };
  std::vector<Column> columns_;
  std::vector<Cell> cells_;
  std::string arena_;
};

}  // namespace dossierkit::ado
