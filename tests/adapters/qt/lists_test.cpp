#include <QAccessible>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QListView>
#include <QScrollBar>
#include <QTableView>

#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtLists : public Stage {
 protected:
  QTableView* Table() { return Native<QTableView>("DGItems"); }
  QListView* Menu() { return Native<QListView>("VMenu1_Items"); }
  void ClickRow(QAbstractItemView* view, int row, int column = 0) {
    const QRect place = view->visualRect(view->model()->index(row, column));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
  }
};

TEST_F(QtLists, AGridShowsHeadingsAndWidths) {
  Play([&] {
    EXPECT_EQ(Text(Table()->model()->headerData(1, Qt::Horizontal).toString()), "就读院校");
    EXPECT_TRUE(Table()->isColumnHidden(0));
    EXPECT_EQ(Table()->columnWidth(1), 300);
    EXPECT_EQ(Text(Table()->model()->index(2, 1).data().toString()), "清华大学3");
    EXPECT_EQ(Table()->currentIndex().row(), 0);
    EXPECT_TRUE(Table()->horizontalHeader()->font().families().contains("华文细黑"));
  });
}

TEST_F(QtLists, AClickMovesTheCursorAlsoOnTheCurrentRow) {
  int moves = 0;
  Play([&] {
    On(form->rows->WillMove, [&](std::int32_t, std::int32_t&, ado::Recordset&) { ++moves; });
    ClickRow(Table(), 2, 1);
    EXPECT_EQ(form->page->grid->Row(), 3);
    EXPECT_EQ(Table()->currentIndex().row(), 2);
    EXPECT_TRUE(form->page->grid->HasFocus());
    ClickRow(Table(), 2, 1);
    EXPECT_EQ(moves, 2);
    Press(Table(), Qt::Key_Down);
    Press(Table(), Qt::Key_PageDown);
    Press(Table(), Qt::Key_End);
    EXPECT_EQ(form->page->grid->Row(), 25);
    Press(Table(), Qt::Key_Home);
    EXPECT_EQ(form->page->grid->Row(), 1);
    form->rows->MoveNext();
    EXPECT_EQ(Table()->currentIndex().row(), 1);
    EXPECT_TRUE(Table()->selectionModel()->isRowSelected(1));
  });
}

TEST_F(QtLists, ACancelledMovePutsTheSelectionBack) {
  Play([&] {
    On(form->rows->WillMove,
       [&](std::int32_t, std::int32_t& status, ado::Recordset&) { status = ado::kStatusCancel; });
    ClickRow(Table(), 4, 1);
    EXPECT_EQ(Table()->currentIndex().row(), 0);
    EXPECT_TRUE(Table()->selectionModel()->isRowSelected(0));
    EXPECT_FALSE(Table()->selectionModel()->isRowSelected(4));
    Table()->selectRow(3);  // as accessibility does
    EXPECT_EQ(Table()->currentIndex().row(), 0);
    EXPECT_TRUE(Table()->selectionModel()->isRowSelected(0));
  });
}

// Selecting a row beside the chosen one adds to it where a list may have several.
TEST_F(QtLists, ACancelledMoveOfAScreenReaderLeavesOneRowSelected) {
  Play([&] {
    On(form->rows->WillMove,
       [&](std::int32_t, std::int32_t& status, ado::Recordset&) { status = ado::kStatusCancel; });
    QAccessible::queryAccessibleInterface(Table())->tableInterface()->selectRow(1);
    EXPECT_EQ(form->page->grid->Row(), 1);
    const auto rows = Table()->selectionModel()->selectedRows(1);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].row(), 0);
  });
}

