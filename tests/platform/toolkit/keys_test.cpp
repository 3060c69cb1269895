#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

using KeysTest = ToolkitTest;

TEST_F(KeysTest, PageSeesKeysBeforeTheControlWithTheFocus) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    form->Page()->on_key_down = [&](int& key, int shift) {
      log.push_back("page.KeyDown " + std::to_string(key + shift));
    };
    form->Page()->on_key_press = [&](char32_t& key) {
      log.push_back("page.KeyPress " + std::to_string(key));
    };
    On(box->KeyDown,
       [&](int& key, int shift) { log.push_back("box.KeyDown " + std::to_string(key + shift)); });
    On(box->KeyPress, [&](char32_t& key) { log.push_back("box.KeyPress " + std::to_string(key)); });
    TakeLog();
    user.Type("a");
    EXPECT_EQ(TakeLog(), (Log{"page.KeyDown 65", "box.KeyDown 65", "page.KeyPress 97", "box.KeyPress 97"}));
    EXPECT_EQ(box->Text(), "a");
  });
}

TEST_F(KeysTest, KeyThatThePageSetsToZeroGoesNoFurther) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    int seen = 0;
    On(box->KeyDown, [&](int&, int) { ++seen; });
    On(box->KeyPress, [&](char32_t&) { ++seen; });
    form->Page()->on_key_press = [](char32_t& key) {
      if (key == U'\'') key = 0;
    };
    user.Type("O'B");
    EXPECT_EQ(box->Text(), "OB");
    EXPECT_EQ(seen, 5);
    form->Page()->on_key_down = [](int& key, int) { key = 0; };
    user.Type("x");
    EXPECT_EQ(box->Text(), "OB");
    EXPECT_EQ(seen, 5);
    EXPECT_FALSE(form->UserKeyDown('X', 0));
  });
}

TEST_F(KeysTest, KeyThatTheControlSetsToZeroIsNotEntered) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    On(box->KeyPress, [](char32_t& key) { key = key == U'b' ? 0 : key; });
    user.Type("abc");
    EXPECT_EQ(box->Text(), "ac");
    On(box->KeyDown, [](int& key, int) { key = 0; });
    user.Type("d");
    EXPECT_EQ(box->Text(), "ac");
  });
}

TEST_F(KeysTest, WindowWithPreviewedKeysSeesThemFirst) {
  form->SetKeyPreview(true);
  form->on_key_press = [&](char32_t& key) {
    if (key == U'\'') {
      key = 0;
      desktop.Beep();
    }
  };
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    int seen = 0;
    form->Page()->on_key_press = [&](char32_t&) { ++seen; };
    user.Type("a'b");
    EXPECT_EQ(box->Text(), "ab");
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(KeysTest, KeyFollowsTheFocusNotTheControlThatHadIt) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->KeyDown, [&](int&, int) { form->Get("txtNote")->SetFocus(); });
    // The control that would enter the character has lost the focus.
    EXPECT_FALSE(form->UserKeyDown('A', 0));
    EXPECT_EQ(Focus(), "txtNote");
  });
}

TEST_F(KeysTest, ACharacterIsNotEnteredWhereItsKeyPressMovedTheFocus) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    On(form->Get("txtName")->KeyPress, [&](char32_t&) { form->Get("txtNote")->SetFocus(); });
    EXPECT_FALSE(form->UserKey({'A', 0, U"a"}));
    EXPECT_EQ(form->UserCommit("b"), "b") << "the present field has no such handler";
    EXPECT_EQ(Focus(), "txtNote");
  });
}

TEST_F(KeysTest, KeysWithoutAFocusDoNothing) {
  Visit([&] {
    int seen = 0;
    form->Page()->on_key_down = [&](int&, int) { ++seen; };
    user.Press('S', kCtrl);
    user.Type("a");
    EXPECT_EQ(seen, 0);
  });
}

TEST_F(KeysTest, CommittedTextOfAnInputMethodPassesKeyPressCharacterByCharacter) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    std::u32string pressed;
    int downs = 0;
    form->Page()->on_key_press = [&](char32_t& key) {
      pressed += key;
      if (key == U'三') key = 0;
    };
    form->Page()->on_key_down = [&](int&, int) { ++downs; };
    user.Type("张三丰");
    EXPECT_EQ(pressed, U"张三丰");
    EXPECT_EQ(downs, 0);
    EXPECT_EQ(box->Text(), "张丰");
  });
}

