#include "tests/support/qt_user.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QListView>
#include <QScrollArea>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>
#include <stdexcept>

#include "platform/environment/text.h"
#include "platform/toolkit/controls/tree_view.h"
#include "platform/toolkit/controls/user_control.h"
#include "tests/support/window_test.h"

namespace dossierkit::tests {
namespace {

Qt::KeyboardModifiers ModifiersOf(int shift) {
  Qt::KeyboardModifiers modifiers;
  if (shift & toolkit::kShift) modifiers |= Qt::ShiftModifier;
  if (shift & toolkit::kCtrl) modifiers |= Qt::ControlModifier;
  if (shift & toolkit::kAlt) modifiers |= Qt::AltModifier;
  return modifiers;
}

Qt::Key KeyOf(int key) {
  switch (key) {
    case toolkit::kKeyBack: return Qt::Key_Backspace;
    case toolkit::kKeyTab: return Qt::Key_Tab;
    case toolkit::kKeyReturn: return Qt::Key_Return;
    case toolkit::kKeyEscape: return Qt::Key_Escape;
    case toolkit::kKeyPageUp: return Qt::Key_PageUp;
    case toolkit::kKeyPageDown: return Qt::Key_PageDown;
    case toolkit::kKeyEnd: return Qt::Key_End;
    case toolkit::kKeyHome: return Qt::Key_Home;
    case toolkit::kKeyLeft: return Qt::Key_Left;
    case toolkit::kKeyUp: return Qt::Key_Up;
    case toolkit::kKeyRight: return Qt::Key_Right;
    case toolkit::kKeyDown: return Qt::Key_Down;
    case toolkit::kKeyInsert: return Qt::Key_Insert;
    case toolkit::kKeyDelete: return Qt::Key_Delete;
    case toolkit::kKeyF4: return Qt::Key_F4;
    case 188: return Qt::Key_Comma;
    case 222: return Qt::Key_Apostrophe;
    case 190: return Qt::Key_Period;
    default: return static_cast<Qt::Key>(key);
  }
}

// The native widget that has the focus, or else the window.
QWidget& Target(QWidget& window) {
  QWidget* focus = window.focusWidget();
  return focus ? *focus : window;
}

// Brings a widget into sight and gives its place in it that is clicked.
QPoint Reveal(QWidget& widget) {
  for (QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&widget);
  }
  return {std::min(10, widget.width() / 2), std::min(10, widget.height() / 2)};
}

// Scrolls to an item and gives its place; throws std::logic_error where it cannot be seen.
QRect Reveal(QAbstractItemView& view, const QModelIndex& index) {
  QCoreApplication::processEvents();  // rows that were added are shown once their event has ended
  view.scrollTo(index);
  const QRect place = view.visualRect(index);
  if (!index.isValid() || place.isEmpty()) throw std::logic_error("the item is not in sight");
  return place;
}

}  // namespace

toolkit::Form& QtUser::Window() {
  toolkit::Form* form = desktop_.TopmostForm();
  if (!form) throw std::logic_error("no window is open");
  return *form;
}

std::shared_ptr<toolkit::Control> QtUser::Find(const std::string& name) {
  for (const auto& control : Window().Controls()) {
    if (control->Name() == name) return control;
    if (const auto* page = dynamic_cast<const toolkit::UserControl*>(control.get())) {
      if (auto found = page->Controls().Find(name)) return found;
    }
  }
  throw std::logic_error("no control " + name);
}

QWidget& QtUser::NativeWindow() {
  const QString name = QString::fromStdString(Window().Name());
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->objectName() == name) return *window;
  }
  throw std::logic_error("the window is not on the screen");
}

QWidget& QtUser::Native(const std::string& name) {
  for (QWidget* widget : NativeWindow().findChildren<QWidget*>(QString::fromStdString(name))) {
    if (widget->isVisible()) return *widget;
  }
  throw std::logic_error("no widget " + name);
}

