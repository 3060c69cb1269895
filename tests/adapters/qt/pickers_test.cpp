#include <QListView>
#include <QTabBar>
#include <QTreeView>

#include "tests/adapters/qt/stage.h"
#include "tests/platform/toolkit/picker_form.h"

namespace dossierkit::qt {
namespace {

using toolkit::Relation;

class QtPickers : public Stage {
 protected:
  void Open(const std::function<void()>& scene) {
    Play(*picker, [&] {
      picker->FillTree();
      picker->FillList(40);
      Settle();
      scene();
    });
  }
  // As Open, with the second tab in front.
  void OpenList(const std::function<void()>& scene) {
    Open([&] {
      picker->strip->SetTab(1);
      scene();
    });
  }
  static void Settle() { QCoreApplication::processEvents(); }

  QTreeView* Tree() { return Native<QTreeView>("tree"); }
  QListView* List() { return Native<QListView>("list"); }
  QTabBar* Tabs() { return Native<QTabBar>("Tab1_Tabs"); }
  toolkit::Node Of(const char* key) { return picker->tree->Nodes().Find(key); }

  // The native item of that text, if it is in sight; then where it stands.
  QModelIndex Item(const char* text) {
    const auto found =
        Tree()->model()->match(Tree()->model()->index(0, 0, {}), Qt::DisplayRole, QString::fromUtf8(text), 1,
                               Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.first();
  }
  QRect PlaceOf(const char* text) { return Tree()->visualRect(Item(text)); }
  void ClickNode(const char* text) {
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOf(text).center());
  }
  void DoubleClickNode(const char* text) {
    ClickNode(text);
    QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOf(text).center());
  }
  void ClickMark(const char* text) {
    const QRect place = PlaceOf(text);
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      {place.left() - Tree()->indentation() / 2, place.center().y()});
  }
  std::string CurrentNode() { return Text(Tree()->currentIndex().data().toString()); }
  QPoint PlaceOfRow(int row) { return List()->visualRect(List()->model()->index(row, 0)).center(); }
  void ClickRow(int row) {
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfRow(row));
  }
  void ClickTab(int tab) {
    QTest::mouseClick(Tabs(), Qt::LeftButton, Qt::NoModifier, Tabs()->tabRect(tab).center());
  }

  std::shared_ptr<toolkit::PickerForm> picker = std::make_shared<toolkit::PickerForm>(desktop);
};

// --- tree ----------------------------------------------------------------------------------------

TEST_F(QtPickers, ATreeShowsItsNodes) {
  Open([&] {
    const auto* model = Tree()->model();
    ASSERT_EQ(model->rowCount(), 2);
    const QModelIndex first = model->index(0, 0);
    EXPECT_EQ(Text(first.data().toString()), "高等教育");
    ASSERT_EQ(model->rowCount(first), 2);
    const QModelIndex inner = model->index(0, 0, first);
    EXPECT_EQ(Text(inner.data().toString()), "研究生");
    EXPECT_EQ(model->parent(inner), first);
    EXPECT_EQ(Text(model->index(0, 0, inner).data().toString()), "博士");
    EXPECT_EQ(model->rowCount(model->index(1, 0)), 0);
    EXPECT_FALSE(Tree()->isExpanded(first));
    EXPECT_FALSE(Tree()->currentIndex().isValid());
    EXPECT_TRUE(Tree()->uniformRowHeights());
    EXPECT_EQ(Text(Tree()->accessibleName()), "代码树");
  });
}

