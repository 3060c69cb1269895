// ListBoxModel: the rows of a list box as the native list asks for them.
#pragma once

#include <QAbstractListModel>

namespace dossierkit::toolkit {
class ListBox;
}

namespace dossierkit::qt {

class ListBoxModel : public QAbstractListModel {
 public:
  ListBoxModel(const toolkit::ListBox& list, QObject* parent) : QAbstractListModel(parent), list_(&list) {}

  // No rows, until Fill.
  void Drop();
  void Fill();
  // The list goes.
  void Detach();

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  const toolkit::ListBox* list_;
  int rows_ = 0;
};

}  // namespace dossierkit::qt
