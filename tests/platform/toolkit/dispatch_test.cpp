#include <stdexcept>

#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

using DispatchTest = ToolkitTest;

TEST_F(DispatchTest, PageDroppedInItsOwnEventLivesUntilTheEventEnds) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    std::weak_ptr<Control> page = form->Page();
    std::weak_ptr<Control> box = form->Get("txtName");
    form->Page()->on_key_down = [&](int&, int) {
      form->LoadPage("second");
      EXPECT_FALSE(page.expired());
      EXPECT_FALSE(box.expired());
      EXPECT_EQ(box.lock()->Name(), "txtName");
    };
    user.Press('S', kCtrl);
    EXPECT_TRUE(page.expired());
    EXPECT_TRUE(box.expired());
    EXPECT_EQ(form->Page()->Name(), "second");
  });
}

TEST_F(DispatchTest, ControlOfADroppedPageOutlivesItSafely) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtInner");
    box->SetFocus();
    form->RemovePage();
    EXPECT_TRUE(box->Removed());
    EXPECT_EQ(box->Owner(), nullptr);
    EXPECT_EQ(box->Page(), nullptr);
    EXPECT_EQ(box->Window(), nullptr);
    EXPECT_FALSE(box->HasFocus());
    EXPECT_FALSE(box->Reachable());
    box->UserReplace(0, 0, "a");
    EXPECT_FALSE(box->UserMouseDown(kLeftButton, 0, 0, 0));
    box->UserFocus();
    EXPECT_EQ(box->Text(), "");
  });
}

TEST_F(DispatchTest, ControlOfAPageThatWasNeverShownOutlivesItSafely) {
  auto page = std::make_shared<TestPage>("page", log);
  auto box = page->Controls().Find("txtName");
  page.reset();
  EXPECT_EQ(box->Owner(), nullptr);
  EXPECT_EQ(box->Window(), nullptr);
}

TEST_F(DispatchTest, DroppedPageIsOutOfControlsAtOnce) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->KeyPress, [&](char32_t&) {
      form->RemovePage();
      EXPECT_EQ(form->Controls().Find("page"), nullptr);
    });
    user.Type("a");
    EXPECT_EQ(form->Controls().Find("page"), nullptr);
  });
}

TEST_F(DispatchTest, ControlsOfADroppedPageRaiseNothing) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    auto flag = form->Get<CheckBox>("chkFlag");
    int raised = 0;
    On(box->Change, [&] { ++raised; });
    On(flag->Click, [&] { ++raised; });
    form->RemovePage();
    box->SetText("张三");
    flag->SetValue(1);
    EXPECT_EQ(box->Text(), "张三");
    EXPECT_EQ(raised, 0);
  });
}

TEST_F(DispatchTest, RestOfTheEventIsSkippedForADroppedSource) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    int later = 0;
    form->Page()->on_key_press = [&](char32_t&) { form->RemovePage(); };
    On(box->KeyPress, [&](char32_t&) { ++later; });
    user.Type("a");
    EXPECT_EQ(later, 0);
    EXPECT_EQ(box->Text(), "");
  });
}

TEST_F(DispatchTest, LaterSubscribersOfTheSameEventAreSkippedForADroppedSource) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    int later = 0;
    On(box->Change, [&] { form->RemovePage(); });
    On(box->Change, [&] { ++later; });
    box->SetText("张三");
    EXPECT_EQ(later, 0);
  });
}

TEST_F(DispatchTest, CheckThatDropsThePageEndsTheFocusMove) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->Validate, [&](bool&) { form->LoadPage("second"); });
    TakeLog();
    user.Click("txtNote");
    EXPECT_EQ(TakeLog(),
              (Log{"txtName.Validate", "page.Terminate", "second.Initialize", "second.Show", "page.gone"}));
    EXPECT_EQ(Focus(), "");
  });
}

TEST_F(DispatchTest, GotFocusThatDropsThePageSkipsTheClick) {
  Visit([&] {
    On(form->Get("txtNote")->GotFocus, [&] { form->RemovePage(); });
    TakeLog();
    user.Click("txtNote");
    EXPECT_EQ(CountOf(TakeLog(), "txtNote.MouseDown"), 0U);
  });
}

TEST_F(DispatchTest, MenuClickMayDropThePageAndLoadTheNext) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get<VerticalMenu>("VMenu1")->MenuItemClick,
       [&](std::int32_t&, std::int32_t&) { form->LoadPage("second"); });
    TakeLog();
    user.ClickMenu(2);
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "page.Terminate", "page.gone",
                              "second.Initialize", "second.Show"}));
    EXPECT_EQ(Focus(), "VMenu1");
  });
}

TEST_F(DispatchTest, TerminateComesAtTheRemovalWithoutValidateOrLostFocus) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_terminate = [&] {
      EXPECT_EQ(form->Controls().Find("page"), nullptr);
      EXPECT_EQ(form->ActiveControl(), nullptr);
    };
    TakeLog();
    InEvent([&] {
      form->RemovePage();
      log.push_back("removed");
    });
    EXPECT_EQ(TakeLog(), (Log{"page.Terminate", "page.gone", "removed"}));
  });
}

TEST_F(DispatchTest, PageThatIsTerminatingRaisesNothingAndTakesNoFocus) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    int raised = 0;
    On(box->Change, [&] { ++raised; });
    int failure = 0;
    form->Page()->on_terminate = [&] {
      box->SetText("张三");
      failure = NumberOfFailure([&] { box->SetFocus(); });
    };
    form->RemovePage();
    EXPECT_EQ(raised, 0);
    EXPECT_EQ(failure, 5);
    EXPECT_EQ(form->ActiveControl(), nullptr);
  });
}