// --- F4 and Alt+Down ------------------------------------------------------------------------------

TEST_F(KeysTest, F4AndAltDownRaiseDblClickOfATextBoxAndNothingElse) {
  Visit([&] {
    for (const char* name : {"txtName", "txtNote"}) {
      auto box = form->Get<TextBox>(name);
      box->SetText("甲\r\n乙");
      box->SetFocus();
      box->Select(1, 0);
      On(box->DblClick, [&, name] { log.push_back(std::string(name) + ".DblClick"); });
      On(box->Click, [&] { log.push_back("Click"); });
      On(box->KeyPress, [&](char32_t&) { log.push_back("KeyPress"); });
      TakeLog();
      EXPECT_FALSE(form->UserKeyDown(kKeyF4, 0)) << "it goes no further";
      EXPECT_FALSE(form->UserKeyDown(kKeyDown, kAlt));
      const std::string raised = std::string(name) + ".DblClick";
      EXPECT_EQ(TakeLog(), (Log{raised, raised}));
      EXPECT_EQ(box->SelStart(), 1U);
    }
  });
}

TEST_F(KeysTest, OtherModifiersOpenNothing) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    int clicks = 0;
    On(box->DblClick, [&] { ++clicks; });
    for (int shift = 0; shift < 8; ++shift) {
      EXPECT_EQ(form->UserKeyDown(kKeyF4, shift), shift != 0) << shift;
      EXPECT_EQ(form->UserKeyDown(kKeyDown, shift), shift != kAlt) << shift;
    }
    EXPECT_TRUE(form->UserKeyDown(kKeyUp, kAlt));
    EXPECT_EQ(clicks, 2) << "of F4 alone and of Alt+Down";
  });
}

TEST_F(KeysTest, F4ComesAfterTheKeyDownOfThePageAndOfTheBox) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    form->Page()->on_key_down = [&](int& key, int) { log.push_back("page " + std::to_string(key)); };
    On(box->KeyDown, [&](int& key, int) { log.push_back("box " + std::to_string(key)); });
    On(box->DblClick, [&] { log.push_back("DblClick"); });
    TakeLog();
    user.Press(kKeyF4);
    user.Press(kKeyDown, kAlt);
    EXPECT_EQ(TakeLog(), (Log{"page 115", "box 115", "DblClick", "page 40", "box 40", "DblClick"}));
    form->Page()->on_key_down = [](int& key, int) { key = 0; };
    user.Press(kKeyF4);
    EXPECT_EQ(TakeLog(), Log{}) << "the page swallowed it";
    form->Page()->on_key_down = {};
    On(box->KeyDown, [&](int&, int) { form->Get("txtNote")->SetFocus(); });
    TakeLog();
    user.Press(kKeyF4);
    EXPECT_EQ(CountOf(TakeLog(), "DblClick"), 0U) << "the focus went";
  });
}

TEST_F(KeysTest, F4MeansNothingInOtherControlsAndInADisabledBox) {
  Visit([&] {
    int clicks = 0;
    auto box = form->Get<TextBox>("txtName");
    On(box->DblClick, [&] { ++clicks; });
    form->Get("mskDate")->SetFocus();
    EXPECT_TRUE(form->UserKeyDown(kKeyF4, 0));
    EXPECT_TRUE(form->UserKeyDown(kKeyDown, kAlt));
    form->Get("VMenu1")->SetFocus();
    EXPECT_TRUE(form->UserKeyDown(kKeyF4, 0));
    box->SetFocus();
    box->SetEnabled(false);
    user.Press(kKeyF4);
    EXPECT_EQ(clicks, 0);
  });
}

TEST_F(KeysTest, F4MayDropItsOwnPage) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    On(box->DblClick, [&] { form->LoadPage("second"); });
    user.Press(kKeyF4);
    EXPECT_TRUE(box->Removed());
    EXPECT_EQ(form->Page()->Name(), "second");
  });
}

// --- Enter ---------------------------------------------------------------------------------------

TEST_F(KeysTest, EnterBreaksALineInABoxOfSeveralLinesOnly) {
  Visit([&] {
    form->Get("txtNote")->SetFocus();
    user.Type("a");
    user.Press(kKeyReturn);
    user.Type("b");
    EXPECT_EQ(form->Get<TextBox>("txtNote")->Text(), "a\r\nb");
    form->Get("txtName")->SetFocus();
    user.Type("a");
    user.Press(kKeyReturn);
    user.Type("b");
    EXPECT_EQ(form->Get<TextBox>("txtName")->Text(), "ab");
  });
}

