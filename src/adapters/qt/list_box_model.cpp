#include "adapters/qt/list_box_model.h"

#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/list_box.h"

namespace dossierkit::qt {

void ListBoxModel::Drop() {
  beginResetModel();
  rows_ = 0;
  endResetModel();
}

void ListBoxModel::Fill() {
  beginResetModel();
  rows_ = list_->ListCount();
  endResetModel();
}

void ListBoxModel::Detach() {
  Drop();
  list_ = nullptr;
}

int ListBoxModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

QVariant ListBoxModel::data(const QModelIndex& index, int role) const {
  if (!list_ || !index.isValid()) return {};
  if (role == Qt::DisplayRole) return ToQString(list_->List(index.row()));
  if (role == Qt::ToolTipRole) return ToQString(list_->ToolTipText());
  return {};
}

}  // namespace dossierkit::qt