TEST_F(QtPickers, NodesThatComeLaterAndChangesAreShown) {
  Open([&] {
    Of("G1").SetExpanded(true);
    picker->tree->Nodes().Add(Of("G2").Index(), Relation::kChild, "G21", "高中");
    Of("G2").SetText("中等");
    Of("G2").SetForeColor(0x0000FF);
    Settle();
    EXPECT_EQ(Tree()->model()->rowCount(Item("中等")), 1);
    EXPECT_TRUE(Tree()->isExpanded(Item("高等教育")));
    EXPECT_EQ(Item("中等").data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    picker->tree->Nodes().Clear();
    EXPECT_EQ(Tree()->model()->rowCount(), 0);
    Tree()->grab();
    picker->tree->Nodes().Add("G9", "其他");
    Settle();
    EXPECT_EQ(Tree()->model()->rowCount(), 1);
  });
}

TEST_F(QtPickers, TheProgramsSelectionAndFoldingAreShown) {
  Open([&] {
    picker->tree->SetSelectedItem(Of("G111").Index());
    Settle();
    EXPECT_EQ(CurrentNode(), "博士");
    EXPECT_TRUE(Tree()->selectionModel()->isSelected(Item("博士")));
    EXPECT_TRUE(Tree()->isExpanded(Item("研究生")));
    Of("G1").SetExpanded(false);
    Settle();
    EXPECT_FALSE(Tree()->isExpanded(Item("高等教育")));
    EXPECT_EQ(CurrentNode(), "高等教育");
    picker->tree->SetSelectedItem(toolkit::kNoNode);
    EXPECT_FALSE(Tree()->selectionModel()->hasSelection());
  });
}

TEST_F(QtPickers, TakingTheFocusSelectsTheFirstNode) {
  Open([&] {
    picker->tree->SetFocus();
    EXPECT_EQ(CurrentNode(), "高等教育");
    EXPECT_TRUE(Tree()->hasFocus());
  });
}

TEST_F(QtPickers, AClickSelectsANode) {
  Open([&] {
    ClickNode("中等教育");
    EXPECT_EQ(picker->Selected(), "G2");
    EXPECT_EQ(CurrentNode(), "中等教育");
    EXPECT_TRUE(picker->tree->HasFocus());
    QTest::mouseClick(Tree()->viewport(), Qt::RightButton, Qt::NoModifier, PlaceOf("高等教育").center());
    EXPECT_EQ(picker->Selected(), "G2");
  });
}

TEST_F(QtPickers, AClickOnTheMarkFoldsAndSelectsNothing) {
  Open([&] {
    ClickNode("中等教育");
    ClickMark("高等教育");
    EXPECT_TRUE(Of("G1").Expanded());
    EXPECT_TRUE(Tree()->isExpanded(Item("高等教育")));
    EXPECT_EQ(picker->Selected(), "G2");
    ClickMark("高等教育");
    EXPECT_FALSE(Of("G1").Expanded());
    EXPECT_FALSE(Tree()->isExpanded(Item("高等教育")));
    ClickMark("中等教育");
    EXPECT_FALSE(Of("G2").Expanded());
  });
}

TEST_F(QtPickers, ARefusedFocusSelectsAndFoldsNothing) {
  Open([&] {
    picker->button->SetFocus();
    On(picker->button->Validate, [](bool& cancel) { cancel = true; });
    ClickNode("中等教育");
    ClickMark("高等教育");
    DoubleClickNode("高等教育");
    Tree()->setCurrentIndex(Item("中等教育"));  // as accessibility does
    Tree()->expand(Item("高等教育"));
    Settle();
    EXPECT_EQ(picker->tree->SelectedItem(), -1);
    EXPECT_FALSE(Tree()->selectionModel()->hasSelection());
    EXPECT_FALSE(Of("G1").Expanded());
    EXPECT_FALSE(Tree()->isExpanded(Item("高等教育")));
    EXPECT_TRUE(Native("cmdOK")->hasFocus());
  });
}

TEST_F(QtPickers, ASelectionOrFoldingFromOutsideReachesTheModel) {
  Open([&] {
    Tree()->expand(Item("高等教育"));
    EXPECT_TRUE(Of("G1").Expanded());
    Tree()->setCurrentIndex(Item("本科"));
    EXPECT_EQ(picker->Selected(), "G12");
    EXPECT_TRUE(picker->tree->HasFocus());
    Tree()->collapse(Item("高等教育"));
    EXPECT_EQ(picker->Selected(), "G1");
    EXPECT_EQ(CurrentNode(), "高等教育");
  });
}

TEST_F(QtPickers, KeysMoveInATree) {
  Open([&] {
    picker->tree->SetFocus();
    Press(Tree(), Qt::Key_Down);
    EXPECT_EQ(CurrentNode(), "中等教育");
    Press(Tree(), Qt::Key_Home);
    Press(Tree(), Qt::Key_Right);
    EXPECT_TRUE(Tree()->isExpanded(Item("高等教育")));
    EXPECT_EQ(CurrentNode(), "高等教育");
    Press(Tree(), Qt::Key_Right);
    EXPECT_EQ(CurrentNode(), "研究生");
    Type(Tree(), "+");
    EXPECT_TRUE(Of("G11").Expanded());
    Press(Tree(), Qt::Key_PageDown);
    EXPECT_EQ(CurrentNode(), "中等教育");
    Press(Tree(), Qt::Key_Up);
    EXPECT_EQ(CurrentNode(), "本科");
    Press(Tree(), Qt::Key_Left);
    EXPECT_EQ(CurrentNode(), "高等教育");
    Type(Tree(), "-");
    EXPECT_FALSE(Of("G1").Expanded());
    Press(Tree(), Qt::Key_End);
    EXPECT_EQ(picker->Selected(), "G2");
    Press(Tree(), Qt::Key_PageUp);
    EXPECT_EQ(picker->Selected(), "G1");
  });
}

TEST_F(QtPickers, EnterReachesKeyPressFirst) {
  std::u32string keys;
  Open([&] {
    On(picker->tree->KeyPress, [&](char32_t& key) { keys += key; });
    On(picker->list->KeyPress, [&](char32_t& key) { keys += key; });
    picker->tree->SetFocus();
    Press(Tree(), Qt::Key_Return);
    Type(Tree(), "a");
    picker->strip->SetTab(1);
    picker->list->SetFocus();
    Press(List(), Qt::Key_Return);
  });
  EXPECT_EQ(keys, U"\ra\r");
}

TEST_F(QtPickers, ADoubleClickIsReportedThenFolds) {
  std::vector<std::string> clicked;
  Open([&] {
    On(picker->tree->DblClick, [&] { clicked.push_back(picker->Selected()); });
    DoubleClickNode("高等教育");
    EXPECT_TRUE(Of("G1").Expanded());
    EXPECT_TRUE(Tree()->isExpanded(Item("高等教育")));
    DoubleClickNode("本科");
    QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, {50, 340});
  });
  EXPECT_EQ(clicked, (std::vector<std::string>{"G1", "G12"}));
}

