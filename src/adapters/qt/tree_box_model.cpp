#include "adapters/qt/tree_box_model.h"

#include <QColor>

#include "adapters/qt/look.h"
#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/tree_view.h"

namespace dossierkit::qt {

using toolkit::kNoNode;

void TreeBoxModel::Drop() {
  beginResetModel();
  children_.clear();
  starts_.clear();
  endResetModel();
}

void TreeBoxModel::Fill() {
  beginResetModel();
  const auto& nodes = tree_->Nodes();
  const int count = nodes.Count();
  starts_.clear();
  starts_.reserve(static_cast<std::size_t>(count) + 1);
  int start = 0;
  for (int node = kNoNode; node < count; ++node) {
    starts_.push_back(start);
    start += nodes.ChildCount(node);
  }
  children_.assign(static_cast<std::size_t>(count), kNoNode);
  for (int node = 0; node < count; ++node) {
    const int family = nodes.Parent(node) + 1;
    const int place = starts_[static_cast<std::size_t>(family)] + nodes.Row(node);
    children_[static_cast<std::size_t>(place)] = node;
  }
  endResetModel();
}

void TreeBoxModel::Detach() {
  Drop();
  tree_ = nullptr;
}

// Nodes that came since are shown with the next Fill; some may be gone before Drop.
bool TreeBoxModel::Shows(int node) const {
  return tree_ && node + 1 < static_cast<int>(starts_.size()) &&
         (node == kNoNode || tree_->Nodes().Has(node));
}

QModelIndex TreeBoxModel::IndexOf(int node) const {
  if (node == kNoNode || !Shows(node)) return {};
  return createIndex(tree_->Nodes().Row(node), 0, static_cast<quintptr>(node));
}

int TreeBoxModel::NodeOf(const QModelIndex& index) {
  return index.isValid() ? static_cast<int>(index.internalId()) : kNoNode;
}

QModelIndex TreeBoxModel::index(int row, int column, const QModelIndex& parent) const {
  if (column != 0 || row < 0 || row >= rowCount(parent)) return {};
  const int family = NodeOf(parent) + 1;
  const int place = starts_[static_cast<std::size_t>(family)] + row;
  return createIndex(row, 0, static_cast<quintptr>(children_[static_cast<std::size_t>(place)]));
}

QModelIndex TreeBoxModel::parent(const QModelIndex& index) const {
  const int node = NodeOf(index);
  return node == kNoNode || !Shows(node) ? QModelIndex() : IndexOf(tree_->Nodes().Parent(node));
}

int TreeBoxModel::rowCount(const QModelIndex& parent) const {
  const int node = NodeOf(parent);
  if (!Shows(node)) return 0;
  const auto next = static_cast<std::size_t>(node) + 2;
  return (next < starts_.size() ? starts_[next] : static_cast<int>(children_.size())) - starts_[next - 1];
}

QVariant TreeBoxModel::data(const QModelIndex& index, int role) const {
  const int node = NodeOf(index);
  if (node == kNoNode || !Shows(node)) return {};
  switch (role) {
    case Qt::DisplayRole: return ToQString(tree_->Nodes().TextOf(node));
    case Qt::ForegroundRole: return ColorOf(tree_->Nodes().ColorOf(node));
    // What does not fit can be read all the same.
    case Qt::ToolTipRole:
      return ToQString(tree_->ToolTipText().empty() ? tree_->Nodes().TextOf(node) : tree_->ToolTipText());
    default: return {};
  }
}

}  // namespace dossierkit::qt
