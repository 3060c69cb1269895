// What every view set must do with windows, containers, what is hidden or disabled, and the names for screen
// readers.
#include "tests/adapters/views/view_test.h"

namespace dossierkit::views {
namespace {

using ViewWindows = ViewTest;

TEST_F(ViewWindows, AContainerHidesAndDisablesWhatStandsInIt) {
  Visit([&] {
    form->Get("frmInner")->SetVisible(false);
    EXPECT_FALSE(driver->InSight("txtInner"));
    form->Get("frmInner")->SetVisible(true);
    EXPECT_TRUE(driver->InSight("txtInner"));
    form->Get("frmCtrl")->SetEnabled(false);
    EXPECT_FALSE(driver->Enabled("txtInner"));
    EXPECT_FALSE(driver->Enabled("txtName"));
    form->Get("txtName")->SetEnabled(false);
    form->Get("frmCtrl")->SetEnabled(true);
    EXPECT_FALSE(driver->Enabled("txtName")) << "itself disabled";
    EXPECT_TRUE(driver->Enabled("txtInner"));
  });
}

TEST_F(ViewWindows, AControlMovesIntoAnotherContainer) {
  Visit([&] {
    const auto box = form->Get<toolkit::TextBox>("txtName");
    box->SetText("张三");
    box->SetContainer(*form->Get("frmInner"));
    EXPECT_TRUE(driver->InSight("txtName"));
    EXPECT_EQ(driver->Text("txtName"), "张三");
    form->Get("frmInner")->SetVisible(false);
    EXPECT_FALSE(driver->InSight("txtName"));
    box->SetContainer(*form->page);
    EXPECT_TRUE(driver->InSight("txtName"));
    user.Click("txtName");
    EXPECT_EQ(driver->Focus(), "txtName");
  });
}

TEST_F(ViewWindows, AControlThatComesLaterShows) {
  Visit([&] {
    const auto box = form->page->Controls().Make<toolkit::TextBox>("txtLater");
    box->SetContainer(*form->Get("frmInner"));
    box->Move({120, 720, 2400, 330});
    box->SetText("后来");
    EXPECT_TRUE(driver->InSight("txtLater"));
    EXPECT_EQ(driver->Text("txtLater"), "后来");
    user.Click("txtLater");
    user.Type("的");
    EXPECT_EQ(box->Text(), "的后来");
  });
}

TEST_F(ViewWindows, WhatWasSetBeforeTheWindowShowsIsSeenWhenItDoes) {
  form->on_load = [&] {
    form->Get<toolkit::TextBox>("txtName")->SetText("张三");
    form->Get<toolkit::CheckBox>("chkFlag")->SetValue(1);
    form->Get("txtCode")->SetVisible(false);
    form->Get<toolkit::VerticalMenu>("VMenu1")->set_menuitemcur(3);
    form->rows->SetAbsolutePosition(4);
  };
  Visit([&] {
    EXPECT_EQ(driver->Text("txtName"), "张三");
    EXPECT_TRUE(driver->Checked("chkFlag"));
    EXPECT_FALSE(driver->InSight("txtCode"));
    EXPECT_EQ(driver->Row("VMenu1"), 2);
    EXPECT_EQ(driver->Row("DGItems"), 3);
  });
}

TEST_F(ViewWindows, TheCloseBoxUnloadsAndAWindowMayShowAgain) {
  Visit([&] {
    user.Close();
    EXPECT_FALSE(form->Loaded());
  });
  Visit([&] { EXPECT_EQ(driver->Text("mskDate"), "____年__月"); });
}

TEST_F(ViewWindows, AWindowOverAnotherTakesTheKeysAndGivesThemBack) {
  Visit([&] {
    user.Click("txtName");
    driver->Play(*picker, [&] {
      EXPECT_EQ(driver->Focus(), "Tab1") << "a window that set no focus starts on its first tab stop";
      user.Press(toolkit::kKeyRight);
    });
    EXPECT_EQ(driver->Focus(), "txtName");
    user.Type("a");
    EXPECT_EQ(driver->Text("txtName"), "a");
  });
}

TEST_F(ViewWindows, ScreenReadersHearLabelsAndCaptions) {
  Visit([&] {
    EXPECT_EQ(driver->Spoken("txtName"), "姓名");
    form->Get<toolkit::Label>("labName")->SetCaption("名称");
    EXPECT_EQ(driver->Spoken("txtName"), "名称");
    form->Get("txtCode")->SetAccessibleName("代码");
    EXPECT_EQ(driver->Spoken("txtCode"), "代码");
    EXPECT_EQ(driver->Spoken("Add"), "增加") << "without the mnemonic";
  });
}

}  // namespace
}  // namespace dossierkit::views