TEST_F(QtPickers, AWindowMayCloseInADoubleClickOrAKey) {
  Open([&] {
    On(picker->tree->DblClick, [&] { picker->Unload(); });
    DoubleClickNode("高等教育");
    EXPECT_FALSE(picker->Loaded());
  });
  Open([&] {
    On(picker->tree->KeyPress, [&](char32_t&) { picker->Unload(); });
    picker->tree->SetFocus();
    Press(Tree(), Qt::Key_Return);
    EXPECT_FALSE(picker->Loaded());
  });
}

TEST_F(QtPickers, AHundredThousandNodesAndRowsAreShownAtOnce) {
  Open([&] {
    const double begin = ProcessorSeconds();
    auto& nodes = picker->tree->Nodes();
    for (int i = 0; i < 100000; ++i) {
      nodes.Add(i < 100 ? toolkit::kNoNode : 5 + i / 100, Relation::kChild, "N" + std::to_string(i), "节点");
      picker->list->AddItem("行");
    }
    for (int i = 0; i < nodes.Count(); ++i) nodes.At(i).SetExpanded(true);
    Settle();
    picker->tree->SetSelectedItem(nodes.Count() - 1);
    Settle();
    Tree()->grab();
    EXPECT_EQ(CurrentNode(), "节点");
    picker->strip->SetTab(1);
    picker->list->SetListIndex(100039);
    List()->grab();
    EXPECT_EQ(List()->currentIndex().row(), 100039);
    EXPECT_LT(ProcessorSeconds() - begin, 10);
  });
}

// --- list ----------------------------------------------------------------------------------------

TEST_F(QtPickers, AListShowsItsRowsAndTheProgramsSelection) {
  OpenList([&] {
    EXPECT_EQ(List()->model()->rowCount(), 40);
    EXPECT_EQ(Text(List()->model()->index(39, 0).data().toString()), "第39行");
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
    EXPECT_EQ(Text(List()->accessibleName()), "代码列表");
    picker->list->SetListIndex(39);
    EXPECT_TRUE(List()->selectionModel()->isSelected(List()->model()->index(39, 0)));
    EXPECT_TRUE(List()->viewport()->rect().contains(PlaceOfRow(39)));
    picker->list->SetListIndex(-1);
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
    picker->list->Clear();
    picker->list->AddItem("新");
    picker->list->SetListIndex(0);
    Settle();
    EXPECT_EQ(List()->model()->rowCount(), 1);
    EXPECT_EQ(List()->currentIndex().row(), 0);
  });
}

