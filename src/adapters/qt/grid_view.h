// GridView: the record list. Only rows in sight are ever formatted.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/data_grid.h"

class QTableView;

namespace dossierkit::qt {

class GridModel;

class GridView : public WidgetView {
 public:
  GridView(ViewContext& context, toolkit::DataGrid& grid);
  ~GridView() override;

  int RowsInSight() const override;

  // The user wants a row, from 0.
  void RowWanted(int row);

 protected:
  void ShowStyle() override;
  void ShowContent() override;
  void ShowSelection() override;

 private:
  void ShowWidths();
  void ColumnResized(int column, int pixels);

  toolkit::DataGrid& grid_;
  QTableView* native_;
  GridModel* model_;  // owned by the native widget
  unsigned filled_;   // the filling of the grid that the model shows
};

}  // namespace dossierkit::qt
