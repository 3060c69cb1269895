#include "adapters/qt/menu_view.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/menu_model.h"
#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

constexpr int kHeadHeight = 26;

// Asks for items; what is marked and selected is shown by the model.
class MenuList : public QListView {
 public:
  MenuList(QtApplication& application, QWidget* parent) : QListView(parent), application_(application) {}

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    pressed_ = event->button() == Qt::LeftButton ? indexAt(event->position().toPoint()).row() : -1;
  }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseReleaseEvent(QMouseEvent* event) override {
    const int row = indexAt(event->position().toPoint()).row();
    const bool clicked = event->button() == Qt::LeftButton && row >= 0 && row == pressed_;
    pressed_ = -1;
    if (clicked) Click(row);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const int last = model()->rowCount() - 1;
    const int row = currentIndex().row();
    const int page = std::max(1, viewport()->height() / std::max(1, sizeHintForRow(0)) - 1);
    switch (event->key()) {
      case Qt::Key_Up: Mark(row - 1, last); break;
      case Qt::Key_Down: Mark(row + 1, last); break;
      case Qt::Key_PageUp: Mark(row - page, last); break;
      case Qt::Key_PageDown: Mark(row + page, last); break;
      case Qt::Key_Home: Mark(0, last); break;
      case Qt::Key_End: Mark(last, last); break;
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if (row >= 0) Click(row);
        break;
      default: event->ignore();
    }
  }

 private:
  MenuView* View() { return static_cast<MenuView*>(application_.NearestView(this)); }
  void Click(int row) {
    if (auto* view = View()) view->ItemClicked(row);
  }
  void Mark(int row, int last) {
    if (last < 0) return;
    if (auto* view = View()) view->ItemMarked(std::clamp(row, 0, last));
  }

  QtApplication& application_;
  int pressed_ = -1;
};

}  // namespace

MenuView::MenuView(ViewContext& context, toolkit::VerticalMenu& menu)
    : WidgetView(context, menu, new QWidget(ParentWidgetOf(menu))), menu_(menu) {
  auto* layout = new QVBoxLayout(Widget());
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  head_ = new QLabel(Widget());
  head_->setAlignment(Qt::AlignCenter);
  head_->setAutoFillBackground(true);
  head_->setFixedHeight(GetMetrics().Scaled(kHeadHeight));
  list_ = new MenuList(context.application, Widget());
  list_->setObjectName(ToQString(menu.Name() + "_Items"));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setFocusPolicy(Qt::StrongFocus);
  list_->setUniformItemSizes(true);
  list_->setMouseTracking(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setContextMenuPolicy(Qt::NoContextMenu);
  model_ = new MenuModel(menu, Widget());
  list_->setModel(model_);
  list_->setItemDelegate(new MenuDelegate(GetMetrics(), *model_, list_));
  layout->addWidget(head_);
  layout->addWidget(list_);
  Widget()->setFocusPolicy(Qt::NoFocus);
  QPalette palette = head_->palette();
  palette.setColor(QPalette::Window, ColorOf(toolkit::kAppWorkspace));
  palette.setColor(QPalette::WindowText, Qt::white);
  head_->setPalette(palette);
  // A selection from outside, by accessibility.
  QObject::connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, Hub(),
                   [this](const QItemSelection& selected) {
                     if (!showing_ && !selected.isEmpty()) ItemMarked(selected.first().top());
                   });
}

MenuView::~MenuView() {
  showing_ = true;
  if (Widget()) model_->Detach();
}

QWidget* MenuView::FocusWidget() const { return list_; }

void MenuView::ItemClicked(int item) {
  Context().application.Guard([this, item] { menu_.UserClick(item + 1); });
}

void MenuView::ItemMarked(int item) {
  Context().application.Guard([this, item] { menu_.UserMark(item + 1); });
}

void MenuView::ShowStyle() {
  WidgetView::ShowStyle();
  QFont font = Widget()->font();
  font.setBold(true);
  head_->setFont(font);
  list_->setAccessibleName(
      ToQString(menu_.AccessibleName().empty() ? menu_.menucaption() : menu_.AccessibleName()));
}

void MenuView::ShowContent() {
  showing_ = true;
  head_->setText(ToQString(menu_.menucaption()));
  if (menu_.AccessibleName().empty()) list_->setAccessibleName(head_->text());
  model_->Refresh();
  showing_ = false;
  ShowSelection();
}

void MenuView::ShowSelection() {
  const QModelIndex index = model_->index(menu_.Marked() - 1);
  showing_ = true;
  if (index.isValid() && list_->currentIndex() != index) {
    list_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    list_->scrollTo(index);
  }
  showing_ = false;
  list_->viewport()->update();
}

}  // namespace dossierkit::qt
