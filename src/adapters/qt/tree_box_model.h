// TreeBoxModel: the nodes of a tree view as the native tree asks for them.
#pragma once

#include <QAbstractItemModel>
#include <vector>

namespace dossierkit::toolkit {
class TreeView;
}

namespace dossierkit::qt {

class TreeBoxModel : public QAbstractItemModel {
 public:
  TreeBoxModel(const toolkit::TreeView& tree, QObject* parent) : QAbstractItemModel(parent), tree_(&tree) {}

  // No nodes, until Fill.
  void Drop();
  void Fill();
  // The tree goes.
  void Detach();

  QModelIndex IndexOf(int node) const;
  static int NodeOf(const QModelIndex& index);

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex&) const override { return 1; }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  bool Shows(int node) const;

  const toolkit::TreeView* tree_;
  // The children of all nodes one behind the other, the top level first; those of node n start at the
  // place n + 1 of starts_.
  std::vector<int> children_;
  std::vector<int> starts_;
};

}  // namespace dossierkit::qt