// Its texts would be Qt's own.
TEST_F(QtLists, NoPartOfAListHasAContextMenu) {
  Play([&] {
    int menus = 0;
    for (QAbstractScrollArea* list :
         {static_cast<QAbstractScrollArea*>(Table()), static_cast<QAbstractScrollArea*>(Menu())}) {
      for (QWidget* part :
           {static_cast<QWidget*>(list), list->viewport(), static_cast<QWidget*>(list->verticalScrollBar()),
            static_cast<QWidget*>(list->horizontalScrollBar())}) {
        QTimer::singleShot(0, qApp, [&] {
          if (QWidget* menu = QApplication::activePopupWidget()) {
            ++menus;
            menu->close();
          }
        });
        QContextMenuEvent asked(QContextMenuEvent::Mouse, {5, 5}, part->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(part, &asked);
        QCoreApplication::processEvents();
      }
    }
    EXPECT_EQ(menus, 0);
  });
}

TEST_F(QtLists, AMoveMayDropThePage) {
  Play([&] {
    On(form->rows->MoveComplete, [&](std::int32_t, std::int32_t&, ado::Recordset&) { form->NewPage(); });
    ClickRow(Table(), 2, 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Table()->currentIndex().row(), 2);
  });
}

TEST_F(QtLists, AColumnResizedByTheUserIsReported) {
  std::vector<float> widths;
  Play([&] {
    auto& grid = *form->page->grid;
    On(grid.ColResize, [&] { widths.push_back(grid.ColumnWidth(1)); });
    ClickRow(Table(), 20, 1);
    const int scrolled = Table()->verticalScrollBar()->value();
    Table()->horizontalHeader()->resizeSection(1, 120);
    EXPECT_EQ(Table()->columnWidth(1), 120);
    EXPECT_EQ(Table()->verticalScrollBar()->value(), scrolled) << "the rows stay as they are";
    grid.SetColumnWidth(1, 3000);
    EXPECT_EQ(Table()->columnWidth(1), 200);
    // Shown anew it has the user's width, as everything else of the model.
    Table()->horizontalHeader()->resizeSection(2, 90);
    grid.ShowAspect(toolkit::Aspect::kContent);
    EXPECT_EQ(Table()->columnWidth(2), 90);
  });
  EXPECT_EQ(widths, (std::vector<float>{1800, 3000}));
}

TEST_F(QtLists, AColumnThatTheGridCannotResizeGoesBack) {
  Play([&] {
    auto& grid = *form->page->grid;
    grid.SetColumnWidth(1, 3000);
    form->page->SetEnabled(false);
    Table()->horizontalHeader()->resizeSection(1, 120);
    EXPECT_EQ(grid.ColumnWidth(1), 3000.0F);
    EXPECT_EQ(Table()->columnWidth(1), 200);
  });
}

TEST_F(QtLists, ANarrowColumnIsAsNarrowAsItsWidthSays) {
  Play([&] {
    form->page->grid->SetColumnWidth(1, 75);
    EXPECT_EQ(Table()->columnWidth(1), 5);
  });
}

TEST_F(QtLists, AChosenRowScrollsIntoSightAndNotSideways) {
  Play([&] {
    form->page->grid->SetColumnWidth(1, 30000);
    Click(Table()->viewport());
    QCoreApplication::processEvents();
    Table()->horizontalScrollBar()->setValue(700);
    ASSERT_EQ(Table()->horizontalScrollBar()->value(), 700);
    Press(Table(), Qt::Key_End);
    EXPECT_EQ(Table()->horizontalScrollBar()->value(), 700);
    EXPECT_GT(Table()->verticalScrollBar()->value(), 0);
  });
}

// Qt measures the columns by a timer: one frame would be painted with a bar that has nothing to scroll.
TEST_F(QtLists, NoScrollBarFlashesBelowColumnsThatFit) {
  Play([&] {
    auto& grid = *form->page->grid;
    const QScrollBar& bar = *Table()->horizontalScrollBar();
    grid.SetColumnWidth(1, 30000);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(bar.isVisible());
    grid.SetColumnWidth(1, 450);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(bar.isVisible());
  });
}

TEST_F(QtLists, AGridOfManyRowsShowsAtOnce) {
  form->row_count = 10000;
  Play([&] {
    EXPECT_EQ(Table()->model()->rowCount(), 10000);
    const double begin = ProcessorSeconds();
    Press(Table(), Qt::Key_End);
    Table()->grab();
    EXPECT_LT(ProcessorSeconds() - begin, 2);
  });
}

TEST_F(QtLists, AnEmptyGridSelectsNothing) {
  form->row_count = 0;
  Play([&] {
    EXPECT_FALSE(Table()->selectionModel()->hasSelection());
    Press(Table(), Qt::Key_Down);
    EXPECT_EQ(form->page->grid->Row(), 0);
  });
}

TEST_F(QtLists, AMenuItemIsClickedOrMarkedAndEntered) {
  std::vector<int> clicked;
  Play([&] {
    On(form->menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { clicked.push_back(item); });
    EXPECT_EQ(Menu()->currentIndex().row(), 1);
    ClickRow(Menu(), 3);
    EXPECT_TRUE(form->menu->HasFocus());
    EXPECT_TRUE(Menu()->hasFocus());
    form->menu->set_menuitemcur(4);
    Press(Menu(), Qt::Key_Down);
    Press(Menu(), Qt::Key_Down);
    EXPECT_EQ(form->menu->Marked(), 6);
    EXPECT_EQ(form->menu->menuitemcur(), 4);
    Press(Menu(), Qt::Key_Return);
    Press(Menu(), Qt::Key_End);
    EXPECT_EQ(form->menu->Marked(), 16);
  });
  EXPECT_EQ(clicked, (std::vector<int>{4, 6}));
}

TEST_F(QtLists, AMenuClickIsRefusedWithTheFocus) {
  int clicks = 0;
  Play([&] {
    On(form->page->name->Validate, [&](bool& cancel) { cancel = true; });
    On(form->menu->MenuItemClick, [&](std::int32_t&, std::int32_t&) { ++clicks; });
    ClickRow(Menu(), 3);
    EXPECT_TRUE(Native(*form->page->name)->hasFocus());
  });
  EXPECT_EQ(clicks, 0);
}

TEST_F(QtLists, AMenuClickArrivesOnceAfterACheckThatOpenedAMessage) {
  std::vector<int> clicked;
  Play([&] {
    On(form->page->name->Validate, [&](bool&) { desktop.MsgBox("请核对。"); });
    On(form->menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { clicked.push_back(item); });
    AnswerNext("OK");
    const QRect place = Menu()->visualRect(Menu()->model()->index(4, 0));
    QTest::mousePress(Menu()->viewport(), Qt::LeftButton, Qt::NoModifier, place.center());
  });
  EXPECT_EQ(clicked, std::vector<int>{5});
}

TEST_F(QtLists, AMenuItemIsClickedWhereItWasPressed) {
  std::vector<int> clicked;
  Play([&] {
    On(form->menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { clicked.push_back(item); });
    const auto place = [&](int row) { return Menu()->visualRect(Menu()->model()->index(row, 0)).center(); };
    QTest::mousePress(Menu()->viewport(), Qt::LeftButton, {}, place(3));
    QTest::mouseRelease(Menu()->viewport(), Qt::LeftButton, {}, place(5));
    QTest::mouseClick(Menu()->viewport(), Qt::RightButton, {}, place(4));
    EXPECT_TRUE(clicked.empty());
    EXPECT_EQ(Menu()->currentIndex().row(), 1);
  });
}

TEST_F(QtLists, AMenuIsNamedByItsHeadWhereNobodyNamesIt) {
  Play([&] {
    EXPECT_EQ(Text(Menu()->accessibleName()), "信息集");
    form->menu->set_menucaption("目录");
    EXPECT_EQ(Text(Menu()->accessibleName()), "目录");
    form->menu->SetAccessibleName("各项");
    form->menu->set_menucaption("菜单");
    EXPECT_EQ(Text(Menu()->accessibleName()), "各项");
  });
}

// The mark stands there already; what is bold follows.
TEST_F(QtLists, AMenuPaintsTheCurrentItemThatWasMarkedBefore) {
  Play([&] {
    form->menu->UserMark(4);
    QCoreApplication::processEvents();
    const QImage before = Menu()->grab().toImage();
    struct Paints : QObject {
      int count = 0;
      bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
      }
    } paints;
    Menu()->viewport()->installEventFilter(&paints);
    form->menu->set_menuitemcur(4);
    QCoreApplication::processEvents();
    EXPECT_GT(paints.count, 0);
    EXPECT_NE(Menu()->grab().toImage(), before);
  });
}

