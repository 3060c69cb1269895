#include "adapters/qt/menu_model.h"

#include <QFile>
#include <QPainter>
#include <algorithm>

#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/vertical_menu.h"

namespace dossierkit::qt {
namespace {

constexpr int kIconSize = 32;
constexpr int kRowHeight = 38;
constexpr int kGap = 5;

QIcon ReadIcon(const std::string& path) {
  const QString native = ToNativePath(path);
  return QFile::exists(native) ? QIcon(native) : QIcon();
}

}  // namespace

MenuModel::MenuModel(toolkit::VerticalMenu& menu, QObject* parent)
    : QAbstractListModel(parent), menu_(&menu), icons_(ReadIcon) {}

void MenuModel::Detach() {
  beginResetModel();
  menu_ = nullptr;
  rows_ = 0;
  endResetModel();
}

void MenuModel::Refresh() {
  const int rows = menu_->menuitemsmax();
  if (rows != rows_) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
  } else if (rows > 0) {
    Q_EMIT dataChanged(index(0), index(rows - 1));
  }
}

int MenuModel::Selected() const { return menu_ ? menu_->menuitemcur() - 1 : -1; }

bool MenuModel::AnyIcon() const {
  if (!menu_) return false;
  for (const auto& item : menu_->Items()) {
    if (!item.icon.empty() && !icons_.Of(item.icon).isNull()) return true;
  }
  return false;
}

int MenuModel::rowCount(const QModelIndex& parent) const { return parent.isValid() || !menu_ ? 0 : rows_; }

QVariant MenuModel::data(const QModelIndex& index, int role) const {
  if (!menu_ || !index.isValid() || index.row() >= menu_->menuitemsmax()) return {};
  const auto& item = menu_->Items()[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: return ToQString(item.caption);
    case Qt::DecorationRole: return item.icon.empty() ? QIcon() : icons_.Of(item.icon);
    default: return {};
  }
}

void MenuDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const bool selected = index.row() == model_.Selected();
  const bool marked = (option.state & QStyle::State_Selected) && (option.state & QStyle::State_HasFocus);
  const bool hovered = option.state & QStyle::State_MouseOver;
  const bool enabled = option.state & QStyle::State_Enabled;
  const QRect row = option.rect;
  painter->save();
  if (selected) {
    painter->fillRect(row, SelectionColor());
    painter->fillRect(QRect(row.left(), row.top(), metrics_.Scaled(kBarWidth), row.height()), AccentColor());
  } else if (hovered) {
    painter->fillRect(row, HoverColor());
  }
  if (marked) {
    PaintBox(*painter, row.adjusted(1, 1, -1, -1), Qt::NoBrush,
             {AccentColor(), metrics_.Ring(), metrics_.Radius()});
  }
  if (const auto icon = index.data(Qt::DecorationRole).value<QIcon>(); !icon.isNull()) {
    const int side = metrics_.Scaled(kIconSize);
    const QRect place(row.left() + metrics_.Scaled(kBarWidth + kGap), row.top() + (row.height() - side) / 2,
                      side, side);
    icon.paint(painter, place, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
  }
  QFont font = option.font;
  font.setBold(selected);
  painter->setFont(font);
  const auto group = enabled ? QPalette::Active : QPalette::Disabled;
  painter->setPen(selected ? SelectedTextColor() : option.palette.color(group, QPalette::WindowText));
  bool cut = false;
  painter->drawText(TextPlace(row), Qt::AlignLeft | Qt::AlignVCenter,
                    Lines(row, index, option.font, cut).join(QLatin1Char('\n')));
  painter->restore();
}

QRect MenuDelegate::TextPlace(const QRect& row) const {
  const int icon = model_.AnyIcon() ? metrics_.Scaled(kIconSize) + metrics_.Scaled(kGap) : 0;
  return row.adjusted(metrics_.Scaled(kBarWidth + kGap) + icon, 0, -metrics_.Scaled(2), 0);
}

QStringList MenuDelegate::Lines(const QRect& row, const QModelIndex& index, QFont font, bool& cut) const {
  font.setBold(index.row() == model_.Selected());
  const int most = row.height() / std::max(1, QFontMetrics(font).lineSpacing());
  int all = 0;
  QStringList lines = ElidedLines(index.data().toString(), font, TextPlace(row).width(), 0, most, all);
  cut = all > most;
  return lines;
}

bool MenuDelegate::IsCut(const QAbstractItemView&, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  bool cut = false;
  Lines(option.rect, index, option.font, cut);
  return cut;
}

QSize MenuDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {option.rect.width(), metrics_.Scaled(kRowHeight)};
}

}  // namespace dossierkit::qt