void QtUser::Click(const std::string& name, int button) {
  QWidget& widget = Native(name);
  const auto native = button == toolkit::kLeftButton    ? Qt::LeftButton
                      : button == toolkit::kRightButton ? Qt::RightButton
                                                        : Qt::MiddleButton;
  QTest::mouseClick(&widget, native, {}, Reveal(widget));
}

void QtUser::DoubleClick(const std::string& name) {
  QWidget* widget = &Native(name);
  QPoint place = Reveal(*widget);
  // In a list or a tree the selected item.
  if (auto* items = qobject_cast<QAbstractItemView*>(widget); items && items->currentIndex().isValid()) {
    place = Reveal(*items, items->currentIndex()).center();
    widget = items->viewport();
  }
  QTest::mouseClick(widget, Qt::LeftButton, {}, place);
  QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
}

void QtUser::ClickToolbar(const std::string& key) { Click(key); }

void QtUser::ClickMenu(int item) {
  QWidget& menu = Native("VMenu1");
  auto* list = qobject_cast<QListView*>(&menu);
  if (!list) list = menu.findChild<QListView*>();
  const QModelIndex index = list->model()->index(item - 1, 0);
  list->scrollTo(index);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
}

void QtUser::ClickRow(int row) {
  QWidget& grid = Native("DGItems");
  auto* table = qobject_cast<QTableView*>(&grid);
  if (!table) table = grid.findChild<QTableView*>();
  const QModelIndex index = table->model()->index(row - 1, 0);
  table->scrollTo(index);
  QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(index).center());
}

void QtUser::ClickListRow(const std::string& name, int row) {
  auto& list = dynamic_cast<QListView&>(Native(name));
  QCoreApplication::processEvents();
  const QRect place = Reveal(list, list.model()->index(row, 0));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.center());
}

QTreeView& QtUser::TreeOf(const std::string& name) { return dynamic_cast<QTreeView&>(Native(name)); }

QModelIndex QtUser::NodeOf(const std::string& name, const std::string& key) {
  QTreeView& tree = TreeOf(name);
  QCoreApplication::processEvents();
  auto& nodes = dynamic_cast<toolkit::TreeView&>(*Find(name)).Nodes();
  std::vector<int> rows;
  for (int node = nodes.Find(key).Index(); node != toolkit::kNoNode; node = nodes.Parent(node))
    rows.push_back(nodes.Row(node));
  QModelIndex index;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) index = tree.model()->index(*row, 0, index);
  return index;
}

void QtUser::ClickNode(const std::string& name, const std::string& key) {
  QTreeView& tree = TreeOf(name);
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, Reveal(tree, NodeOf(name, key)).center());
}

void QtUser::FoldNode(const std::string& name, const std::string& key) {
  QTreeView& tree = TreeOf(name);
  const QRect place = Reveal(tree, NodeOf(name, key));
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                    {place.left() - tree.indentation() / 2, place.center().y()});
}

void QtUser::SelectTab(const std::string& name, int tab) {
  auto& bar = dynamic_cast<QTabBar&>(Native(name + "_Tabs"));
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(tab).center());
}

void QtUser::Type(const std::string& text) {
  for (const std::string& character : environment::Characters(text)) {
    if (character.size() == 1) {
      QTest::keyClick(&Target(NativeWindow()), character[0]);
    } else {
      QInputMethodEvent commit;
      commit.setCommitString(QString::fromStdString(character));
      QApplication::sendEvent(&Target(NativeWindow()), &commit);
    }
  }
}

void QtUser::Press(int key, int shift) {
  QTest::keyClick(&Target(NativeWindow()), KeyOf(key), ModifiersOf(shift));
}

void QtUser::Tab() { QTest::keyClick(&Target(NativeWindow()), Qt::Key_Tab); }

void QtUser::BackTab() { QTest::keyClick(&Target(NativeWindow()), Qt::Key_Backtab, Qt::ShiftModifier); }

void QtUser::Paste(const std::string& text) {
  QApplication::clipboard()->setText(QString::fromStdString(text));
  QTest::keyClick(&Target(NativeWindow()), Qt::Key_V, Qt::ControlModifier);
}

void QtUser::Close() { NativeWindow().close(); }

}  // namespace dossierkit::tests
