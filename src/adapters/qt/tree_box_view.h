// TreeBoxView: a tree of nodes.
#pragma once

#include <vector>

#include "adapters/qt/item_view.h"
#include "platform/toolkit/controls/tree_view.h"

class QTreeView;

namespace dossierkit::qt {

class TreeBoxModel;

class TreeBoxView : public ItemView {
 public:
  TreeBoxView(ViewContext& context, toolkit::TreeView& tree);
  ~TreeBoxView() override;

  // The user opens or closes a node.
  void Fold(const QModelIndex& index, bool expanded);

 protected:
  void ShowSelection() override;
  void ReportSelect(const QModelIndex& index) override;
  void ReportDblClick() override { tree_.UserDblClick(); }
  void Drop() override;
  void Fill() override;
  void Compare() override;
  QModelIndex Selected() override;

 private:
  void ShowFoldings();
  void NativeFolded(const QModelIndex& index, bool expanded);

  toolkit::TreeView& tree_;
  QTreeView* native_;
  TreeBoxModel* model_;     // owned by the native widget
  std::vector<char> open_;  // nodes, as the native widget shows them
  unsigned foldings_ = 0;   // of the model, as shown
};

}  // namespace dossierkit::qt