TEST_F(KeysTest, CtrlEnterBreaksALineWhereEnterIsSwallowed) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtNote");
    box->SetFocus();
    On(box->KeyPress, [](char32_t& key) { key = key == 13 ? 0 : key; });
    user.Type("a");
    user.Press(kKeyReturn);
    user.Press(kKeyReturn, kCtrl);
    user.Type("b");
    EXPECT_EQ(box->Text(), "a\r\nb");
  });
}

TEST_F(KeysTest, EscapeClosesNothing) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    user.Press(kKeyEscape);
    EXPECT_TRUE(form->Loaded());
    EXPECT_FALSE(form->LoopEnded());
  });
}

TEST_F(KeysTest, DefaultAndCancelButtonsTakeEnterAndEscape) {
  form->on_load = [&] {
    form->LoadPage();
    form->Controls().Make<CommandButton>("cmdOk")->SetDefault(true);
    form->Controls().Make<CommandButton>("cmdOther");
    form->Controls().Make<CommandButton>("cmdCancel")->SetCancel(true);
  };
  Visit([&] {
    for (const char* name : {"cmdOk", "cmdOther", "cmdCancel"}) {
      On(form->Get<CommandButton>(name)->Click, [&, name] { log.push_back(std::string(name) + ".Click"); });
    }
    form->Get("VMenu1")->SetFocus();
    TakeLog();
    user.Press(kKeyReturn);
    user.Press(kKeyEscape);
    EXPECT_EQ(TakeLog(), (Log{"cmdOk.Click", "cmdCancel.Click"}));
    form->Get("cmdOther")->SetFocus();
    user.Press(kKeyReturn);
    EXPECT_EQ(TakeLog(), (Log{"cmdOther.Click"}));
    form->Get("VMenu1")->SetFocus();
    form->Get("cmdOk")->SetEnabled(false);
    user.Press(kKeyReturn, kShift);
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(KeysTest, ADefaultButtonThatCannotBeClickedLeavesEnterAlone) {
  form->on_load = [&] {
    form->LoadPage();
    form->Controls().Make<CommandButton>("cmdOk")->SetDefault(true);
    form->Controls().Make<CommandButton>("cmdNext")->SetDefault(true);
  };
  Visit([&] {
    On(form->Get<CommandButton>("cmdNext")->Click, [&] { log.push_back("cmdNext.Click"); });
    form->Get("txtName")->SetFocus();
    form->Get("cmdOk")->SetVisible(false);
    TakeLog();
    EXPECT_FALSE(form->UserKeyDown(kKeyReturn, 0));
    EXPECT_EQ(CountOf(TakeLog(), "cmdNext.Click"), 1U);
    form->Get("txtName")->SetFocus();
    form->Get("cmdNext")->SetEnabled(false);
    EXPECT_TRUE(form->UserKeyDown(kKeyReturn, 0)) << "the box gets it";
  });
}

// --- sent keys -----------------------------------------------------------------------------------

TEST_F(KeysTest, SentTabAndHomeEndMoveOnAndSelectTheWholeText) {
  Visit([&] {
    auto date = form->Get<MaskEdBox>("mskDate");
    date->SetText("1990年03月");
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    On(box->KeyPress, [&](char32_t& key) {
      key = 0;
      form->SendKeys("{tab}");
      form->SendKeys("{Home}+{End}");
      // Nothing before the key event has ended.
      EXPECT_EQ(Focus(), "txtName");
    });
    user.Press(kKeyReturn);
    EXPECT_EQ(Focus(), "mskDate");
    EXPECT_EQ(date->SelStart(), 0U);
    EXPECT_EQ(date->SelLength(), 8U);
    EXPECT_EQ(form->Get<TextBox>("txtName")->SelLength(), 0U);
  });
}

TEST_F(KeysTest, SentKeysKeepTheirOrder) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetText("张三");
    form->Get<TextBox>("txtNote")->SetText("李四\r\n王五");
    box->SetFocus();
    InEvent([&] {
      form->SendKeys("{Home}+{End}");
      form->SendKeys("{tab}");
      form->SendKeys("{tab}");
      form->SendKeys("{Home}+{End}");
    });
    EXPECT_EQ(Focus(), "txtNote");
    EXPECT_EQ(box->SelLength(), 2U);
    EXPECT_EQ(form->Get<MaskEdBox>("mskDate")->SelLength(), 0U);
    EXPECT_EQ(form->Get<TextBox>("txtNote")->SelLength(), 6U);
  });
}

