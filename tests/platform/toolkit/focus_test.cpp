#include <stdexcept>

#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

using FocusTest = ToolkitTest;

TEST_F(FocusTest, MovingRaisesValidateThenLostFocusThenGotFocusThenTheClick) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    user.Click("txtNote");
    EXPECT_EQ(TakeLog(),
              (Log{"txtName.Validate", "txtName.LostFocus", "txtNote.GotFocus", "txtNote.MouseDown"}));
    EXPECT_EQ(Focus(), "txtNote");
  });
}

TEST_F(FocusTest, SetFocusRaisesTheSameEventsAsTheUser) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    form->Get("mskDate")->SetFocus();
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "mskDate.GotFocus"}));
  });
}

TEST_F(FocusTest, FirstFocusRaisesGotFocusAlone) {
  Visit([&] {
    TakeLog();
    form->Get("txtName")->SetFocus();
    EXPECT_EQ(TakeLog(), (Log{"txtName.GotFocus"}));
    EXPECT_TRUE(form->Get("txtName")->HasFocus());
  });
}

TEST_F(FocusTest, FocusToItsOwnerIsNoEvent) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    form->Get("txtName")->SetFocus();
    user.Click("txtName");
    form->Get("txtName")->UserFocus();
    EXPECT_EQ(TakeLog(), (Log{"txtName.MouseDown"}));
  });
}

TEST_F(FocusTest, CancelledCheckKeepsTheFocusAndNothingElseHappens) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    TakeLog();
    user.Click("txtNote");
    user.Click("chkFlag");
    user.Tab();
    user.BackTab();
    form->Get("mskDate")->SetFocus();
    form->Get("mskDate")->UserFocus();
    EXPECT_EQ(TakeLog(), Log(6, "txtName.Validate"));
    EXPECT_EQ(Focus(), "txtName");
    EXPECT_EQ(form->Get<CheckBox>("chkFlag")->Value(), 0);
  });
}

TEST_F(FocusTest, CancelledCheckGivesTheNativePressBack) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    bool refuse = true;
    On(form->Get("txtName")->Validate, [&](bool& cancel) { cancel = refuse; });
    EXPECT_FALSE(form->Get("txtNote")->UserMouseDown(kLeftButton, 0, 0, 0));
    refuse = false;
    EXPECT_TRUE(form->Get("txtNote")->UserMouseDown(kLeftButton, 0, 0, 0));
  });
}

TEST_F(FocusTest, CancelledCheckKeepsTheMenuFromBeingClicked) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    int clicks = 0;
    On(form->Get<VerticalMenu>("VMenu1")->MenuItemClick, [&](std::int32_t&, std::int32_t&) { ++clicks; });
    user.ClickMenu(2);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(FocusTest, ClickIsDeliveredOnceThoughTheCheckOpensAWindow) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [&](bool&) { inner->ShowModal(); });
    int clicks = 0;
    On(form->Get<VerticalMenu>("VMenu1")->MenuItemClick, [&](std::int32_t&, std::int32_t&) { ++clicks; });
    TakeLog();
    user.ClickMenu(2);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(TakeLog(),
              (Log{"txtName.Validate", "frmInner.Load", "frmInner.Activate", "txtName.LostFocus"}));
    user.Click("txtNote");
    EXPECT_EQ(CountOf(TakeLog(), "txtNote.MouseDown"), 1U);
  });
}

TEST_F(FocusTest, ClickIsDeliveredOnceThoughTheCheckShowsAMessage) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [&](bool&) { desktop.MsgBox("注意"); });
    // Nothing that arrives while the box is on show gets through.
    platform.on_message = [&](const headless::Message&) { user.Click("txtNote"); };
    TakeLog();
    user.Click("txtNote");
    EXPECT_EQ(TakeLog(),
              (Log{"txtName.Validate", "txtName.LostFocus", "txtNote.GotFocus", "txtNote.MouseDown"}));
    EXPECT_EQ(platform.messages.size(), 1U);
  });
}

TEST_F(FocusTest, CheckThatMovesTheFocusIsNotAskedAgain) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [&](bool& cancel) {
      form->Get("mskDate")->SetFocus();
      cancel = true;
    });
    TakeLog();
    user.Click("txtNote");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "mskDate.GotFocus"}));
    EXPECT_EQ(Focus(), "mskDate");
  });
}

