// What every view set must do with lists, trees, grids, menus and tabs.
#include "tests/adapters/views/view_test.h"

namespace dossierkit::views {
namespace {

using toolkit::kKeyDown;
using toolkit::kKeyEnd;
using toolkit::kKeyHome;
using toolkit::kKeyLeft;
using toolkit::kKeyReturn;
using toolkit::kKeyRight;
using toolkit::kKeyUp;

using ViewLists = ViewTest;

TEST_F(ViewLists, AListChoosesByClickAndKeys) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(30);
    EXPECT_EQ(driver->Rows("list"), 30);
    EXPECT_EQ(driver->Row("list"), -1);
    user.ClickListRow("list", 3);
    EXPECT_EQ(driver->Row("list"), 3);
    EXPECT_EQ(driver->Focus(), "list");
    user.Press(kKeyDown);
    EXPECT_EQ(driver->Row("list"), 4);
    user.Press(kKeyEnd);
    EXPECT_EQ(driver->Row("list"), 29);
    user.Press(toolkit::kKeyPageUp);
    EXPECT_LT(driver->Row("list"), 28);
    EXPECT_EQ(driver->Row("list"), picker->list->ListIndex());
    user.Press(kKeyHome);
    user.Press(kKeyUp);
    EXPECT_EQ(driver->Row("list"), 0);
    picker->list->SetListIndex(7);
    EXPECT_EQ(driver->Row("list"), 7);
    picker->list->Clear();
    EXPECT_EQ(driver->Rows("list"), 0);
    EXPECT_EQ(driver->Row("list"), -1);
  });
}

TEST_F(ViewLists, AListThatIsFilledInAHandlerShowsItsRows) {
  Pick([&] {
    picker->strip->SetTab(1);
    On(picker->button->Click, [&] {
      picker->list->Clear();
      picker->FillList(5);
      picker->list->SetListIndex(4);
    });
    user.Click("cmdOK");
    EXPECT_EQ(driver->Rows("list"), 5);
    EXPECT_EQ(driver->Row("list"), 4);
    EXPECT_EQ(picker->list->ListIndex(), 4);
    user.Click("cmdOK");
    EXPECT_EQ(driver->Rows("list"), 5);
  });
}

TEST_F(ViewLists, AListDoubleClicksItsRow) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(5);
    int chosen = -1;
    On(picker->list->DblClick, [&] { chosen = picker->list->ListIndex(); });
    user.ClickListRow("list", 2);
    user.DoubleClick("list");
    EXPECT_EQ(chosen, 2);
  });
}

TEST_F(ViewLists, ARefusedCheckKeepsWhatAListATreeAndTabsShow) {
  Pick([&] {
    picker->FillTree();
    user.ClickNode("tree", "G2");
    picker->strip->SetTab(1);
    picker->FillList(5);
    user.ClickListRow("list", 1);
    user.Click("txtDm");
    Refuse(*picker->box);
    user.ClickListRow("list", 3);
    EXPECT_EQ(driver->Row("list"), 1);
    user.SelectTab("Tab1", 0);
    EXPECT_EQ(driver->Row("Tab1"), 1);
    picker->strip->SetTab(0);
    user.ClickNode("tree", "G1");
    EXPECT_EQ(driver->Node("tree"), "中等教育");
    user.FoldNode("tree", "G1");
    EXPECT_EQ(driver->Rows("tree"), 2);
    EXPECT_EQ(picker->ActiveControl()->Name(), "txtDm");
  });
}

TEST_F(ViewLists, ATreeFoldsAndChooses) {
  Pick([&] {
    picker->FillTree();
    EXPECT_EQ(driver->Rows("tree"), 2);
    user.FoldNode("tree", "G1");
    EXPECT_EQ(driver->Rows("tree"), 4);
    user.ClickNode("tree", "G12");
    EXPECT_EQ(driver->Node("tree"), "本科");
    user.Press(kKeyUp);
    EXPECT_EQ(driver->Node("tree"), "研究生");
    user.Press(kKeyRight);
    EXPECT_EQ(driver->Rows("tree"), 5);
    user.Press(kKeyRight);
    EXPECT_EQ(driver->Node("tree"), "博士");
    user.Press(kKeyLeft);
    user.Press(kKeyLeft);
    EXPECT_EQ(driver->Rows("tree"), 4);
    user.FoldNode("tree", "G1");
    EXPECT_EQ(driver->Node("tree"), "高等教育") << "closed above what was chosen";
    user.Type("+");
    EXPECT_EQ(driver->Rows("tree"), 4);
    user.Type("-");
    EXPECT_EQ(driver->Rows("tree"), 2);
    user.Press(kKeyEnd);
    EXPECT_EQ(driver->Node("tree"), "中等教育");
  });
}

