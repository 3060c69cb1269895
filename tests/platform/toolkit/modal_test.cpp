#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class ModalTest : public ToolkitTest {
 protected:
  std::shared_ptr<TestForm> inner = std::make_shared<TestForm>(desktop, log, "frmInner");
};

TEST_F(ModalTest, ShowLoadsThenActivatesAndReturnsAtTheUnload) {
  bool ran = false;
  Visit([&] {
    ran = true;
    EXPECT_TRUE(form->Loaded());
    EXPECT_TRUE(form->Shown());
    EXPECT_EQ(desktop.TopmostForm(), form.get());
    EXPECT_EQ(log, (Log{"frmTest.Load", "page.Initialize", "frmTest.Activate", "page.Show"}));
  });
  EXPECT_TRUE(ran);
  EXPECT_FALSE(form->Loaded());
  EXPECT_FALSE(form->Shown());
  EXPECT_EQ(desktop.TopmostForm(), nullptr);
}

TEST_F(ModalTest, WindowsNestAndInputGoesToTheTopmostOnly) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    platform.WillRun([&](Form& window) {
      EXPECT_EQ(&window, inner.get());
      TakeLog();
      EXPECT_FALSE(form->UserKeyDown('A', 0));
      EXPECT_FALSE(form->UserKeyPress(U'a'));
      EXPECT_FALSE(form->Get("txtNote")->UserMouseDown(kLeftButton, 0, 0, 0));
      form->Get("txtNote")->UserFocus();
      form->UserTab(true);
      form->Get<Toolbar>("TbMain")->UserClick(0);
      EXPECT_FALSE(form->Deliver([] { FAIL(); }));
      EXPECT_EQ(TakeLog(), Log{});
      EXPECT_EQ(Focus(), "txtName");
    });
    InEvent([&] { inner->ShowModal(); });
    user.Type("a");
    EXPECT_EQ(box->Text(), "a");
  });
  EXPECT_TRUE(platform.AllUsed());
}

TEST_F(ModalTest, ActivateComesOncePerShow) {
  Visit([&] {
    InEvent([&] { inner->ShowModal(); });
    InEvent([&] { desktop.MsgBox("注意"); });
    user.Click("txtName");
  });
  EXPECT_EQ(CountOf(log, "frmTest.Activate"), 1U);
  Visit([] {});
  EXPECT_EQ(CountOf(TakeLog(), "frmTest.Activate"), 2U);
}

TEST_F(ModalTest, ActivateFindsTheWindowVisible) {
  int failure = -1;
  form->on_activate = [&] { failure = NumberOfFailure([&] { form->Get("txtName")->SetFocus(); }); };
  Visit([] {});
  EXPECT_EQ(failure, 0);
}

TEST_F(ModalTest, WindowUnloadedInItsResizeIsNotActivated) {
  form->on_resize = [&] { form->Unload(); };
  form->ShowModal();
  EXPECT_EQ(CountOf(log, "frmTest.Activate"), 0U);
}

TEST_F(ModalTest, WindowUnloadedInItsActivateIsNotRun) {
  form->on_activate = [&] { form->Unload(); };
  platform.WillRun([](Form&) { FAIL(); });
  form->ShowModal();
  EXPECT_FALSE(platform.AllUsed());
  EXPECT_EQ(CountOf(log, "page.Show"), 0U);
}

TEST_F(ModalTest, UnloadDestroysTheControlsAndLoadBuildsThemAfresh) {
  std::weak_ptr<Control> bar;
  Visit([&] {
    bar = form->Get("TbMain");
    form->Get<Toolbar>("TbMain")->Button("Save").SetEnabled(false);
    form->Get("txtName")->SetFocus();
  });
  EXPECT_TRUE(bar.expired());
  EXPECT_EQ(NumberOfFailure([&] { form->Controls(); }), 364);
  EXPECT_EQ(form->ActiveControl(), nullptr);
  Visit([&] {
    EXPECT_TRUE(form->Get<Toolbar>("TbMain")->Button("Save").Enabled());
    EXPECT_EQ(Focus(), "");
  });
}

TEST_F(ModalTest, VariablesSurviveTheUnloading) {
  Visit([&] { form->variable = 7; });
  EXPECT_EQ(form->variable, 7);
  Visit([&] { EXPECT_EQ(form->variable, 7); });
}

TEST_F(ModalTest, UnloadTerminatesThePageWithoutChecks) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    TakeLog();
    user.Close();
    EXPECT_EQ(TakeLog(), (Log{"page.Terminate", "page.gone"}));
  });
}

TEST_F(ModalTest, UnloadOfAnUnloadedWindowDoesNothing) {
  form->Unload();
  Visit([&] {
    InEvent([&] {
      form->Unload();
      form->Unload();
    });
  });
  EXPECT_EQ(CountOf(log, "page.Terminate"), 1U);
}

