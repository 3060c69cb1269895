#include <stdexcept>

#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class FailuresTest : public ToolkitTest {
 protected:
  static void Fail() { throw environment::MakeFailure(environment::kOverflow); }
  // The window is gone, nothing is left open, and the next visit is as the first.
  void ExpectCleanState() {
    EXPECT_FALSE(form->Loaded());
    EXPECT_FALSE(form->InVisit());
    EXPECT_EQ(form->ActiveControl(), nullptr);
    EXPECT_EQ(desktop.TopmostForm(), nullptr);
    EXPECT_FALSE(desktop.MessageShown());
    bool ran = false;
    Visit([&] {
      ran = true;
      user.Click("txtName");
      user.Type("a");
      EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "a");
    });
    EXPECT_TRUE(ran);
  }
  std::shared_ptr<TestForm> inner = std::make_shared<TestForm>(desktop, log, "frmInner");
};

TEST_F(FailuresTest, FailureOfAHandlerEndsTheLoopUnloadsTheWindowAndIsThrownFromShow) {
  platform.WillRun([&](Form&) {
    On(form->Get<TextBox>("txtName")->Change, [] { Fail(); });
    user.Click("txtName");
    user.Type("a");
    // Not through the frames of the toolkit: here it has not been thrown.
    EXPECT_TRUE(form->LoopEnded());
    EXPECT_FALSE(form->Deliver([] { FAIL(); }));
  });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  EXPECT_EQ(CountOf(log, "page.Terminate"), 1U);
  ExpectCleanState();
}

TEST_F(FailuresTest, EveryReportOfTheViewKeepsItsFailure) {
  const std::vector<std::function<void()>> reports = {
      [&] {
        On(form->Get("txtName")->MouseDown, [](int, int, int, int) { Fail(); });
        user.Click("txtName");
      },
      [&] {
        On(form->Get("txtName")->MouseMove, [](int, int, int, int) { Fail(); });
        form->Get("txtName")->UserMouseMove(0, 0, 0, 0);
      },
      [&] {
        On(form->Get("txtName")->GotFocus, [] { Fail(); });
        user.Tab();
      },
      [&] {
        On(form->Get("txtName")->GotFocus, [] { Fail(); });
        form->Get("txtName")->UserFocus();
      },
      [&] {
        form->Get("txtName")->SetFocus();
        form->Page()->on_key_down = [](int&, int) { Fail(); };
        EXPECT_FALSE(form->UserKeyDown('S', kCtrl));
      },
      [&] {
        form->Get("txtName")->SetFocus();
        form->Page()->on_key_press = [](char32_t&) { Fail(); };
        EXPECT_FALSE(form->UserKeyPress(U'a'));
      },
      [&] {
        On(form->Get<CheckBox>("chkFlag")->Click, [] { Fail(); });
        user.Click("chkFlag");
      },
      [&] {
        On(form->Get<MaskEdBox>("mskDate")->Change, [] { Fail(); });
        form->Get<MaskEdBox>("mskDate")->UserType("1");
      },
      [&] {
        On(form->Get<Toolbar>("TbMain")->ButtonClick, [](ToolbarButton&) { Fail(); });
        user.ClickToolbar("Exit");
      },
      [&] {
        On(form->Get<VerticalMenu>("VMenu1")->MenuItemClick, [](std::int32_t&, std::int32_t&) { Fail(); });
        user.ClickMenu(1);
      },
      [&] {
        form->on_resize = [] { Fail(); };
        form->UserResize(1, 1);
        form->on_resize = nullptr;
      },
      [&] {
        form->Page()->on_terminate = [] { Fail(); };
        user.Close();
      },
  };
  for (std::size_t i = 0; i < reports.size(); ++i) {
    platform.WillRun([&](Form&) {
      reports[i]();
      EXPECT_TRUE(form->LoopEnded()) << i;
    });
    EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow) << i;
    ExpectCleanState();
  }
}

TEST_F(FailuresTest, FailureInTheShowOfAPageAndAfterSentKeysIsOneOfTheEvent) {
  form->on_load = [&] { form->LoadPage()->on_show = [] { Fail(); }; };
  platform.WillRun([](Form&) { FAIL(); });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  EXPECT_FALSE(platform.AllUsed());
}

