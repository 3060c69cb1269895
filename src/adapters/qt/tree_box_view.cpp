#include "adapters/qt/tree_box_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTreeView>

#include "adapters/qt/elided.h"
#include "adapters/qt/qt_application.h"
#include "adapters/qt/tree_box_model.h"

namespace dossierkit::qt {
namespace {

constexpr int kIndentation = 16;

// Selects and folds nothing itself: a node is asked for, and shown once the model has followed.
class Tree : public QTreeView {
 public:
  Tree(QtApplication& application, QWidget* parent) : QTreeView(parent), application_(application) {}

  // What is opened from now on is laid out later, all at once.
  void LayOutLater() { scheduleDelayedItemsLayout(); }

 protected:
  void mousePressEvent(QMouseEvent* event) override { Press(*event); }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    if (!Press(*event)) return;
    if (TreeBoxView* view = View()) view->DoubleClicked();
  }
  void keyPressEvent(QKeyEvent* event) override {
    event->ignore();  // the model moves
  }

 private:
  TreeBoxView* View() { return static_cast<TreeBoxView*>(application_.ViewOf(this)); }
  // False where no node was pressed, but its mark or nothing, or the tree has gone.
  bool Press(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    const QModelIndex index = indexAt(at);
    TreeBoxView* view = View();
    if (!view || event.button() != Qt::LeftButton || !index.isValid()) return false;
    const int left = visualRect(index).left();
    if (at.x() < left && at.x() >= left - indentation() && model()->hasChildren(index)) {
      view->Fold(index, !isExpanded(index));
      return false;
    }
    return view->Want(index);
  }

  QtApplication& application_;
};

}  // namespace

TreeBoxView::TreeBoxView(ViewContext& context, toolkit::TreeView& tree)
    : ItemView(context, tree, new Tree(context.application, ParentWidgetOf(tree))),
      tree_(tree),
      native_(static_cast<QTreeView*>(Widget())),
      model_(new TreeBoxModel(tree, native_)) {
  native_->setUniformRowHeights(true);
  native_->setHeaderHidden(true);
  native_->setIndentation(GetMetrics().Scaled(kIndentation));
  native_->setAnimated(false);
  native_->setTextElideMode(Qt::ElideRight);
  native_->setItemDelegate(new TipDelegate(native_));
  native_->setModel(model_);
  Listen();
  QObject::connect(native_, &QTreeView::expanded, Hub(),
                   [this](const QModelIndex& index) { NativeFolded(index, true); });
  QObject::connect(native_, &QTreeView::collapsed, Hub(),
                   [this](const QModelIndex& index) { NativeFolded(index, false); });
}

TreeBoxView::~TreeBoxView() {
  const auto showing = Showing();
  if (Widget()) model_->Detach();
}

// By the view itself, or from outside (accessibility).
void TreeBoxView::NativeFolded(const QModelIndex& index, bool expanded) {
  const auto node = static_cast<std::size_t>(TreeBoxModel::NodeOf(index));
  if (node < open_.size()) open_[node] = expanded;
  if (!IsShowing()) Fold(index, expanded);
}

void TreeBoxView::Fold(const QModelIndex& index, bool expanded) {
  const int node = TreeBoxModel::NodeOf(index);
  ReportAndShow([&] {
    --foldings_;  // compares all, also where the model does not follow
    tree_.UserExpand(node, expanded);
  });
}

void TreeBoxView::ReportSelect(const QModelIndex& index) { tree_.UserSelect(TreeBoxModel::NodeOf(index)); }

void TreeBoxView::ShowSelection() {
  // A program that opens and closes many nodes pays for one comparison.
  if (tree_.Foldings() != foldings_) {
    Update(&toolkit::RowUpdates::Later);
  } else {
    ItemView::ShowSelection();
  }
}

void TreeBoxView::Drop() { model_->Drop(); }

void TreeBoxView::Fill() {
  model_->Fill();
  open_.assign(static_cast<std::size_t>(tree_.Nodes().Count()), 0);
  foldings_ = tree_.Foldings() - 1;
}

void TreeBoxView::Compare() {
  ShowFoldings();
  ItemView::Compare();
}

void TreeBoxView::ShowFoldings() {
  if (foldings_ == tree_.Foldings()) return;
  foldings_ = tree_.Foldings();
  auto* tree = static_cast<Tree*>(native_);
  bool later = false;
  for (std::size_t i = 0; i < open_.size(); ++i) {
    const int node = static_cast<int>(i);
    const bool expanded = tree_.Nodes().IsOpen(node) && tree_.Nodes().ChildCount(node) > 0;
    if ((open_[i] != 0) == expanded) continue;
    if (!later) tree->LayOutLater();
    later = true;
    native_->setExpanded(model_->IndexOf(node), expanded);
  }
}

QModelIndex TreeBoxView::Selected() { return model_->IndexOf(tree_.SelectedItem()); }

}  // namespace dossierkit::qt
