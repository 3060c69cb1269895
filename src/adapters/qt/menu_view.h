// MenuView: the vertical menu: a head with the group's caption over a list of items.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/vertical_menu.h"

class QLabel;
class QListView;

namespace dossierkit::qt {

class MenuModel;

class MenuView : public WidgetView {
 public:
  MenuView(ViewContext& context, toolkit::VerticalMenu& menu);
  ~MenuView() override;

  QWidget* FocusWidget() const override;
  int RowsInSight() const override;

  // The user clicked an item, or marked one, from 0.
  void ItemClicked(int item);
  void ItemMarked(int item);

 protected:
  void ShowStyle() override;
  void ShowContent() override;
  void ShowSelection() override;

 private:
  toolkit::VerticalMenu& menu_;
  QLabel* head_;
  QListView* list_;
  MenuModel* model_;
};

}  // namespace dossierkit::qt