TEST_F(QtPickers, AListIsClickedAndMovedInByKeys) {
  OpenList([&] {
    ClickRow(3);
    EXPECT_EQ(picker->list->ListIndex(), 3);
    EXPECT_TRUE(List()->hasFocus());
    Press(List(), Qt::Key_Down);
    Press(List(), Qt::Key_Right);
    Press(List(), Qt::Key_Up);
    EXPECT_EQ(List()->currentIndex().row(), 4);
    Press(List(), Qt::Key_PageDown);
    EXPECT_GT(picker->list->ListIndex(), 10);
    Press(List(), Qt::Key_End);
    EXPECT_EQ(picker->list->ListIndex(), 39);
    Press(List(), Qt::Key_Home);
    EXPECT_EQ(List()->currentIndex().row(), 0);
    List()->setCurrentIndex(List()->model()->index(5, 0));  // as accessibility does
    EXPECT_EQ(picker->list->ListIndex(), 5);
  });
}

TEST_F(QtPickers, TheRowThatKeysChooseComesIntoSight) {
  OpenList([&] {
    ClickRow(0);
    Press(List(), Qt::Key_End);
    EXPECT_TRUE(List()->viewport()->rect().contains(PlaceOfRow(39)));
    Press(List(), Qt::Key_Home);
    EXPECT_TRUE(List()->viewport()->rect().contains(PlaceOfRow(0)));
  });
}

TEST_F(QtPickers, DraggingOverAListChoosesNothing) {
  OpenList([&] {
    QTest::mousePress(List()->viewport(), Qt::LeftButton, {}, PlaceOfRow(1));
    for (int row = 2; row < 5; ++row) {
      QMouseEvent move(QEvent::MouseMove, PlaceOfRow(row), List()->viewport()->mapToGlobal(PlaceOfRow(row)),
                       Qt::NoButton, Qt::LeftButton, {});
      QCoreApplication::sendEvent(List()->viewport(), &move);
    }
    QTest::mouseRelease(List()->viewport(), Qt::LeftButton, {}, PlaceOfRow(4));
    EXPECT_EQ(picker->list->ListIndex(), 1);
    EXPECT_EQ(List()->currentIndex().row(), 1);
  });
}

TEST_F(QtPickers, TabsAreAsWideAsTheirTexts) {
  Open([&] { EXPECT_LT(Tabs()->tabRect(1).right(), Tabs()->width() - 40); });
}

TEST_F(QtPickers, ARefusedFocusSelectsNoRow) {
  OpenList([&] {
    picker->box->SetFocus();
    On(picker->box->Validate, [](bool& cancel) { cancel = true; });
    ClickRow(3);
    List()->setCurrentIndex(List()->model()->index(5, 0));
    EXPECT_EQ(picker->list->ListIndex(), -1);
    EXPECT_FALSE(List()->selectionModel()->hasSelection());
    EXPECT_TRUE(Native("txtDm")->hasFocus());
  });
}

TEST_F(QtPickers, AListTellsTheRowUnderThePointerAndItsTip) {
  OpenList([&] {
    std::vector<int> rows;
    On(picker->list->MouseMove, [&](int button, int, int x, int y) {
      EXPECT_EQ(button, 0);
      rows.push_back(picker->list->RowAt(x, y));
      picker->list->SetToolTipText("拼音输入代码： gd");
    });
    QTest::mouseMove(List()->viewport(), PlaceOfRow(0));
    QTest::mouseMove(List()->viewport(), PlaceOfRow(2));
    ASSERT_GE(rows.size(), 2U);
    EXPECT_EQ(rows.back(), 2);
    EXPECT_EQ(Text(List()->model()->index(2, 0).data(Qt::ToolTipRole).toString()), "拼音输入代码： gd");
    // To the pixel, also where the list has a border.
    const QRect second = List()->visualRect(List()->model()->index(1, 0));
    const int edge = List()->viewport()->mapTo(List(), second.topLeft()).y() * 15;
    EXPECT_EQ(picker->list->RowAt(150, edge), 1);
    EXPECT_EQ(picker->list->RowAt(150, edge - 15), 0);
    picker->list->SetListIndex(20);
    List()->scrollTo(List()->model()->index(39, 0));
    const QPoint at = List()->viewport()->mapTo(List(), PlaceOfRow(39));
    EXPECT_EQ(picker->list->RowAt(at.x() * 15, at.y() * 15), 39);
    EXPECT_EQ(picker->list->RowAt(150, -150), -1);
    picker->list->Clear();
    EXPECT_EQ(picker->list->RowAt(150, 150), -1);
  });
}

