#include "adapters/qt/grid_model.h"

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/data_grid.h"

namespace dossierkit::qt {

GridModel::GridModel(QtApplication& application, toolkit::DataGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), application_(application), grid_(&grid) {}

void GridModel::Detach() {
  beginResetModel();
  grid_ = nullptr;
  rows_ = columns_ = 0;
  endResetModel();
}

void GridModel::Reset() {
  beginResetModel();
  rows_ = grid_->RowCount();
  columns_ = static_cast<int>(grid_->ColumnCount());
  headings_.clear();
  for (std::size_t column = 0; column < grid_->ColumnCount(); ++column)
    headings_ << ToQString(grid_->Heading(column));
  endResetModel();
}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!grid_ || !index.isValid() || role != Qt::DisplayRole) return {};
  QVariant text;
  application_.Guard([&] {
    // A recordset that was closed meanwhile shows nothing more.
    if (index.row() >= grid_->RowCount()) return;
    text = ToQString(grid_->Cell(index.row() + 1, static_cast<std::size_t>(index.column())));
  });
  return text;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::FontRole) return head_font_;
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
  return role == Qt::DisplayRole ? headings_.value(section) : QVariant();
}

}  // namespace dossierkit::qt
