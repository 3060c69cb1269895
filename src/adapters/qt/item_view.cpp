#include "adapters/qt/item_view.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <algorithm>

#include "adapters/qt/qt_application.h"

namespace dossierkit::qt {

ItemView::ItemView(ViewContext& context, toolkit::Control& control, QAbstractItemView* native)
    : WidgetView(context, control, native), native_(native) {
  native_->setSelectionMode(QAbstractItemView::SingleSelection);
  native_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  native_->setMouseTracking(true);
  native_->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
}

void ItemView::Listen() {
  QObject::connect(native_->selectionModel(), &QItemSelectionModel::selectionChanged, Hub(),
                   [this](const QItemSelection& selected) {
                     if (!IsShowing() && !selected.isEmpty()) Want(selected.first().topLeft());
                   });
}

bool ItemView::ReportAndShow(const std::function<void()>& report) {
  const auto life = Life();
  Context().application.Guard(report);
  if (life.expired()) return false;
  Update(&toolkit::RowUpdates::Now);
  return true;
}

bool ItemView::Want(const QModelIndex& index) {
  return ReportAndShow([&] { ReportSelect(index); });
}

int ItemView::RowsInSight() const {
  return native_->viewport()->height() / std::max(1, native_->sizeHintForRow(0));
}

void ItemView::DoubleClicked() {
  ReportAndShow([&] { ReportDblClick(); });
}

void ItemView::ShowStyle() {
  WidgetView::ShowStyle();
  QPalette palette = native_->palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::Base, ColorOf(GetControl().BackColor()));
    palette.setColor(group, QPalette::Text, ColorOf(GetControl().ForeColor()));
  }
  palette.setColor(QPalette::Inactive, QPalette::Highlight,
                   palette.color(QPalette::Active, QPalette::Highlight));
  if (native_->palette() != palette) native_->setPalette(palette);
}

void ItemView::ShowText() { native_->viewport()->update(); }

void ItemView::Update(void (toolkit::RowUpdates::*step)()) {
  if (!Widget()) return;
  const auto showing = Showing();
  (updates_.*step)();
}

void ItemView::CallWhenIdle() {
  QMetaObject::invokeMethod(
      Hub(), [this] { Update(&toolkit::RowUpdates::Idle); }, Qt::QueuedConnection);
}

void ItemView::Compare() {
  const QModelIndex index = Selected();
  auto& selection = *native_->selectionModel();
  if (!index.isValid()) {
    if (native_->currentIndex().isValid() || selection.hasSelection()) selection.clear();
  } else if (native_->currentIndex() != index || !selection.isSelected(index)) {
    selection.setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    native_->scrollTo(index);
  }
}

}  // namespace dossierkit::qt
