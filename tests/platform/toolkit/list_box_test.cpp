#include "tests/platform/toolkit/picker_test.h"

namespace dossierkit::toolkit {
namespace {

class ListBoxTest : public PickerTest {
 protected:
  void WithList(int rows, const std::function<void(ListBox&)>& scene) {
    Visit([&] {
      form->strip->SetTab(1);
      FillList(rows);
      scene(*form->list);
    });
  }
};

TEST_F(ListBoxTest, KeepsItsRowsInTheOrderOfAdding) {
  ListBox list("list");
  EXPECT_EQ(list.ListCount(), 0);
  for (const char* text : {"丙", "甲", "", "甲"}) list.AddItem(text);
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.List(0), "丙");
  EXPECT_EQ(list.List(1), "甲");
  EXPECT_EQ(list.List(2), "");
  EXPECT_EQ(list.List(-1), "");
  EXPECT_EQ(list.List(4), "");
  EXPECT_EQ(list.BackColor(), kWindowBackground);
}

TEST_F(ListBoxTest, ListIndexIsARowOrNone) {
  ListBox list("list");
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(NumberOfFailure([&] { list.SetListIndex(0); }), 380);
  list.AddItem("甲");
  list.AddItem("乙");
  EXPECT_EQ(list.ListIndex(), -1);
  list.SetListIndex(1);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(NumberOfFailure([&] { list.SetListIndex(2); }), 380);
  EXPECT_EQ(NumberOfFailure([&] { list.SetListIndex(-2); }), 380);
  EXPECT_EQ(list.ListIndex(), 1);
  list.SetListIndex(-1);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxTest, ClearTakesRowsAndSelection) {
  ListBox list("list");
  list.AddItem("甲");
  list.SetListIndex(0);
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(ListBoxTest, TellsTheRowUnderAPoint) {
  EXPECT_EQ(ListBox("list").RowAt(0, 0), -1);
  WithList(3, [](ListBox& list) {
    EXPECT_EQ(list.RowAt(15, 0), 0);
    EXPECT_EQ(list.RowAt(15, 224), 0);
    EXPECT_EQ(list.RowAt(15, 225), 1);
    EXPECT_EQ(list.RowAt(15, 674), 2);
    EXPECT_EQ(list.RowAt(15, 675), -1);
    EXPECT_EQ(list.RowAt(15, -1), -1);
  });
}

TEST_F(ListBoxTest, ClickMovesTheFocusThenSelects) {
  WithList(3, [&](ListBox& list) {
    form->box->SetFocus();
    int selected_at_focus = -2;
    On(list.GotFocus, [&] { selected_at_focus = list.ListIndex(); });
    user.ClickListRow("list", 2);
    EXPECT_EQ(selected_at_focus, -1);
    EXPECT_EQ(list.ListIndex(), 2);
    EXPECT_EQ(Focus(), "list");
    user.ClickListRow("list", 3);
    EXPECT_EQ(list.ListIndex(), 2);
  });
}

TEST_F(ListBoxTest, RefusedFocusSelectsNothing) {
  WithList(3, [&](ListBox& list) {
    form->box->SetFocus();
    On(form->box->Validate, [](bool& cancel) { cancel = true; });
    user.ClickListRow("list", 1);
    list.UserSelect(1);
    list.UserDblClick();
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(Focus(), "txtDm");
  });
}

TEST_F(ListBoxTest, RowsThatGoWhenTheFocusComesAreNotSelected) {
  WithList(3, [&](ListBox& list) {
    On(list.GotFocus, [&] { list.Clear(); });
    list.UserSelect(1);
    EXPECT_EQ(list.ListIndex(), -1);
  });
}

TEST_F(ListBoxTest, ArrowsHomeAndEndMoveWithinTheRows) {
  WithList(4, [&](ListBox& list) {
    list.SetFocus();
    EXPECT_EQ(list.ListIndex(), -1);
    user.Press(kKeyDown);
    EXPECT_EQ(list.ListIndex(), 0);
    user.Press(kKeyUp);
    EXPECT_EQ(list.ListIndex(), 0);
    user.Press(kKeyRight);
    user.Press(kKeyDown);
    EXPECT_EQ(list.ListIndex(), 2);
    user.Press(kKeyLeft);
    EXPECT_EQ(list.ListIndex(), 1);
    user.Press(kKeyEnd);
    user.Press(kKeyDown);
    EXPECT_EQ(list.ListIndex(), 3);
    user.Press(kKeyHome);
    EXPECT_EQ(list.ListIndex(), 0);
    list.Clear();
    user.Press(kKeyDown);
    EXPECT_EQ(list.ListIndex(), -1);
  });
}

TEST_F(ListBoxTest, RaisesKeysMovesAndDoubleClicks) {
  WithList(2, [&](ListBox& list) {
    std::u32string keys;
    std::vector<int> rows;
    int clicks = 0;
    On(list.KeyPress, [&](char32_t& key) { keys += key; });
    On(list.MouseMove, [&](int button, int, int x, int y) {
      EXPECT_EQ(button, 0);
      rows.push_back(list.RowAt(x, y));
    });
    On(list.DblClick, [&] { ++clicks; });
    list.UserMouseMove(0, 0, 30, 100);
    list.UserMouseMove(0, 0, 30, 300);
    list.UserMouseMove(0, 0, 30, 3000);
    user.ClickListRow("list", 1);
    user.Press(kKeyReturn);
    user.DoubleClick("list");
    EXPECT_EQ(keys, U"\r");
    EXPECT_EQ(rows, (std::vector<int>{0, 1, -1}));
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(list.ListIndex(), 1);
  });
}

TEST_F(ListBoxTest, DisabledListTakesNothing) {
  WithList(2, [&](ListBox& list) {
    list.SetEnabled(false);
    user.ClickListRow("list", 1);
    list.UserSelect(1);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(Focus(), "Tab1");
  });
}

TEST_F(ListBoxTest, WindowMayCloseInADoubleClick) {
  WithList(2, [&](ListBox& list) {
    On(list.DblClick, [&] { form->Unload(); });
    user.ClickListRow("list", 1);
    user.DoubleClick("list");
    EXPECT_FALSE(form->Loaded());
    list.UserSelect(0);
    EXPECT_EQ(list.ListIndex(), 1);
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
