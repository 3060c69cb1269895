#include "platform/ado/recordset.h"

#include <utility>

#include "platform/environment/failure.h"

namespace dossierkit::ado {
namespace {

using environment::MakeFailure;

// The column of a filter "column<>''", or 3001 for any other filter.
std::string FilteredColumn(const std::string& filter) {
  std::string plain;
  for (const char c : filter) {
    if (c != ' ') plain += c;
  }
  const std::size_t column_length = plain.find("<>''");
  if (column_length == std::string::npos || column_length == 0 || column_length + 4 != plain.size()) {
    throw MakeFailure(environment::kInvalidArgument);
  }
  return plain.substr(0, column_length);
}

}  // namespace

Recordset::Recordset(Snapshot rows) : rows_(std::move(rows)) {
  index_ = rows_.RowCount() > 0 ? 0 : -1;
  // A statement that gives no rows at all gives a closed recordset.
  state_ = rows_.ColumnCount() > 0 ? kStateOpen : kStateClosed;
}

void Recordset::Open(const std::string& source, Connection& connection, CursorType, LockType, CommandType) {
  if (state_ == kStateOpen) throw MakeFailure(environment::kObjectOpen, source);
  if (source.empty()) throw MakeFailure(environment::kInvalidArgument);
  rows_ = connection.Run(source);
  visible_.clear();
  filtered_ = false;
  index_ = rows_.RowCount() > 0 ? 0 : -1;
  state_ = rows_.ColumnCount() > 0 ? kStateOpen : kStateClosed;
}

void Recordset::Close() {
  RequireOpen();
  rows_ = Snapshot();
  visible_ = {};
  filtered_ = false;
  index_ = -1;
  state_ = kStateClosed;
}

std::int32_t Recordset::RecordCount() const {
  RequireOpen();
  return static_cast<std::int32_t>(filtered_ ? visible_.size() : rows_.RowCount());
}

bool Recordset::BOF() const { return RecordCount() == 0 || index_ < 0; }

bool Recordset::EOF_() const { return RecordCount() == 0 || index_ >= RecordCount(); }

std::int32_t Recordset::AbsolutePosition() const {
  if (RecordCount() == 0) return -1;
  if (BOF()) return -2;
  if (EOF_()) return -3;
  return static_cast<std::int32_t>(index_ + 1);
}

void Recordset::SetAbsolutePosition(std::int32_t position) {
  if (position < 1 || position > RecordCount()) throw MakeFailure(environment::kInvalidArgument);
  MoveTo(position - 1, kReasonMove);
}

void Recordset::MoveFirst() {
  if (RecordCount() == 0) throw MakeFailure(environment::kNoCurrentRow);
  MoveTo(0, kReasonMoveFirst);
}

void Recordset::MoveNext() {
  if (EOF_()) throw MakeFailure(environment::kNoCurrentRow);
  MoveTo(index_ + 1, kReasonMoveNext);
}

void Recordset::MovePrevious() {
  if (BOF()) throw MakeFailure(environment::kNoCurrentRow);
  MoveTo(index_ - 1, kReasonMovePrevious);
}

void Recordset::Filter(const std::string& filter) {
  RequireOpen();
  std::vector<std::uint32_t> visible;
  if (!filter.empty()) {
    const int column = rows_.FindColumn(FilteredColumn(filter));
    if (column < 0) throw MakeFailure(environment::kUnknownItem);
    for (std::size_t row = 0; row < rows_.RowCount(); ++row) {
      const environment::Value value = rows_.ValueAt(row, static_cast<std::size_t>(column));
      if (!environment::TextOr(value, "").empty()) visible.push_back(static_cast<std::uint32_t>(row));
    }
  }
  visible_ = std::move(visible);
  filtered_ = !filter.empty();
  index_ = RecordCount() > 0 ? 0 : -1;
}

environment::Value Recordset::Fields(std::string_view name) const {
  RequireOpen();
  const int column = rows_.FindColumn(name);
  if (column < 0) throw MakeFailure(environment::kUnknownItem);
  return Fields(static_cast<std::size_t>(column));
}

environment::Value Recordset::Fields(std::size_t index) const {
  RequireOpen();
  if (index >= rows_.ColumnCount()) throw MakeFailure(environment::kUnknownItem);
  return rows_.ValueAt(CurrentRow(), index);
}

std::size_t Recordset::FieldCount() const {
  RequireOpen();
  return rows_.ColumnCount();
}

const std::string& Recordset::FieldName(std::size_t index) const {
  RequireOpen();
  if (index >= rows_.ColumnCount()) throw MakeFailure(environment::kUnknownItem);
  return rows_.ColumnAt(index).name;
}

environment::Value Recordset::ValueAt(std::int32_t position, std::size_t index) const {
  if (position < 1 || position > RecordCount()) throw MakeFailure(environment::kNoCurrentRow);
  if (index >= rows_.ColumnCount()) throw MakeFailure(environment::kUnknownItem);
  const auto place = static_cast<std::size_t>(position - 1);
  return rows_.ValueAt(filtered_ ? visible_[place] : place, index);
}

void Recordset::RequireOpen() const {
  if (state_ == kStateClosed) throw MakeFailure(environment::kObjectClosed);
}

std::size_t Recordset::CurrentRow() const {
  const std::int32_t count = RecordCount();
  if (index_ < 0 || index_ >= count) throw MakeFailure(environment::kNoCurrentRow);
  const auto place = static_cast<std::size_t>(index_);
  return filtered_ ? visible_[place] : place;
}

void Recordset::MoveTo(std::int64_t index, EventReason reason) {
  // A subscriber may drop the page that owns this recordset.
  const std::shared_ptr<Recordset> alive = weak_from_this().lock();
  std::int32_t status = kStatusOk;
  WillMove.Raise(reason, status, *this);
  if (state_ == kStateClosed) return;
  if (status != kStatusCancel) {
    // Other rows may have come into force meanwhile: the cursor stays within them.
    index_ = index > RecordCount() ? RecordCount() : index;
    status = kStatusOk;
  }
  MoveComplete.Raise(reason, status, *this);
}

}  // namespace dossierkit::ado