TEST_F(KeysTest, SentTabLetsTheFieldBeChecked) {
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetText("坏");
    box->SetFocus();
    On(box->Validate, [](bool& cancel) { cancel = true; });
    InEvent([&] {
      form->SendKeys("{tab}");
      form->SendKeys("{Home}+{End}");
    });
    EXPECT_EQ(Focus(), "txtName");
    EXPECT_EQ(box->SelLength(), 1U);
  });
}

TEST_F(KeysTest, SentHomeEndSelectsNothingInAControlWithoutText) {
  Visit([&] {
    form->Get("txtNote")->SetFocus();
    InEvent([&] {
      form->SendKeys("{tab}");
      form->SendKeys("{Home}+{End}");
    });
    EXPECT_EQ(Focus(), "chkFlag");
  });
}

TEST_F(KeysTest, SentKeysWaitForAWindowThatTheEventOpens) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  inner->on_load = [&] { inner->LoadPage("inner"); };
  Visit([&] {
    auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    On(box->KeyPress, [&](char32_t& key) {
      key = 0;
      form->SendKeys("{tab}");
      platform.WillRun([&](Form&) {
        user.Find("txtName")->SetFocus();
        user.Press('A');
        user.Type("x");
        // Neither came here, nor has it gone to the window below.
        EXPECT_EQ(user.Window().ActiveControl()->Name(), "txtName");
        EXPECT_EQ(Focus(), "txtName");
      });
      inner->ShowModal();
      EXPECT_EQ(Focus(), "txtName");
    });
    user.Press(kKeyReturn);
    EXPECT_EQ(Focus(), "mskDate");
  });
  EXPECT_TRUE(platform.AllUsed());
}

TEST_F(KeysTest, KeysSentInsideAnInnerWindowGoThere) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  inner->on_load = [&] { inner->LoadPage("inner"); };
  Visit([&] {
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      platform.WillRun([&](Form&) {
        inner->Get("txtName")->SetFocus();
        inner->Deliver([&] { inner->SendKeys("{tab}"); });
        EXPECT_EQ(inner->ActiveControl()->Name(), "mskDate");
      });
      inner->ShowModal();
    });
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(KeysTest, SentKeysAreDroppedWithTheirPage) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      form->SendKeys("{tab}");
      form->SendKeys("{Home}+{End}");
      auto page = form->LoadPage("second");
      page->Controls().Find("txtName")->SetFocus();
      form->Get<TextBox>("txtName")->SetText("张三");
    });
    EXPECT_EQ(Focus(), "txtName");
    EXPECT_EQ(form->Get<TextBox>("txtName")->SelLength(), 0U);
  });
}

TEST_F(KeysTest, SentKeysAreDroppedWithTheirPageThoughSomebodyHoldsIt) {
  Visit([&] {
    const auto held = form->Page();
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      form->SendKeys("{tab}");
      form->LoadPage("second")->Controls().Find("txtName")->SetFocus();
    });
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(KeysTest, KeysSentInALoadThatUnloadsDoNotReachTheNextVisit) {
  form->on_load = [&] {
    form->LoadPage();
    form->SendKeys("{tab}");
    form->Unload();
  };
  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), environment::kObjectUnloaded);
  form->on_load = [&] { form->LoadPage(); };
  form->on_activate = [&] { form->Get("txtName")->SetFocus(); };
  Visit([&] { EXPECT_EQ(Focus(), "txtName"); });
}

TEST_F(KeysTest, SentKeysAreDroppedWithTheirWindow) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      form->SendKeys("{tab}");
      form->Unload();
    });
  });
  Visit([&] { EXPECT_EQ(Focus(), ""); });
}

TEST_F(KeysTest, SentKeysAreDroppedWhereTheWindowIsHidden) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      form->SendKeys("{tab}");
      form->Hide();
    });
  });
  Visit([&] { EXPECT_EQ(Focus(), "txtName"); });
}

TEST_F(KeysTest, KeysSentByAnInnerHandlerWaitForTheWholeEvent) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    InEvent([&] {
      InEvent([&] { form->SendKeys("{tab}"); });
      EXPECT_EQ(Focus(), "txtName");
    });
    EXPECT_EQ(Focus(), "mskDate");
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
