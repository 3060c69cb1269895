#include "adapters/qt/grid_view.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <QToolTip>
#include <algorithm>

#include "adapters/qt/elided.h"
#include "adapters/qt/grid_model.h"
#include "adapters/qt/qt_application.h"

namespace dossierkit::qt {
namespace {

constexpr int kRowPadding = 8;
constexpr int kHeadPadding = 10;

// Selects nothing itself: a row is asked for, and shown once the cursor stands there.
class Table : public QTableView {
 public:
  Table(QtApplication& application, QWidget* parent) : QTableView(parent), application_(application) {}
  using QTableView::updateGeometries;

 protected:
  // The chosen row runs on to the edge behind the last column.
  void paintEvent(QPaintEvent* event) override {
    const int end = horizontalHeader()->length() - horizontalHeader()->offset();
    for (const QModelIndex& row : selectionModel()->selectedRows(currentIndex().column())) {
      const QRect place = visualRect(row);
      QPainter painter(viewport());
      painter.fillRect(QRect(end, place.top(), viewport()->width() - end, place.height()),
                       hasFocus() ? palette().color(QPalette::Highlight) : SelectionColor());
    }
    QTableView::paintEvent(event);
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return;
    if (const int row = rowAt(event->position().toPoint().y()); row >= 0) Want(row);
  }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Left: Scroll(-1); break;
      case Qt::Key_Right: Scroll(1); break;
      default: event->ignore();  // the model moves
    }
  }

 private:
  void Want(int row) {
    if (auto* view = static_cast<GridView*>(application_.ViewOf(this))) view->RowWanted(row);
  }
  void Scroll(int steps) {
    auto* bar = horizontalScrollBar();
    bar->setValue(bar->value() + steps * bar->singleStep());
  }
  QtApplication& application_;
};

// A heading that is cut off stands whole in its tool tip.
class Head : public QHeaderView {
 public:
  explicit Head(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) { setTextElideMode(Qt::ElideRight); }

 protected:
  bool viewportEvent(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
    const auto& help = static_cast<QHelpEvent&>(*event);
    const int column = logicalIndexAt(help.pos());
    if (column < 0 || sectionSizeFromContents(column).width() <= sectionSize(column)) return true;
    QToolTip::showText(help.globalPos(), TipOf(model()->headerData(column, Qt::Horizontal).toString()), this);
    return true;
  }
};

}  // namespace

GridView::GridView(ViewContext& context, toolkit::DataGrid& grid)
    : WidgetView(context, grid, new Table(context.application, ParentWidgetOf(grid))),
      grid_(grid),
      native_(static_cast<QTableView*>(Widget())),
      model_(new GridModel(context.application, grid, native_)),
      filled_(grid.Fillings() - 1) {
  native_->setHorizontalHeader(new Head(native_));
  native_->setItemDelegate(new TipDelegate(native_));
  native_->setModel(model_);
  native_->setSelectionBehavior(QAbstractItemView::SelectRows);
  native_->setSelectionMode(QAbstractItemView::SingleSelection);
  native_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  native_->setAlternatingRowColors(true);
  native_->setWordWrap(false);
  native_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  native_->verticalHeader()->hide();
  native_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  native_->verticalHeader()->setMinimumSectionSize(1);
  native_->horizontalHeader()->setMinimumSectionSize(0);
  QPalette palette = native_->palette();
  palette.setColor(QPalette::Inactive, QPalette::Highlight,
                   palette.color(QPalette::Active, QPalette::Highlight));
  native_->setPalette(palette);
  QObject::connect(native_->horizontalHeader(), &QHeaderView::sectionResized, Hub(),
                   [this](int column, int, int pixels) {
                     if (!IsShowing()) ColumnResized(column, pixels);
                   });
  // A selection from outside, by accessibility.
  QObject::connect(native_->selectionModel(), &QItemSelectionModel::selectionChanged, Hub(),
                   [this](const QItemSelection& selected) {
                     if (!IsShowing() && !selected.isEmpty()) RowWanted(selected.first().top());
                   });
}

GridView::~GridView() {
  const auto showing = Showing();
  if (Widget()) model_->Detach();
}

int GridView::RowsInSight() const {
  return native_->viewport()->height() / std::max(1, native_->verticalHeader()->defaultSectionSize());
}

// The model shows what became of it.
void GridView::RowWanted(int row) {
  Context().application.Guard([&] { grid_.UserSelectRow(row + 1); });
}

void GridView::ColumnResized(int column, int pixels) {
  const auto width = static_cast<float>(GetMetrics().Twips(pixels));
  Context().application.Guard([&] { grid_.UserColumnWidth(static_cast<std::size_t>(column), width); });
}

void GridView::ShowStyle() {
  WidgetView::ShowStyle();
  const auto& metrics = GetMetrics();
  const QFont head = metrics.FontOf(grid_.HeadFont());
  model_->SetHeadFont(head);
  native_->horizontalHeader()->setFont(head);
  native_->horizontalHeader()->setFixedHeight(QFontMetrics(head).height() + metrics.Scaled(kHeadPadding));
  native_->verticalHeader()->setDefaultSectionSize(native_->fontMetrics().height() +
                                                   metrics.Scaled(kRowPadding));
}

void GridView::ShowWidths() {
  const auto showing = Showing();
  for (int column = 0; column < model_->columnCount(); ++column) {
    const float width = grid_.ColumnWidth(static_cast<std::size_t>(column));
    native_->setColumnHidden(column, width <= 0);
    if (width > 0)
      native_->setColumnWidth(column, std::max(1, GetMetrics().Pixels(static_cast<double>(width))));
  }
  // At once, and not behind the next frame: a bar that has nothing to scroll would flash.
  static_cast<Table*>(native_)->updateGeometries();
}

void GridView::ShowContent() {
  if (filled_ != grid_.Fillings()) {
    filled_ = grid_.Fillings();
    const auto showing = Showing();
    model_->Reset();
  }
  ShowWidths();
  ShowSelection();
}

void GridView::ShowSelection() {
  const int row = grid_.Row() - 1;
  const bool chosen = row >= 0 && grid_.ShowsRow();
  const auto& rows = *native_->selectionModel();
  const bool shown =
      native_->currentIndex().row() == row && (chosen ? rows.isRowSelected(row, {}) : !rows.hasSelection());
  if (shown || row >= model_->rowCount()) return;
  const auto showing = Showing();
  if (row < 0) {
    native_->selectionModel()->clear();
  } else {
    // A column that shows carries the current cell, so that the table need not scroll sideways.
    int column = 0;
    while (column + 1 < model_->columnCount() && native_->isColumnHidden(column)) ++column;
    const QModelIndex index = model_->index(row, column);
    // Already a new current cell scrolls to itself.
    const int sideways = native_->horizontalScrollBar()->value();
    native_->selectionModel()->setCurrentIndex(
        index, (chosen ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Clear) |
                   QItemSelectionModel::Rows);
    native_->scrollTo(index);
    native_->horizontalScrollBar()->setValue(sideways);
  }
}

}  // namespace dossierkit::qt