TEST_F(QtPickers, ADoubleClickOnARowIsReported) {
  std::vector<int> rows;
  OpenList([&] {
    On(picker->list->DblClick, [&] { rows.push_back(picker->list->ListIndex()); });
    ClickRow(2);
    QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOfRow(2));
  });
  EXPECT_EQ(rows, std::vector<int>{2});
}

// --- tabs ----------------------------------------------------------------------------------------

TEST_F(QtPickers, OnlyTheControlsOfTheTabInFrontAreSeen) {
  Open([&] {
    EXPECT_EQ(Tabs()->count(), 2);
    EXPECT_EQ(Text(Tabs()->tabText(1)), "录入查询");
    EXPECT_EQ(Text(Tabs()->accessibleName()), "查询方式");
    EXPECT_TRUE(Tree()->isVisible());
    EXPECT_FALSE(List()->isVisible());
    EXPECT_FALSE(Native("txtDm")->isVisible());
    picker->strip->SetTab(1);
    EXPECT_EQ(Tabs()->currentIndex(), 1);
    EXPECT_FALSE(Tree()->isVisible());
    EXPECT_TRUE(List()->isVisible());
    picker->list->SetVisible(false);
    picker->strip->SetTab(0);
    picker->strip->SetTab(1);
    EXPECT_FALSE(List()->isVisible());
    picker->tree->SetVisible(false);
    picker->tree->SetVisible(true);
    EXPECT_FALSE(Tree()->isVisible());
    picker->strip->SetTabCaption(0, "树&表");
    EXPECT_EQ(Text(Tabs()->tabText(0)), "树&&表");
  });
}

TEST_F(QtPickers, AClickOrAnArrowTurnsTheTab) {
  Open([&] {
    ClickTab(1);
    EXPECT_EQ(picker->strip->Tab(), 1);
    EXPECT_TRUE(picker->strip->HasFocus());
    EXPECT_TRUE(Tabs()->hasFocus());
    Press(Tabs(), Qt::Key_Left);
    EXPECT_EQ(picker->strip->Tab(), 0);
    Press(Tabs(), Qt::Key_Tab);
    EXPECT_TRUE(Tree()->hasFocus());
    Press(Tree(), Qt::Key_Tab);
    EXPECT_TRUE(Native("cmdOK")->hasFocus());
  });
}

TEST_F(QtPickers, ARefusedFocusTurnsNoTab) {
  Open([&] {
    picker->button->SetFocus();
    On(picker->button->Validate, [](bool& cancel) { cancel = true; });
    ClickTab(1);
    Tabs()->setCurrentIndex(1);  // as accessibility does
    EXPECT_EQ(picker->strip->Tab(), 0);
    EXPECT_EQ(Tabs()->currentIndex(), 0);
    EXPECT_TRUE(Tree()->isVisible());
    EXPECT_TRUE(Native("cmdOK")->hasFocus());
  });
}

TEST_F(QtPickers, KeysGoToTheFocusOnAHiddenTab) {
  std::u32string keys;
  Open([&] {
    On(picker->tree->KeyPress, [&](char32_t& key) { keys += key; });
    picker->strip->SetTab(1);
    picker->tree->SetFocus();
    QWidget* window = QApplication::activeWindow();
    EXPECT_FALSE(Tree()->hasFocus());
    // Keys come to the window where no widget of it has the native focus.
    ASSERT_EQ(window->focusWidget(), nullptr);
    Press(window, Qt::Key_Return);
    Press(window, Qt::Key_Down);
    EXPECT_EQ(picker->Selected(), "G2");
    EXPECT_TRUE(picker->tree->HasFocus());
    Press(window, Qt::Key_Tab);
    EXPECT_TRUE(Native("txtDm")->hasFocus());
  });
  EXPECT_EQ(keys, U"\r");
}

TEST_F(QtPickers, TheFocusOfATabThatGoesBehindIsTakenUpAgainInFront) {
  Open([&] {
    picker->tree->SetFocus();
    picker->strip->SetTab(1);
    Settle();
    EXPECT_TRUE(picker->tree->HasFocus());
    EXPECT_FALSE(Tree()->hasFocus());
    picker->strip->SetTab(0);
    EXPECT_TRUE(Tree()->hasFocus());
  });
}

}  // namespace
}  // namespace dossierkit::qt