TEST_F(FailuresTest, KeySentBeforeAFailureIsNotDelivered) {
  platform.WillRun([&](Form&) {
    form->Get("txtName")->SetFocus();
    TakeLog();
    InEvent([&] {
      form->SendKeys("{tab}");
      Fail();
    });
    EXPECT_EQ(TakeLog(), Log{});
  });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  ExpectCleanState();
}

TEST_F(FailuresTest, FailureInActivateIsThrownFromShowWithoutALoop) {
  form->on_activate = [] { Fail(); };
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  form->on_activate = nullptr;
  ExpectCleanState();
}

TEST_F(FailuresTest, FailureInTheLoadIsThrownFromShow) {
  form->on_load = [] { Fail(); };
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  form->on_load = [&] { form->LoadPage(); };
  ExpectCleanState();
}

TEST_F(FailuresTest, TrapAroundTheInnerShowCatchesIt) {
  bool caught = false;
  Visit([&] {
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      platform.WillRun([&](Form&) { inner->Deliver([] { Fail(); }); });
      try {
        inner->ShowModal();
      } catch (const std::exception& failure) {
        caught = std::string(failure.what()) == "溢出";
      }
      EXPECT_FALSE(inner->Loaded());
    });
    // The outer window goes on as if nothing had been.
    EXPECT_FALSE(form->LoopEnded());
    user.Type("a");
    EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "a");
  });
  EXPECT_TRUE(caught);
}

TEST_F(FailuresTest, WithoutATrapItPassesThroughTwoLoopsToTheCaller) {
  platform.WillRun([&](Form&) {
    InEvent([&] {
      platform.WillRun([&](Form&) { inner->Deliver([] { Fail(); }); });
      inner->ShowModal();
      log.push_back("not reached");
    });
    EXPECT_FALSE(inner->Loaded());
    EXPECT_TRUE(form->LoopEnded());
  });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  EXPECT_EQ(CountOf(log, "not reached"), 0U);
  ExpectCleanState();
}

TEST_F(FailuresTest, FailureInACheckThatRunsBeforeAClickSkipsTheClick) {
  int clicks = 0;
  platform.WillRun([&](Form&) {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [](bool&) { Fail(); });
    On(form->Get<VerticalMenu>("VMenu1")->MenuItemClick, [&](std::int32_t&, std::int32_t&) { ++clicks; });
    user.ClickMenu(1);
  });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  EXPECT_EQ(clicks, 0);
  ExpectCleanState();
}

TEST_F(FailuresTest, FirstFailureWinsOverOneOfTheUnload) {
  platform.WillRun([&](Form&) {
    form->Page()->on_terminate = [] { throw environment::MakeFailure(environment::kObjectClosed); };
    InEvent([] { Fail(); });
  });
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kOverflow);
  ExpectCleanState();
}

TEST_F(FailuresTest, OfTwoFailuresInOneEventTheFirstIsThrown) {
  try {
    Visit([&] {
      InEvent([&] {
        InEvent([] { throw std::runtime_error("第一"); });
        throw std::runtime_error("第二");
      });
    });
    FAIL();
  } catch (const std::runtime_error& failure) {
    EXPECT_STREQ(failure.what(), "第一");
  }
}

TEST_F(FailuresTest, NoLoopRunsOfAWindowThatIsNotOnShow) {
  EXPECT_TRUE(form->LoopEnded());
  Visit([&] { EXPECT_FALSE(form->LoopEnded()); });
  EXPECT_TRUE(form->LoopEnded());
}

TEST_F(FailuresTest, AnyExceptionIsThrownAsItIs) {
  platform.WillRun([&](Form&) { InEvent([] { throw std::logic_error("别的失败"); }); });
  EXPECT_THROW(form->ShowModal(), std::logic_error);
  ExpectCleanState();
}

TEST_F(FailuresTest, FailureWhileAMessageBoxIsOnShowLeavesNoBoxBehind) {
  platform.WillRun([&](Form&) { InEvent([&] { desktop.MsgBox("无人回答", kYesNo); }); });
  EXPECT_THROW(form->ShowModal(), std::logic_error);
  ExpectCleanState();
}

}  // namespace
}  // namespace dossierkit::toolkit