TEST_F(QtLists, DraggingOverAListChoosesNothing) {
  Play([&] {
    const auto place = [&](QAbstractItemView* list, int row) {
      return list->visualRect(list->model()->index(row, 1)).center();
    };
    QTest::mousePress(Table()->viewport(), Qt::LeftButton, {}, place(Table(), 1));
    for (int row = 2; row < 5; ++row) {
      QMouseEvent move(QEvent::MouseMove, place(Table(), row),
                       Table()->viewport()->mapToGlobal(place(Table(), row)), Qt::NoButton, Qt::LeftButton,
                       {});
      QCoreApplication::sendEvent(Table()->viewport(), &move);
    }
    QTest::mouseRelease(Table()->viewport(), Qt::LeftButton, {}, place(Table(), 4));
    EXPECT_EQ(form->page->grid->Row(), 2);
    EXPECT_EQ(Table()->currentIndex().row(), 1);
  });
}

TEST_F(QtLists, AMenuScrollsWhereItsItemsDoNotFit) {
  Play([&] {
    form->menu->set_menuitemsmax(40);
    EXPECT_EQ(Menu()->model()->rowCount(), 40);
    form->menu->set_menuitemcur(40);
    EXPECT_TRUE(Menu()->viewport()->rect().intersects(Menu()->visualRect(Menu()->model()->index(39, 0))));
  });
}

}  // namespace
}  // namespace dossierkit::qt
