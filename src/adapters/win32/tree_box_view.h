// TreeBoxView: a tree of nodes.
#pragma once

#include <vector>

#include "adapters/win32/item_view.h"
#include "platform/toolkit/controls/tree_view.h"

namespace dossierkit::win32 {

// The native tree has the nodes below a node once that was open, so that a tree of many nodes costs what it
// shows.
class TreeBoxView : public ItemView {
 public:
  TreeBoxView(ViewContext& context, toolkit::TreeView& tree);

  int RowsInSight() const override;
  void Rescale(const Look& look) override;
  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  std::optional<LRESULT> Notified(NMHDR& notice) override;

 protected:
  bool Press(POINT at) override;
  void DoubleClick() override;
  void ShowStyle() override;
  void ShowSelection() override;
  void Drop() override;
  void Fill() override;
  void Compare() override;

 private:
  void Fold(int node, bool expanded);
  bool IsOpen(int node) const;  // in the model, with something to show
  void AddChildren(int node);
  HTREEITEM ItemOf(int node);  // makes it where it is not there yet
  int NodeOf(HTREEITEM item) const;
  void Refill();
  void ShowFoldings();
  void Follow(int node);
  LRESULT PaintNode(NMTVCUSTOMDRAW& drawing) const;
  template <typename T>
  LRESULT Ask(UINT id, WPARAM wide, T low) const {
    return SendMessageW(Handle(), id, wide, (LPARAM)low);
  }

  toolkit::TreeView& tree_;
  std::vector<HTREEITEM> items_;  // of the nodes; null for one that the native tree does not have yet
  std::vector<char> filled_;      // the nodes whose children it has
  std::vector<char> open_;        // the nodes that are open there
  unsigned foldings_ = 0;         // of the model, as shown
};

}  // namespace dossierkit::win32