TEST_F(DispatchTest, PageWhoseTerminateFailsIsGoneAllTheSame) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    form->Page()->on_terminate = [] { throw environment::MakeFailure(environment::kObjectClosed); };
    EXPECT_EQ(NumberOfFailure([&] { form->RemovePage(); }), environment::kObjectClosed);
    EXPECT_EQ(form->Page(), nullptr);
    EXPECT_TRUE(box->Removed());
    EXPECT_EQ(box->Window(), nullptr);
  });
}

TEST_F(DispatchTest, ShowComesOnceWhenTheHandlerHasEnded) {
  Visit([&] {
    TakeLog();
    InEvent([&] {
      form->LoadPage("second");
      log.push_back("handler ended");
    });
    user.Click("txtName");
    user.Type("ab");
    auto noted = TakeLog();
    EXPECT_EQ(CountOf(noted, "second.Show"), 1U);
    ASSERT_GE(noted.size(), 5U);
    EXPECT_EQ(noted[3], "handler ended");
    EXPECT_EQ(noted[4], "second.Show");
  });
}

TEST_F(DispatchTest, ShowOfAPageMadeInTheLoadWaitsForTheVisibleWindow) {
  form->on_load = [&] {
    form->LoadPage()->on_show = [&] { form->Get("txtName")->SetFocus(); };
    log.push_back("loaded");
  };
  Visit([&] {
    EXPECT_EQ(TakeLog(), (Log{"frmTest.Load", "page.Initialize", "loaded", "frmTest.Activate", "page.Show",
                              "txtName.GotFocus"}));
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(DispatchTest, ShowWaitsForAnInnerWindowOfTheHandler) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  Visit([&] {
    TakeLog();
    InEvent([&] {
      form->LoadPage("second");
      inner->ShowModal();
      log.push_back("handler ended");
    });
    auto noted = TakeLog();
    ASSERT_FALSE(noted.empty());
    EXPECT_EQ(noted.back(), "second.Show");
    EXPECT_EQ(CountOf(noted, "second.Show"), 1U);
  });
}

TEST_F(DispatchTest, PageDroppedBeforeItsShowShowsNothing) {
  Visit([&] {
    TakeLog();
    InEvent([&] {
      form->LoadPage("second");
      form->LoadPage("third");
    });
    auto noted = TakeLog();
    EXPECT_EQ(CountOf(noted, "second.Show"), 0U);
    EXPECT_EQ(CountOf(noted, "third.Show"), 1U);
  });
}

TEST_F(DispatchTest, ShowMayDropItsOwnPage) {
  Visit([&] {
    InEvent([&] { form->LoadPage("second")->on_show = [&] { form->LoadPage("third"); }; });
    EXPECT_EQ(form->Page()->Name(), "third");
    EXPECT_EQ(CountOf(log, "third.Show"), 1U);
  });
}

TEST_F(DispatchTest, PageThatFailsToInitialiseLeavesNothingBehind) {
  struct BadPage : UserControl {
    using UserControl::UserControl;
    void UserControl_Initialize() override { throw std::runtime_error("坏页"); }
  };
  desktop.RegisterClass("BadPage", [](const std::string& name) { return std::make_shared<BadPage>(name); });
  Visit([&] {
    const std::size_t count = form->Controls().Count();
    EXPECT_THROW(form->Controls().Add("BadPage", "bad"), std::runtime_error);
    EXPECT_EQ(form->Controls().Count(), count);
  });
}

TEST_F(DispatchTest, PageIsInItsWindowWhileItIsInitialised) {
  struct AskingPage : UserControl {
    using UserControl::UserControl;
    ControlWindow* window = nullptr;
    void UserControl_Initialize() override { window = Window(); }
  };
  desktop.RegisterClass("AskingPage",
                        [](const std::string& name) { return std::make_shared<AskingPage>(name); });
  Visit([&] {
    const auto page = std::dynamic_pointer_cast<AskingPage>(form->Controls().Add("AskingPage", "asking"));
    EXPECT_EQ(page->window, form.get());
  });
}

TEST_F(DispatchTest, PageThatFailsToInitialiseIsInNoWindow) {
  struct BadPage : UserControl {
    using UserControl::UserControl;
    void UserControl_Initialize() override { throw std::runtime_error("坏页"); }
  };
  const auto bad = std::make_shared<BadPage>("bad");
  desktop.RegisterClass("BadPage", [&](const std::string&) { return bad; });
  Visit([&] {
    EXPECT_THROW(form->Controls().Add("BadPage", "bad"), std::runtime_error);
    EXPECT_EQ(bad->Owner(), nullptr);
    EXPECT_EQ(bad->Window(), nullptr);
  });
}

TEST_F(DispatchTest, ClassIsFoundWithoutRegardToCaseAndTheNameStaysAsGiven) {
  Visit([&] {
    const auto page = form->Controls().Add("tESTpage", "PageOne");
    EXPECT_TRUE(std::dynamic_pointer_cast<TestPage>(page));
    EXPECT_EQ(page->Name(), "PageOne");
    int made = 0;
    desktop.RegisterClass("TESTPAGE", [&](const std::string& name) {
      ++made;
      return std::make_shared<Frame>(name);
    });
    form->Controls().Add("TestPage", "PageTwo");
    EXPECT_EQ(made, 1) << "the later registration stands";
  });
}

TEST_F(DispatchTest, UnknownClassFails) {
  Visit([&] {
    try {
      form->Controls().Add("ctrlUserZ99", "bad");
      FAIL();
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.number(), environment::kUnknownClass);
      EXPECT_NE(failure.description().find("ctrlUserZ99"), std::string::npos);
    }
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
