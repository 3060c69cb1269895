#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class TabOrderTest : public ToolkitTest {
 protected:
  // The controls through which `count` presses lead.
  Log Walk(int count, bool forward) {
    Log passed;
    for (int i = 0; i < count; ++i) {
      forward ? user.Tab() : user.BackTab();
      passed.push_back(Focus());
    }
    return passed;
  }
};

TEST_F(TabOrderTest, FollowsTabIndexNotTheOrderOfCreation) {
  Visit([&] {
    form->Get("txtName")->SetTabIndex(7);
    form->Get("txtInner")->SetTabIndex(0);
    form->Get("txtInner")->SetFocus();
    EXPECT_EQ(Walk(4, true), (Log{"mskDate", "txtNote", "chkFlag", "txtName"}));
  });
}

TEST_F(TabOrderTest, EqualIndexesFollowTheOrderOfCreation) {
  Visit([&] {
    for (const char* name : {"txtName", "mskDate", "txtNote", "chkFlag", "txtInner"})
      form->Get(name)->SetTabIndex(3);
    form->Get("txtName")->SetFocus();
    EXPECT_EQ(Walk(4, true), (Log{"mskDate", "txtNote", "chkFlag", "txtInner"}));
  });
}

TEST_F(TabOrderTest, GoesRoundThroughPageAndMenu) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    // The page stands before the menu: its own index is 0, the menu's 1.
    EXPECT_EQ(Walk(6, true), (Log{"mskDate", "txtNote", "chkFlag", "txtInner", "VMenu1", "txtName"}));
    EXPECT_EQ(Walk(6, false), (Log{"VMenu1", "txtInner", "chkFlag", "txtNote", "mskDate", "txtName"}));
  });
}

TEST_F(TabOrderTest, StartsAtTheFirstStopWhereNothingHasTheFocus) {
  Visit([&] { EXPECT_EQ(Walk(1, true), (Log{"txtName"})); });
  Visit([&] { EXPECT_EQ(Walk(1, false), (Log{"VMenu1"})); });
}

TEST_F(TabOrderTest, PassesOverDisabledHiddenAndNoStops) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Get("mskDate")->SetEnabled(false);
    form->Get("txtNote")->SetVisible(false);
    form->Get("chkFlag")->SetTabStop(false);
    EXPECT_EQ(Walk(1, true), (Log{"txtInner"}));
    form->Get("frmInner")->SetEnabled(false);
    form->Get("txtName")->SetFocus();
    EXPECT_EQ(Walk(1, true), (Log{"VMenu1"}));
    form->Get("frmCtrl")->SetEnabled(false);
    EXPECT_EQ(Walk(1, true), (Log{"VMenu1"}));
  });
}

TEST_F(TabOrderTest, LeadsOnFromAControlThatIsNoStopItself) {
  Visit([&] {
    form->Get("grid")->SetFocus();
    EXPECT_EQ(Walk(1, true), (Log{"VMenu1"}));
    form->Get("grid")->SetFocus();
    EXPECT_EQ(Walk(1, false), (Log{"txtInner"}));
  });
}

TEST_F(TabOrderTest, OnlyStopKeepsTheFocusWithoutEvents) {
  Visit([&] {
    form->Get("VMenu1")->SetTabStop(false);
    for (const char* name : {"mskDate", "txtNote", "chkFlag", "txtInner"}) form->Get(name)->SetEnabled(false);
    form->Get("txtName")->SetFocus();
    TakeLog();
    EXPECT_EQ(Walk(2, true), (Log{"txtName", "txtName"}));
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(TabOrderTest, TabSelectsTheTextOfABoxOfOneLine) {
  Visit([&] {
    const auto name = form->Get<TextBox>("txtName");
    const auto inner = form->Get<TextBox>("txtInner");
    name->SetText("林知远");
    inner->SetText("院长");
    form->Get("chkFlag")->SetFocus();
    user.Tab();
    EXPECT_EQ(inner->SelStart(), 0U);
    EXPECT_EQ(inner->SelLength(), 2U);
    user.Type("z");
    EXPECT_EQ(inner->Text(), "z");
    form->Get("mskDate")->SetFocus();
    name->Select(1, 0);
    user.BackTab();
    EXPECT_EQ(name->SelStart(), 0U);
    EXPECT_EQ(name->SelLength(), 3U);
  });
}

TEST_F(TabOrderTest, TabLeavesTheCaretOfMaskedAndOfSeveralLines) {
  Visit([&] {
    const auto date = form->Get<MaskEdBox>("mskDate");
    const auto note = form->Get<TextBox>("txtNote");
    date->SetText("1990年03月");
    date->Select(5, 0);
    note->SetText("甲\r\n乙");
    note->Select(1, 0);
    form->Get("txtName")->SetFocus();
    user.Tab();
    EXPECT_EQ(date->SelStart(), 5U);
    EXPECT_EQ(date->SelLength(), 0U);
    user.Tab();
    EXPECT_EQ(note->SelStart(), 1U);
    EXPECT_EQ(note->SelLength(), 0U);
  });
}

TEST_F(TabOrderTest, OnlyTheUsersTabSelects) {
  Visit([&] {
    const auto inner = form->Get<TextBox>("txtInner");
    inner->SetText("院长");
    inner->Select(1, 0);
    inner->SetFocus();
    EXPECT_EQ(inner->SelLength(), 0U);
    form->Get("chkFlag")->SetFocus();
    InEvent([&] { form->SendKeys("{tab}"); });
    EXPECT_EQ(Focus(), "txtInner");
    EXPECT_EQ(inner->SelStart(), 1U);
    EXPECT_EQ(inner->SelLength(), 0U);
  });
}

TEST_F(TabOrderTest, ATabThatIsRefusedOrLeadsElsewhereSelectsNothing) {
  Visit([&] {
    const auto name = form->Get<TextBox>("txtName");
    const auto inner = form->Get<TextBox>("txtInner");
    name->SetText("林知远");
    inner->SetText("院长");
    form->Get("chkFlag")->SetFocus();
    bool refuse = true;
    On(form->Get("chkFlag")->Validate, [&](bool& cancel) { cancel = refuse; });
    user.Tab();
    EXPECT_EQ(Focus(), "chkFlag");
    EXPECT_EQ(inner->SelLength(), 0U);
    refuse = false;
    On(inner->GotFocus, [&] { form->Get("txtNote")->SetFocus(); });
    user.Tab();
    EXPECT_EQ(Focus(), "txtNote");
    EXPECT_EQ(inner->SelLength(), 0U);
  });
}

TEST_F(TabOrderTest, WindowWithoutStopsStaysAsItIs) {
  Visit([&] {
    form->RemovePage();
    form->Get("VMenu1")->SetVisible(false);
    EXPECT_EQ(toolkit::Focus().NextTabStop(form->Controls(), true), nullptr);
    EXPECT_EQ(Walk(1, true), (Log{""}));
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