TEST_F(FocusTest, CheckWorksAgainAfterOneThatFailed) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    auto hook = form->Get("txtName")->Validate.Subscribe([](bool&) { throw std::runtime_error("检查失败"); });
    EXPECT_THROW(form->Get("txtNote")->SetFocus(), std::runtime_error);
    hook.End();
    TakeLog();
    form->Get("txtNote")->SetFocus();
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "txtNote.GotFocus"}));
  });
}

TEST_F(FocusTest, LostFocusThatMovesTheFocusWins) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->LostFocus, [&] { form->Get("mskDate")->SetFocus(); });
    user.Click("txtNote");
    EXPECT_EQ(Focus(), "mskDate");
  });
}

TEST_F(FocusTest, GotFocusThatMovesOnTakesTheClickAlong) {
  form->on_load = [&] {
    form->LoadPage();
    form->Controls().Make<CommandButton>("cmdOk");
  };
  Visit([&] {
    form->Get("mskDate")->SetFocus();
    On(form->Get("txtName")->GotFocus, [&] { form->Get("txtNote")->SetFocus(); });
    TakeLog();
    EXPECT_FALSE(form->Get("txtName")->UserMouseDown(kLeftButton, 0, 15, 15));
    EXPECT_EQ(TakeLog(), (Log{"mskDate.Validate", "mskDate.LostFocus", "txtName.GotFocus", "txtName.Validate",
                              "txtName.LostFocus", "txtNote.GotFocus"}));
    int clicks = 0;
    On(form->Get<CommandButton>("cmdOk")->Click, [&] { ++clicks; });
    On(form->Get("cmdOk")->GotFocus, [&] { form->Get("txtNote")->SetFocus(); });
    form->Get<CommandButton>("cmdOk")->UserClick();
    EXPECT_EQ(Focus(), "txtNote");
    EXPECT_EQ(clicks, 0);
    On(form->Get<VerticalMenu>("VMenu1")->MenuItemClick, [&](std::int32_t&, std::int32_t&) { ++clicks; });
    On(form->Get("VMenu1")->GotFocus, [&] { form->Get("txtNote")->SetFocus(); });
    user.ClickMenu(2);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(form->Get<VerticalMenu>("VMenu1")->Marked(), 1);
  });
}

TEST_F(FocusTest, TargetOfAMoveThatLostFocusTurnedAsideHearsNothing) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->LostFocus, [&] { form->Get("txtNote")->SetFocus(); });
    TakeLog();
    EXPECT_FALSE(form->Get("mskDate")->UserMouseDown(kLeftButton, 0, 15, 15));
    const Log noted = TakeLog();
    EXPECT_EQ(CountOf(noted, "mskDate.GotFocus"), 0U);
    EXPECT_EQ(CountOf(noted, "txtNote.GotFocus"), 1U);
    EXPECT_EQ(Focus(), "txtNote");
  });
}

TEST_F(FocusTest, DisabledOrHiddenControlHearsNoMouse) {
  Visit([&] {
    int moves = 0;
    const auto box = form->Get("txtName");
    On(box->MouseMove, [&](int, int, int, int) { ++moves; });
    box->UserMouseMove(0, 0, 15, 15);
    EXPECT_EQ(moves, 1);
    box->SetEnabled(false);
    box->UserMouseMove(0, 0, 15, 15);
    box->SetEnabled(true);
    form->Page()->SetVisible(false);
    box->UserMouseMove(0, 0, 15, 15);
    EXPECT_EQ(moves, 1);
  });
}

TEST_F(FocusTest, TargetThatTheCheckDisabledGetsNoFocus) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [&](bool&) { form->Get("txtNote")->SetEnabled(false); });
    TakeLog();
    user.Click("txtNote");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate"}));
    EXPECT_EQ(Focus(), "txtName");
  });
}

// --- SetFocus that fails -------------------------------------------------------------------------

TEST_F(FocusTest, SetFocusFailsWhileItsWindowIsNotVisible) {
  int in_load = 0;
  form->on_load = [&] {
    form->LoadPage();
    in_load = NumberOfFailure([&] { form->Get("txtName")->SetFocus(); });
  };
  int after_hide = 0;
  Visit([&] {
    InEvent([&] {
      form->Hide();
      after_hide = NumberOfFailure([&] { form->Get("txtName")->SetFocus(); });
    });
  });
  EXPECT_EQ(in_load, 5);
  EXPECT_EQ(after_hide, 5);
  EXPECT_EQ(NumberOfFailure([&] { form->Get("txtName")->SetFocus(); }), 5);
}