TEST_F(ModalTest, HiddenWindowKeepsItsControls) {
  Visit([&] {
    form->Get<TextBox>("txtName")->SetText("张三");
    InEvent([&] { form->Hide(); });
    EXPECT_FALSE(form->Deliver([] { FAIL(); }));
  });
  EXPECT_TRUE(form->Loaded());
  EXPECT_FALSE(form->Shown());
  EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "张三");
  TakeLog();
  Visit([&] { EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "张三"); });
  EXPECT_EQ(CountOf(log, "frmTest.Load"), 0U);
  EXPECT_EQ(CountOf(log, "frmTest.Activate"), 1U);
  EXPECT_EQ(CountOf(log, "page.Show"), 0U);
}

TEST_F(ModalTest, OuterWindowUnloadedBelowAnInnerOneEndsAfterIt) {
  Visit([&] {
    InEvent([&] {
      platform.WillRun([&](Form&) {
        inner->Deliver([&] { form->Unload(); });
        EXPECT_FALSE(inner->LoopEnded());
        EXPECT_TRUE(form->LoopEnded());
      });
      inner->ShowModal();
      log.push_back("back in the handler");
    });
    EXPECT_TRUE(form->LoopEnded());
  });
  EXPECT_EQ(log.back(), "back in the handler");
}

// --- unloaded in its own load --------------------------------------------------------------------

TEST_F(ModalTest, WindowUnloadedInItsOwnLoadShowsNothingAndShowFails) {
  bool page_made = false;
  form->on_load = [&] {
    form->Unload();
    EXPECT_TRUE(form->InVisit());
    form->LoadPage();
    page_made = true;
  };
  platform.WillRun([](Form&) { FAIL(); });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), 364);
  EXPECT_FALSE(page_made);
  EXPECT_EQ(log, (Log{"frmTest.Load"}));
  EXPECT_FALSE(form->InVisit());
}

TEST_F(ModalTest, ShowFailsThoughTheLoadTouchesNothingAfterItsUnload) {
  form->on_load = [&] { form->Unload(); };
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), 364);
}

TEST_F(ModalTest, NextVisitWorksAfterAWindowUnloadedInItsOwnLoad) {
  form->on_load = [&] { form->Unload(); };
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), 364);
  form->on_load = [&] { form->LoadPage(); };
  bool ran = false;
  Visit([&] {
    ran = true;
    user.Click("txtName");
    EXPECT_EQ(Focus(), "txtName");
  });
  EXPECT_TRUE(ran);
}

// --- the close box -------------------------------------------------------------------------------

TEST_F(ModalTest, CloseBoxRunsNoCheckAndAsksNothing) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    user.Close();
    EXPECT_FALSE(form->Loaded());
  });
  EXPECT_EQ(CountOf(log, "txtName.Validate"), 0U);
  EXPECT_EQ(CountOf(log, "txtName.LostFocus"), 0U);
  EXPECT_TRUE(platform.messages.empty());
  EXPECT_EQ(platform.beeps, 0);
}

TEST_F(ModalTest, CloseBoxBelowAModalWindowIsRefusedWithABeep) {
  Visit([&] {
    platform.WillRun([&](Form&) {
      form->UserClose();
      EXPECT_TRUE(form->Loaded());
      EXPECT_EQ(platform.beeps, 1);
    });
    InEvent([&] { inner->ShowModal(); });
    EXPECT_FALSE(form->LoopEnded());
  });
  EXPECT_EQ(platform.beeps, 1);
}

TEST_F(ModalTest, CloseBoxBelowAMessageBoxIsRefusedWithABeep) {
  Visit([&] {
    platform.on_message = [&](const headless::Message&) { form->UserClose(); };
    InEvent([&] { desktop.MsgBox("注意"); });
    EXPECT_TRUE(form->Loaded());
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(ModalTest, WindowBelowTheFileDialogTakesNothing) {
  Visit([&] {
    platform.on_choose = [&](const CommonDialog&) {
      EXPECT_FALSE(form->Deliver([] { FAIL(); }));
      form->UserClose();
    };
    InEvent([&] { form->Controls().Make<CommonDialog>("dlg")->ShowOpen(); });
    EXPECT_TRUE(form->Loaded());
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_TRUE(form->Deliver([] {}));
  });
}

// --- shown twice ---------------------------------------------------------------------------------

TEST_F(ModalTest, SecondShowDuringAVisitFailsAndTouchesNothing) {
  Visit([&] {
    EXPECT_TRUE(form->InVisit());
    TakeLog();
    EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), 400);
    InEvent([&] {
      platform.WillRun([&](Form&) { EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), 400); });
      inner->ShowModal();
    });
    EXPECT_EQ(CountOf(TakeLog(), "frmTest.Load"), 0U);
    EXPECT_FALSE(form->LoopEnded());
  });
  EXPECT_FALSE(form->InVisit());
}

TEST_F(ModalTest, SecondShowDuringTheLoadFails) {
  int failure = 0;
  bool in_visit = false;
  form->on_load = [&] {
    form->LoadPage();
    in_visit = form->InVisit();
    failure = NumberOfFailure([&] { form->ShowModal(); });
  };
  bool ran = false;
  Visit([&] { ran = true; });
  EXPECT_EQ(failure, 400);
  EXPECT_TRUE(in_visit);
  EXPECT_TRUE(ran);
}

