#include "tests/platform/toolkit/picker_test.h"

namespace dossierkit::toolkit {
namespace {

class TabStripTest : public PickerTest {
 protected:
  Log Walk(int count, bool forward) {
    Log passed;
    for (int i = 0; i < count; ++i) {
      forward ? user.Tab() : user.BackTab();
      passed.push_back(Focus());
    }
    return passed;
  }
};

TEST_F(TabStripTest, HasTabsWithCaptions) {
  TabStrip strip("Tab1");
  EXPECT_EQ(strip.TabCount(), 0);
  EXPECT_EQ(NumberOfFailure([&] { strip.SetTab(0); }), 380);
  strip.AddTab("浏览查询");
  strip.AddTab("录入查询");
  EXPECT_EQ(strip.TabCount(), 2);
  EXPECT_EQ(strip.TabCaption(1), "录入查询");
  strip.SetTabCaption(1, "录入");
  EXPECT_EQ(strip.TabCaption(1), "录入");
  EXPECT_EQ(NumberOfFailure([&] { strip.TabCaption(2); }), 380);
  EXPECT_EQ(strip.Tab(), 0);
  strip.SetTab(1);
  EXPECT_EQ(strip.Tab(), 1);
  EXPECT_EQ(NumberOfFailure([&] { strip.SetTab(2); }), 380);
  EXPECT_EQ(NumberOfFailure([&] { strip.SetTab(-1); }), 380);
  EXPECT_EQ(strip.Tab(), 1);
}

TEST_F(TabStripTest, ControlsStandOnATab) {
  Visit([&] {
    EXPECT_EQ(form->strip->TabPage(*form->tree), 0);
    EXPECT_EQ(form->strip->TabPage(*form->list), 1);
    EXPECT_EQ(form->strip->TabPage(*form->button), -1);
    EXPECT_EQ(form->tree->Container(), form->strip.get());
    EXPECT_FALSE(OnHiddenTab(*form->tree));
    EXPECT_TRUE(OnHiddenTab(*form->list));
    EXPECT_FALSE(OnHiddenTab(*form->button));
    form->strip->SetTab(1);
    EXPECT_TRUE(OnHiddenTab(*form->tree));
    EXPECT_FALSE(OnHiddenTab(*form->list));
    form->strip->SetTabPage(*form->list, 0);
    EXPECT_TRUE(OnHiddenTab(*form->list));
    EXPECT_EQ(NumberOfFailure([&] { form->strip->SetTabPage(*form->list, 2); }), 380);
  });
}

TEST_F(TabStripTest, ControlsInAFrameOnAHiddenTabAreHiddenToo) {
  Visit([&] {
    const auto frame = form->Controls().Make<Frame>("frmTab");
    form->strip->SetTabPage(*frame, 1);
    form->list->SetContainer(*frame);
    EXPECT_TRUE(OnHiddenTab(*form->list));
    form->strip->SetTab(1);
    EXPECT_FALSE(OnHiddenTab(*form->list));
  });
}

TEST_F(TabStripTest, AControlOnAHiddenTabTakesTheFocusAndItsKeys) {
  Visit([&] {
    FillTree();
    std::u32string keys;
    On(form->tree->KeyPress, [&](char32_t& key) { keys += key; });
    form->strip->SetTab(1);
    EXPECT_EQ(NumberOfFailure([&] { form->tree->SetFocus(); }), 0);
    EXPECT_EQ(Focus(), "tree");
    user.Press(kKeyReturn);
    user.Press(kKeyDown);
    EXPECT_EQ(keys, U"\r");
    EXPECT_EQ(Selected(), "G2");
  });
}

TEST_F(TabStripTest, TabKeyPassesOverHiddenTabs) {
  Visit([&] {
    form->strip->SetFocus();
    EXPECT_EQ(Walk(3, true), (Log{"tree", "cmdOK", "Tab1"}));
    EXPECT_EQ(Walk(2, false), (Log{"cmdOK", "tree"}));
    form->strip->SetTab(1);
    EXPECT_EQ(Focus(), "tree");
    EXPECT_EQ(Walk(4, true), (Log{"txtDm", "list", "cmdOK", "Tab1"}));
    form->tree->SetFocus();
    EXPECT_EQ(Walk(1, false), (Log{"Tab1"}));
  });
}

TEST_F(TabStripTest, HiddenOrDisabledStripHidesAndDisablesItsControls) {
  Visit([&] {
    form->strip->SetEnabled(false);
    EXPECT_EQ(NumberOfFailure([&] { form->tree->SetFocus(); }), 5);
    form->strip->SetEnabled(true);
    form->strip->SetVisible(false);
    EXPECT_EQ(NumberOfFailure([&] { form->tree->SetFocus(); }), 5);
  });
}

TEST_F(TabStripTest, ClickTakesTheFocusThenTurnsTheTab) {
  Visit([&] {
    form->button->SetFocus();
    int at_focus = -1;
    On(form->strip->GotFocus, [&] { at_focus = form->strip->Tab(); });
    user.SelectTab("Tab1", 1);
    EXPECT_EQ(at_focus, 0);
    EXPECT_EQ(form->strip->Tab(), 1);
    EXPECT_EQ(Focus(), "Tab1");
    user.SelectTab("Tab1", 2);
    EXPECT_EQ(form->strip->Tab(), 1);
  });
}

TEST_F(TabStripTest, RefusedFocusTurnsNoTab) {
  Visit([&] {
    form->button->SetFocus();
    On(form->button->Validate, [](bool& cancel) { cancel = true; });
    user.SelectTab("Tab1", 1);
    form->strip->UserSelectTab(1);
    EXPECT_EQ(form->strip->Tab(), 0);
    EXPECT_EQ(Focus(), "cmdOK");
  });
}

TEST_F(TabStripTest, ArrowsTurnTabs) {
  Visit([&] {
    form->strip->SetFocus();
    user.Press(kKeyRight);
    EXPECT_EQ(form->strip->Tab(), 1);
    user.Press(kKeyRight);
    EXPECT_EQ(form->strip->Tab(), 1);
    user.Press(kKeyLeft);
    user.Press(kKeyLeft);
    EXPECT_EQ(form->strip->Tab(), 0);
  });
}

TEST_F(TabStripTest, UserCannotReachWhatIsOnAHiddenTab) {
  Visit([&] {
    FillTree();
    FillList(1);
    EXPECT_THROW(user.ClickListRow("list", 0), std::logic_error);
    form->strip->SetTab(1);
    EXPECT_THROW(user.ClickNode("tree", "G1"), std::logic_error);
  });
}

TEST_F(TabStripTest, RemovedControlsLeaveTheirTab) {
  Visit([&] {
    form->Controls().Remove(3);
    form->list.reset();
    form->strip->SetTab(1);
    form->strip->SetTabPage(*form->box, 1);
    form->strip->SetFocus();
    EXPECT_EQ(Walk(2, true), (Log{"txtDm", "cmdOK"}));
  });
}

TEST_F(TabStripTest, AWindowThatSetsNoFocusStartsOnItsFirstTabStop) {
  Visit([&] { EXPECT_EQ(Focus(), "Tab1"); });
}

}  // namespace
}  // namespace dossierkit::toolkit