TEST_F(FocusTest, SetFocusFailsOnADisabledOrHiddenControl) {
  Visit([&] {
    auto box = form->Get("txtName");
    box->SetEnabled(false);
    EXPECT_EQ(NumberOfFailure([&] { box->SetFocus(); }), 5);
    box->SetEnabled(true);
    box->SetVisible(false);
    EXPECT_EQ(NumberOfFailure([&] { box->SetFocus(); }), 5);
    box->SetVisible(true);
    EXPECT_EQ(NumberOfFailure([&] { box->SetFocus(); }), 0);
  });
}

TEST_F(FocusTest, SetFocusFailsInADisabledOrHiddenContainer) {
  Visit([&] {
    auto inner = form->Get("txtInner");
    for (const char* name : {"frmInner", "page", "frmCtrl"}) {
      auto container = form->Get(name);
      container->SetEnabled(false);
      EXPECT_EQ(NumberOfFailure([&] { inner->SetFocus(); }), 5) << name;
      container->SetEnabled(true);
      container->SetVisible(false);
      EXPECT_EQ(NumberOfFailure([&] { inner->SetFocus(); }), 5) << name;
      container->SetVisible(true);
    }
    EXPECT_EQ(NumberOfFailure([&] { inner->SetFocus(); }), 0);
  });
}

TEST_F(FocusTest, SetFocusFailsOnKindsThatTakeNone) {
  Visit([&] {
    for (const char* name : {"labName", "frmInner", "page", "TbMain", "frmCtrl"}) {
      EXPECT_EQ(NumberOfFailure([&] { form->Get(name)->SetFocus(); }), 5) << name;
    }
    EXPECT_EQ(NumberOfFailure([&] { form->SetFocus(); }), 5);
  });
}

TEST_F(FocusTest, SetFocusFailsOnARemovedControlAndOnOneInNoWindow) {
  Visit([&] {
    auto box = form->Get("txtName");
    form->RemovePage();
    EXPECT_EQ(NumberOfFailure([&] { box->SetFocus(); }), 5);
    EXPECT_EQ(NumberOfFailure([] { std::make_shared<TextBox>("txtFree")->SetFocus(); }), 5);
  });
}

TEST_F(FocusTest, FailedSetFocusRaisesNothing) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Get("mskDate")->SetEnabled(false);
    TakeLog();
    EXPECT_EQ(NumberOfFailure([&] { form->Get("mskDate")->SetFocus(); }), 5);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(FocusTest, DisabledOrHiddenControlTakesNoClick) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    form->Get("txtNote")->SetEnabled(false);
    user.Click("txtNote");
    form->Get("frmCtrl")->SetEnabled(false);
    user.Click("chkFlag");
    user.Click("labName");
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(form->Get<CheckBox>("chkFlag")->Value(), 0);
  });
}

TEST_F(FocusTest, ClickOnALabelChecksNothingAndLeavesTheFocus) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    user.Click("labName");
    EXPECT_EQ(TakeLog(), (Log{"labName.MouseDown"}));
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(FocusTest, ControlThatIsDisabledWhileItHasTheFocusGetsNoKeys) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    form->Get("frmCtrl")->SetEnabled(false);
    int keys = 0;
    form->Page()->on_key_down = [&](int&, int) { ++keys; };
    On(box->KeyPress, [&](char32_t&) { ++keys; });
    user.Type("a");
    EXPECT_EQ(keys, 0);
    EXPECT_EQ(box->Text(), "");
    form->Get("frmCtrl")->SetEnabled(true);
    user.Type("b");
    EXPECT_EQ(box->Text(), "b");
    EXPECT_EQ(keys, 2);
  });
}

TEST_F(FocusTest, FocusFromOutsideIsFollowedOrPutBack) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    form->Get("mskDate")->UserFocus();
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "mskDate.GotFocus"}));
    form->Get("txtNote")->SetEnabled(false);
    form->Get("txtNote")->UserFocus();
    form->Get("labName")->UserFocus();
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(Focus(), "mskDate");
  });
}

TEST_F(FocusTest, RemovedControlLosesTheFocusWithoutCheck) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    form->RemovePage();
    EXPECT_EQ(TakeLog(), (Log{"page.Terminate", "page.gone"}));
    EXPECT_EQ(form->ActiveControl(), nullptr);
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
