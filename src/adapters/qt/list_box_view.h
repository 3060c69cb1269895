// ListBoxView: a list of texts.
#pragma once

#include "adapters/qt/item_view.h"
#include "platform/toolkit/controls/list_box.h"

class QListView;

namespace dossierkit::qt {

class ListBoxModel;

class ListBoxView : public ItemView {
 public:
  ListBoxView(ViewContext& context, toolkit::ListBox& list);
  ~ListBoxView() override;

  int RowAt(int x, int y) const override;

 protected:
  void ReportSelect(const QModelIndex& index) override { list_.UserSelect(index.row()); }
  void ReportDblClick() override { list_.UserDblClick(); }
  void Drop() override;
  void Fill() override;
  QModelIndex Selected() override;

 private:
  toolkit::ListBox& list_;
  QListView* native_;
  ListBoxModel* model_;  // owned by the native widget
};

}  // namespace dossierkit::qt
