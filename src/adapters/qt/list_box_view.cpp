#include "adapters/qt/list_box_view.h"

#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <algorithm>

#include "adapters/qt/list_box_model.h"
#include "adapters/qt/qt_application.h"

namespace dossierkit::qt {
namespace {

// Selects nothing itself: a row is asked for, and shown once the model has selected it.
class List : public QListView {
 public:
  List(QtApplication& application, QWidget* parent) : QListView(parent), application_(application) {}

 protected:
  void mousePressEvent(QMouseEvent* event) override { Press(*event); }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (!Press(*event)) return;
    if (ItemView* view = View()) view->DoubleClicked();
  }
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }  // the model moves

 private:
  ItemView* View() { return static_cast<ItemView*>(application_.ViewOf(this)); }
  // False where there is no row, or the list has gone.
  bool Press(const QMouseEvent& event) {
    const QModelIndex index = indexAt(event.position().toPoint());
    ItemView* view = View();
    return view && event.button() == Qt::LeftButton && index.isValid() && view->Want(index);
  }

  QtApplication& application_;
};

}  // namespace

ListBoxView::ListBoxView(ViewContext& context, toolkit::ListBox& list)
    : ItemView(context, list, new List(context.application, ParentWidgetOf(list))),
      list_(list),
      native_(static_cast<QListView*>(Widget())),
      model_(new ListBoxModel(list, native_)) {
  native_->setUniformItemSizes(true);
  native_->setTextElideMode(Qt::ElideRight);
  native_->setModel(model_);
  Listen();
}

ListBoxView::~ListBoxView() {
  const auto showing = Showing();
  if (Widget()) model_->Detach();
}

int ListBoxView::RowAt(int x, int y) const {
  const QPoint at =
      native_->viewport()->mapFrom(native_, QPoint(GetMetrics().Pixels(x), GetMetrics().Pixels(y)));
  return native_->viewport()->rect().contains(at) ? native_->indexAt(at).row() : -1;
}

void ListBoxView::Drop() { model_->Drop(); }

void ListBoxView::Fill() { model_->Fill(); }

QModelIndex ListBoxView::Selected() { return model_->index(list_.ListIndex()); }

}  // namespace dossierkit::qt