TEST_F(ModalTest, SecondShowAfterAnUnloadInTheSameEventFails) {
  int failure = 0;
  Visit([&] {
    InEvent([&] {
      form->Unload();
      failure = NumberOfFailure([&] { form->ShowModal(); });
    });
  });
  EXPECT_EQ(failure, 400);
}

// --- message boxes and sizes ---------------------------------------------------------------------

TEST_F(ModalTest, MessageBoxWithoutATitleBearsTheProgramsName) {
  platform.WillAnswer(kAnswerNo);
  desktop.MsgBox("一");
  EXPECT_EQ(desktop.MsgBox("二", kYesNo, "人员维护"), kAnswerNo);
  EXPECT_EQ(platform.messages,
            (std::vector<headless::Message>{{"一", kOkOnly, "DossierKit"}, {"二", kYesNo, "人员维护"}}));
}

TEST_F(ModalTest, ResizeReachesTheWindowOnlyWhereTheSizeDiffers) {
  int resized = 0;
  form->on_resize = [&] { ++resized; };
  Visit([&] {
    EXPECT_EQ(resized, 1);
    form->UserResize(12000, 9000);
    form->UserResize(12000, 9000);
    EXPECT_EQ(resized, 2);
    EXPECT_EQ(form->Place().width, 12000);
  });
}

TEST_F(ModalTest, AResizeUnderAMessageBoxReachesTheWindowAfterTheEvent) {
  std::vector<std::string> order;
  form->on_resize = [&] { order.push_back("resize " + std::to_string(form->Place().width)); };
  Visit([&] {
    order.clear();
    platform.on_message = [&](const headless::Message&) {
      form->UserResize(12000, 9000);
      form->UserResize(13000, 9000);
      order.emplace_back("message");
    };
    InEvent([&] {
      desktop.MsgBox("注意");
      order.emplace_back("handler ends");
    });
    EXPECT_EQ(order, (std::vector<std::string>{"message", "handler ends", "resize 13000"}));
    InEvent([] {});
    EXPECT_EQ(order.size(), 3U) << "once";
  });
}

// A message may also come between two events.
TEST_F(ModalTest, AResizeAfterOneThatWaitedIsTheLast) {
  std::vector<int> widths;
  form->on_resize = [&] { widths.push_back(form->Place().width); };
  Visit([&] {
    widths.clear();
    platform.on_message = [&](const headless::Message&) { form->UserResize(12000, 9000); };
    desktop.MsgBox("注意");
    form->UserResize(13000, 9000);
    EXPECT_EQ(widths, std::vector<int>{13000});
    InEvent([] {});
    EXPECT_EQ(form->Place().width, 13000);
  });
}

TEST_F(ModalTest, ASizeTakenBackUnderAMessageBoxIsNoResize) {
  int resized = 0;
  form->on_resize = [&] { ++resized; };
  Visit([&] {
    platform.on_message = [&](const headless::Message&) {
      form->UserResize(12000, 9000);
      form->UserResize(9000 + kBorderWidth, 6000 + kBorderHeight);
    };
    InEvent([&] { desktop.MsgBox("注意"); });
    EXPECT_EQ(resized, 1);
    EXPECT_EQ(form->Place().width, 9000 + kBorderWidth);
  });
}

TEST_F(ModalTest, AResizeUnderAnotherWindowReachesTheLowerOneAfterwards) {
  int resized = 0;
  form->on_resize = [&] { ++resized; };
  Visit([&] {
    platform.WillRun([&](Form&) {
      form->UserResize(12000, 9000);
      EXPECT_EQ(resized, 1);
    });
    InEvent([&] { inner->ShowModal(); });
    EXPECT_EQ(resized, 2);
    EXPECT_EQ(form->Place().width, 12000);
  });
}

TEST_F(ModalTest, AResizeOfAWindowThatWentIsForgotten) {
  int resized = 0;
  form->on_resize = [&] { ++resized; };
  Visit([&] {
    platform.on_message = [&](const headless::Message&) { form->UserResize(12000, 9000); };
    InEvent([&] {
      desktop.MsgBox("注意");
      form->Unload();
    });
  });
  Visit([&] { EXPECT_EQ(form->Place().width, 9000 + kBorderWidth); });
  EXPECT_EQ(resized, 2);
}

TEST_F(ModalTest, EachLoadDesignsTheWindowAnew) {
  Visit([&] {
    form->UserResize(12000, 9000);
    form->Move({300, 200, 12000, 9000});
  });
  Rect place;
  form->on_load = [&] { place = form->Place(); };
  Visit([] {});
  EXPECT_EQ(place, (Rect{0, 0, 9000 + kBorderWidth, 6000 + kBorderHeight}));
}

}  // namespace
}  // namespace dossierkit::toolkit
