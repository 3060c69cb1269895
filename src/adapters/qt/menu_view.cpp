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
  void mousePressEvent(QMouseEvent* event) override { pressed_ = indexAt(event->position().toPoint()).row(); }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseReleaseEvent(QMouseEvent* event) override {
    const int row = indexAt(event->position().toPoint()).row();
    const bool clicked = event->button() == Qt::LeftButton && row >= 0 && row == pressed_;
    pressed_ = -1;
    if (clicked) Click(row);
  }
  void keyPressEvent(QKeyEvent* event) override {
    event->ignore();  // the model moves
  }

 private:
  MenuView* View() { return static_cast<MenuView*>(application_.NearestView(this)); }
  void Click(int row) {
    if (auto* view = View()) view->ItemClicked(row);
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
                     if (!IsShowing() && !selected.isEmpty()) ItemMarked(selected.first().top());
                   });
}

MenuView::~MenuView() {
  const auto showing = Showing();
  if (Widget()) model_->Detach();
}

QWidget* MenuView::FocusWidget() const { return list_; }

int MenuView::RowsInSight() const {
  return list_->viewport()->height() / std::max(1, list_->sizeHintForRow(0));
}

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
  head_->setText(ToQString(menu_.menucaption()));
  if (menu_.AccessibleName().empty()) list_->setAccessibleName(head_->text());
  {
    const auto showing = Showing();
    model_->Refresh();
  }
  ShowSelection();
}

void MenuView::ShowSelection() {
  const QModelIndex index = model_->index(menu_.Marked() - 1);
  if (index.isValid() && list_->currentIndex() != index) {
    const auto showing = Showing();
    list_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    list_->scrollTo(index);
  }
  list_->viewport()->update();
}

}  // namespace dossierkit::qt
