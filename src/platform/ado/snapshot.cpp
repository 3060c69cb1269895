#include "platform/ado/snapshot.h"

#include <utility>

#include "platform/environment/dates.h"
#include "platform/environment/format.h"
#include "platform/environment/text.h"

namespace dossierkit::ado {
namespace {

using environment::Value;

Value ValueOfText(std::string_view text, ColumnKind kind) {
  if (kind == ColumnKind::kDate) {
    if (const auto date = environment::ParseDate(text)) return *date;
  }
  return environment::ValidUtf8(text);
}

}  // namespace

void Snapshot::AddColumn(Column column) {
  column.name = environment::ValidUtf8(column.name);
  columns_.push_back(std::move(column));
}

void Snapshot::AppendNull() {
  Cell cell{};
  cell.kind = Cell::Kind::kNull;
  cells_.push_back(cell);
}

void Snapshot::AppendInteger(std::int64_t value) {
  Cell cell{};
  cell.kind = Cell::Kind::kInteger;
  cell.integer = value;
  cells_.push_back(cell);
}

void Snapshot::AppendFloating(double value) {
  Cell cell{};
  cell.kind = Cell::Kind::kFloating;
  cell.floating = value;
  cells_.push_back(cell);
}

void Snapshot::AppendText(std::string_view text) {
  static_assert(sizeof(Cell) == 16, "a million rows must stay small");
  Cell cell{};
  cell.kind = Cell::Kind::kText;
  cell.length = static_cast<std::uint32_t>(text.size());
  cell.offset = arena_.size();
  arena_.append(text);
  cells_.push_back(cell);
}

int Snapshot::FindColumn(std::string_view name) const {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (environment::EqualIgnoringCase(columns_[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

Value Snapshot::ValueAt(std::size_t row, std::size_t column) const {
  const Column& description = columns_.at(column);
  const Cell& cell = cells_.at(row * columns_.size() + column);
  Value value;
  switch (cell.kind) {
    case Cell::Kind::kNull: value = environment::Null{}; break;
    case Cell::Kind::kInteger:
      value = description.kind == ColumnKind::kBoolean ? Value(cell.integer != 0) : Value(cell.integer);
      break;
    case Cell::Kind::kFloating: value = cell.floating; break;
    case Cell::Kind::kText:
      value = ValueOfText(std::string_view(arena_).substr(cell.offset, cell.length), description.kind);
      break;
  }
  return description.format.empty() ? value : Value(environment::Format(value, description.format));
}

}  // namespace dossierkit::ado
