#include "platform/toolkit/controls/data_grid.h"

#include <algorithm>

#include "platform/environment/failure.h"
#include "platform/environment/value.h"

namespace dossierkit::toolkit {
namespace {

constexpr float kDefaultColumnWidth = 2000;  // twips

}  // namespace

void DataGrid::SetDataSource(std::shared_ptr<ado::Recordset> recordset) {
  recordset_ = std::move(recordset);
  widths_.assign(recordset_ ? recordset_->FieldCount() : 0, kDefaultColumnWidth);
  ++fillings_;
  move_complete_.End();
  if (recordset_) {
    move_complete_ = recordset_->MoveComplete.Subscribe(
        [this](std::int32_t, std::int32_t&, ado::Recordset&) { ShowAspect(Aspect::kSelection); });
  }
  ShowAspect(Aspect::kContent);
}

std::size_t DataGrid::ColumnCount() const { return widths_.size(); }

std::int32_t DataGrid::RowCount() const {
  return recordset_ && recordset_->State() == ado::kStateOpen ? recordset_->RecordCount() : 0;
}

std::string DataGrid::Heading(std::size_t column) const {
  // The page closes its recordset while the grid still stands.
  return recordset_ && recordset_->State() == ado::kStateOpen ? recordset_->FieldName(column) : std::string();
}

std::string DataGrid::Cell(std::int32_t row, std::size_t column) const {
  return environment::TextOr(recordset_->ValueAt(row, column), "");
}

float DataGrid::ColumnWidth(std::size_t column) const { return widths_.at(column); }

void DataGrid::SetColumnWidth(std::size_t column, float width) {
  if (column >= widths_.size()) throw environment::MakeFailure(environment::kSubscriptOutOfRange);
  widths_[column] = width;
  ShowAspect(Aspect::kContent);
}

void DataGrid::SetHeadFont(const Font& font) {
  head_font_ = font;
  ShowAspect(Aspect::kStyle);
}

void DataGrid::UserColumnWidth(std::size_t column, float width) {
  // Where the report was ignored, the native column goes back.
  Report(Aspect::kContent, [&] {
    if (column >= widths_.size()) return;
    widths_[column] = width;
    Raise(ColResize);
  });
}

std::int32_t DataGrid::Row() const {
  return RowCount() > 0 ? std::max(recordset_->AbsolutePosition(), 0) : 0;
}

void DataGrid::SetShowsRow(bool shows) {
  if (shows_row_ == shows) return;
  shows_row_ = shows;
  ShowAspect(Aspect::kSelection);
}

void DataGrid::UserSelectRow(std::int32_t row) {
  Report(Aspect::kSelection, [&] {
    if (row < 1 || row > RowCount() || !TakeFocus()) return;
    // Getting the focus may have brought other rows.
    if (Removed() || row > RowCount()) return;
    // The page may drop its recordset while it is told of the move.
    const auto recordset = recordset_;
    recordset->SetAbsolutePosition(row);
  });
}

bool DataGrid::ActOnKey(const KeyStroke& stroke) {
  const std::int32_t last = RowCount();
  const auto select = [&](std::int32_t row) {
    if (last == 0) return true;
    row = std::clamp(row, 1, last);
    // The present row may be wanted while it does not look chosen.
    if (row != Row() || !shows_row_) UserSelectRow(row);
    return true;
  };
  switch (stroke.code) {
    case kKeyUp: return select(Row() - 1);
    case kKeyDown: return select(Row() + 1);
    case kKeyHome: return select(1);
    case kKeyEnd: return select(last);
    case kKeyPageUp: return select(Row() - RowsOfAPage());
    case kKeyPageDown: return select(Row() + RowsOfAPage());
    default: return false;
  }
}

}  // namespace dossierkit::toolkit
