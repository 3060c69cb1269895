// GridModel: the rows of a data grid as the native table asks for them.
#pragma once

#include <QAbstractTableModel>
#include <QFont>
#include <QStringList>

namespace dossierkit::toolkit {
class DataGrid;
}

namespace dossierkit::qt {

class QtApplication;

class GridModel : public QAbstractTableModel {
 public:
  GridModel(QtApplication& application, toolkit::DataGrid& grid, QObject* parent);

  // The grid goes: no more rows.
  void Detach();
  void Reset();
  void SetHeadFont(const QFont& font) { head_font_ = font; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QtApplication& application_;
  toolkit::DataGrid* grid_;
  QFont head_font_;
  QStringList headings_;
  int rows_ = 0;
  int columns_ = 0;
};

}  // namespace dossierkit::qt
