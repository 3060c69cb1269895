// MenuModel and MenuDelegate: the items of a vertical menu, and how one is drawn.
#pragma once

#include <QAbstractListModel>
#include <QIcon>

#include "adapters/qt/elided.h"
#include "adapters/qt/look.h"
#include "platform/toolkit/controls/picture_cache.h"

namespace dossierkit::toolkit {
class VerticalMenu;
}

namespace dossierkit::qt {

class MenuModel : public QAbstractListModel {
 public:
  MenuModel(toolkit::VerticalMenu& menu, QObject* parent);

  void Detach();
  void Refresh();
  int Selected() const;  // the item of the page on show, from 0
  bool AnyIcon() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  toolkit::VerticalMenu* menu_;
  int rows_ = 0;
  mutable toolkit::PictureCache<QIcon> icons_;  // null for a file that is missing
};

class MenuDelegate : public TipDelegate {
 public:
  MenuDelegate(const Metrics& metrics, const MenuModel& model, QObject* parent)
      : TipDelegate(parent), metrics_(metrics), model_(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  bool IsCut(const QAbstractItemView& view, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  QRect TextPlace(const QRect& row) const;
  // The caption as it is painted, and whether that is not all of it.
  QStringList Lines(const QRect& row, const QModelIndex& index, QFont font, bool& cut) const;

  Metrics metrics_;
  const MenuModel& model_;
};

}  // namespace dossierkit::qt