TEST_F(ViewLists, ATreeShowsWhatTheProgramChoosesAndAdds) {
  Pick([&] {
    picker->FillTree();
    picker->tree->SetSelectedItem(picker->tree->Nodes().Find("G111").Index());
    EXPECT_EQ(driver->Node("tree"), "博士");
    EXPECT_EQ(driver->Rows("tree"), 5) << "all above is open";
    picker->tree->Nodes().Add("G3", "初等教育");
    EXPECT_EQ(driver->Rows("tree"), 6);
    EXPECT_EQ(driver->Node("tree"), "博士");
    picker->tree->Nodes().Clear();
    EXPECT_EQ(driver->Rows("tree"), 0);
    EXPECT_EQ(driver->Node("tree"), "");
  });
}

TEST_F(ViewLists, ATreeThatGetsTheFocusChoosesItsFirstNode) {
  Pick([&] {
    picker->FillTree();
    user.Click("cmdOK");
    EXPECT_EQ(driver->Node("tree"), "");
    picker->tree->SetFocus();
    EXPECT_EQ(driver->Node("tree"), "高等教育");
  });
}

TEST_F(ViewLists, TabsTurnByClickAndArrowAndHideWhatIsBehind) {
  Pick([&] {
    EXPECT_TRUE(driver->InSight("tree"));
    EXPECT_FALSE(driver->InSight("txtDm"));
    user.SelectTab("Tab1", 1);
    EXPECT_EQ(driver->Row("Tab1"), 1);
    EXPECT_FALSE(driver->InSight("tree"));
    EXPECT_TRUE(driver->InSight("txtDm"));
    EXPECT_EQ(driver->Focus(), "Tab1");
    user.Press(kKeyLeft);
    EXPECT_EQ(driver->Row("Tab1"), 0);
    EXPECT_TRUE(driver->InSight("tree"));
    user.Press(kKeyLeft);
    EXPECT_EQ(driver->Row("Tab1"), 0);
  });
}

TEST_F(ViewLists, KeysReachTheControlOnATabThatWentBehind) {
  Pick([&] {
    picker->strip->SetTab(1);
    picker->FillList(5);
    user.ClickListRow("list", 0);
    picker->strip->SetTab(0);
    user.Press(kKeyDown);
    EXPECT_EQ(picker->list->ListIndex(), 1);
    picker->strip->SetTab(1);
    EXPECT_EQ(driver->Row("list"), 1);
  });
}

TEST_F(ViewLists, AGridMovesTheCursorOfItsRecordset) {
  Visit([&] {
    EXPECT_EQ(driver->Row("DGItems"), 0);
    user.ClickRow(3);
    EXPECT_EQ(form->rows->AbsolutePosition(), 3);
    EXPECT_EQ(driver->Row("DGItems"), 2);
    EXPECT_EQ(driver->Focus(), "DGItems");
    user.Press(kKeyDown);
    EXPECT_EQ(form->rows->AbsolutePosition(), 4);
    user.Press(kKeyEnd);
    EXPECT_EQ(form->rows->AbsolutePosition(), 5);
    user.Press(kKeyDown);
    EXPECT_EQ(driver->Row("DGItems"), 4);
    user.Press(kKeyHome);
    EXPECT_EQ(driver->Row("DGItems"), 0);
    form->rows->SetAbsolutePosition(2);
    EXPECT_EQ(driver->Row("DGItems"), 1);
  });
}

TEST_F(ViewLists, ACancelledMovePutsTheGridBack) {
  Visit([&] {
    user.ClickRow(2);
    hooks.push_back(form->rows->WillMove.Subscribe(
        [](std::int32_t, std::int32_t& status, ado::Recordset&) { status = ado::kStatusCancel; }));
    user.ClickRow(4);
    EXPECT_EQ(driver->Row("DGItems"), 1);
    user.Press(kKeyDown);
    EXPECT_EQ(driver->Row("DGItems"), 1);
    EXPECT_EQ(form->rows->AbsolutePosition(), 2);
  });
}

TEST_F(ViewLists, AMenuMarksByArrowsAndClicksByEnter) {
  Visit([&] {
    const auto menu = form->Get<toolkit::VerticalMenu>("VMenu1");
    On(menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { log.push_back(std::to_string(item)); });
    user.ClickMenu(3);
    EXPECT_EQ(TakeLog(), Log{"3"});
    EXPECT_EQ(driver->Row("VMenu1"), 2);
    EXPECT_EQ(driver->Focus(), "VMenu1");
    user.Press(kKeyDown);
    user.Press(kKeyDown);
    EXPECT_EQ(driver->Row("VMenu1"), 3);
    user.Press(kKeyHome);
    EXPECT_EQ(driver->Row("VMenu1"), 0);
    EXPECT_EQ(TakeLog(), Log{});
    user.Press(kKeyDown);
    user.Press(kKeyReturn);
    EXPECT_EQ(TakeLog(), Log{"2"});
    menu->set_menuitemcur(4);
    EXPECT_EQ(driver->Row("VMenu1"), 3);
  });
}

}  // namespace
}  // namespace dossierkit::views
