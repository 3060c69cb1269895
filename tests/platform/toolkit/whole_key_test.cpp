// A key press from the native widget on: what it passes through, and what is left to the widget.
#include "tests/platform/toolkit/picker_test.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

using WholeKeyTest = ToolkitTest;

TEST_F(WholeKeyTest, PassesKeyDownThenKeyPressForEachCharacterThenTheWidget) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_down = [&](int& key, int shift) {
      log.push_back("down " + std::to_string(key) + " " + std::to_string(shift));
    };
    form->Page()->on_key_press = [&](char32_t& key) { log.push_back("press " + std::to_string(key)); };
    TakeLog();
    EXPECT_TRUE(form->UserKey({'A', kShift, U"AB"}));
    EXPECT_EQ(TakeLog(), (Log{"down 65 1", "press 65", "press 66"}));
    EXPECT_TRUE(form->UserKey({kKeyLeft, 0, {}})) << "the caret is the widget's";
    EXPECT_EQ(TakeLog(), Log{"down 37 0"});
    EXPECT_TRUE(form->UserKey({0, 0, U"é"})) << "a key without a code";
    EXPECT_EQ(TakeLog(), Log{"press 233"});
  });
}

TEST_F(WholeKeyTest, ASwallowedKeyPressesNothing) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_down = [](int& key, int) { key = 0; };
    form->Page()->on_key_press = [&](char32_t&) { log.push_back("press"); };
    TakeLog();
    EXPECT_FALSE(form->UserKey({'A', 0, U"a"}));
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(WholeKeyTest, ASwallowedCharacterEndsThePress) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_press = [&](char32_t& key) {
      log.push_back("press " + std::to_string(key));
      key = 0;
    };
    TakeLog();
    EXPECT_FALSE(form->UserKey({'A', 0, U"ab"}));
    EXPECT_EQ(TakeLog(), Log{"press 97"});
  });
}

// The apostrophe is kept out of fields by KeyPress alone.
TEST_F(WholeKeyTest, ATextWithoutAKeyPressIsNotEntered) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    EXPECT_FALSE(form->UserKey({222, kAlt, U"'"}));
    EXPECT_FALSE(form->UserKey({'1', kCtrl, U"1"}));
    EXPECT_TRUE(form->UserKey({222, kCtrl | kAlt, U"'"})) << "AltGr types";
    EXPECT_TRUE(form->UserKey({kKeyDelete, 0, U"\u007f"}));
  });
}

TEST_F(WholeKeyTest, TabMovesTheFocusAndIsNoKeyDown) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_down = [&](int& key, int) { log.push_back("down " + std::to_string(key)); };
    TakeLog();
    EXPECT_FALSE(form->UserKey({kKeyTab, 0, U"\t"}));
    EXPECT_EQ(Focus(), "mskDate");
    EXPECT_FALSE(form->UserKey({kKeyTab, kShift, {}}));
    EXPECT_EQ(Focus(), "txtName");
    EXPECT_EQ(CountOf(TakeLog(), "down 9"), 0U);
    EXPECT_TRUE(form->UserKey({kKeyTab, kCtrl, {}}));
    EXPECT_EQ(Focus(), "txtName");
    EXPECT_EQ(TakeLog(), Log{"down 9"});
  });
}

TEST_F(WholeKeyTest, EnterThatEndsACompositionGoesNowhere) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_down = [&](int& key, int) { log.push_back("down " + std::to_string(key)); };
    form->UserCompose(true);
    TakeLog();
    EXPECT_FALSE(form->UserKey({kKeyReturn, 0, U"\r"}));
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_TRUE(form->UserKey({kKeyLeft, 0, {}})) << "other keys go on";
    form->UserCompose(false);
    TakeLog();
    EXPECT_TRUE(form->UserKey({kKeyReturn, 0, U"\r"}));
    EXPECT_EQ(TakeLog(), Log{"down 13"});
  });
}

TEST_F(WholeKeyTest, AMessageBoxEndsTheComposition) {
  Visit([&] {
    form->UserCompose(true);
    desktop.MsgBox("x");
    EXPECT_FALSE(desktop.Composing());
    form->UserCompose(true);
    desktop.ChooseFile(CommonDialog("dlg"));
    EXPECT_FALSE(desktop.Composing());
    auto other = std::make_shared<TestForm>(desktop, log, "frmOther");
    platform.WillRun([&](Form&) { EXPECT_FALSE(desktop.Composing()); });
    form->UserCompose(true);
    other->ShowModal();
  });
}

TEST_F(WholeKeyTest, MnemonicsClickButtonsAndCheckBoxesInSight) {
  Visit([&] {
    const auto button = form->Page()->Controls().Make<CommandButton>("cmd");
    button->SetCaption("更新(&U)");
    On(button->Click, [&] { log.push_back("click"); });
    const auto check = form->Get<CheckBox>("chkFlag");
    check->SetCaption("在职(&Z)");
    form->Page()->on_key_down = [&](int& key, int) { log.push_back("down " + std::to_string(key)); };
    form->Get("txtName")->SetFocus();
    TakeLog();
    EXPECT_FALSE(form->UserKey({'U', kAlt, U"u"}));
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate", "txtName.LostFocus", "click"}));
    EXPECT_EQ(Focus(), "cmd");
    EXPECT_FALSE(form->UserKey({'Z', kAlt | kShift, {}}));
    EXPECT_EQ(check->Value(), 1);
    TakeLog();
    check->SetVisible(false);
    form->Get("txtName")->SetFocus();
    TakeLog();
    EXPECT_FALSE(form->UserKey({'Z', kAlt, U"z"})) << "hidden: a key that types nothing";
    EXPECT_EQ(TakeLog(), Log{"down 90"});
    EXPECT_EQ(check->Value(), 1);
  });
}

TEST_F(WholeKeyTest, AMnemonicThatTheCheckRefusesClicksNothing) {
  Visit([&] {
    const auto box = form->Get("txtName");
    box->SetFocus();
    On(box->Validate, [](bool& cancel) { cancel = true; });
    const auto check = form->Get<CheckBox>("chkFlag");
    check->SetCaption("在职(&Z)");
    EXPECT_FALSE(form->UserKey({'Z', kAlt, U"z"}));
    EXPECT_EQ(check->Value(), 0);
    EXPECT_EQ(Focus(), "txtName");
  });
}

TEST_F(WholeKeyTest, EnterOnAButtonClicksIt) {
  Visit([&] {
    const auto button = form->Page()->Controls().Make<CommandButton>("cmd");
    On(button->Click, [&] { log.push_back("click"); });
    button->SetFocus();
    TakeLog();
    EXPECT_FALSE(form->UserKey({kKeyReturn, 0, U"\r"}));
    EXPECT_EQ(TakeLog(), Log{"click"});
    EXPECT_TRUE(form->UserKey({' ', 0, U" "})) << "the widget shows it pressed until it is released";
  });
}

TEST_F(WholeKeyTest, AMaskedBoxTypesAndErases) {
  Visit([&] {
    const auto box = form->Get<MaskEdBox>("mskDate");
    box->SetFocus();
    EXPECT_FALSE(form->UserKey({'1', 0, U"1"}));
    EXPECT_FALSE(form->UserKey({kKeyPad0 + 9, 0, U"9"}));
    EXPECT_EQ(box->Text(), "19__年__月");
    EXPECT_FALSE(form->UserKey({kKeyBack, 0, U"\b"}));
    EXPECT_EQ(box->Text(), "1___年__月");
    box->SetSelStart(0);
    EXPECT_FALSE(form->UserKey({kKeyDelete, 0, {}}));
    EXPECT_EQ(box->Text(), "____年__月");
    EXPECT_TRUE(form->UserKey({kKeyHome, 0, {}})) << "the caret is the widget's";
    EXPECT_EQ(platform.beeps, 0);
    EXPECT_FALSE(form->UserKey({'X', 0, U"x"}));
    EXPECT_EQ(platform.beeps, 1);
  });
}

TEST_F(WholeKeyTest, CommittedTextGivesWhatWasNotSwallowed) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_press = [](char32_t& key) { key = key == U'三' ? 0 : key; };
    EXPECT_EQ(form->UserCommit("张三𠮷"), "张𠮷");
    EXPECT_EQ(form->UserCommit(""), "");
  });
}

TEST_F(WholeKeyTest, ACommitThatDropsThePageEntersNothing) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    int presses = 0;
    form->Page()->on_key_press = [&](char32_t&) {
      ++presses;
      form->RemovePage();
    };
    EXPECT_EQ(form->UserCommit("张三"), "");
    EXPECT_EQ(presses, 1);
  });
}

TEST_F(WholeKeyTest, AKeyThatDropsThePageGoesNoFurther) {
  Visit([&] {
    form->Get("txtName")->SetFocus();
    form->Page()->on_key_down = [&](int&, int) { form->LoadPage("next"); };
    EXPECT_FALSE(form->UserKey({'A', 0, U"a"}));
  });
}

TEST_F(WholeKeyTest, TheMenuMarksByArrowsAndPagesAndClicksByEnter) {
  Visit([&] {
    const auto menu = form->Get<VerticalMenu>("VMenu1");
    menu->set_menuitemsmax(20);
    menu->Move({0, 0, 2000, 5 * headless::kRowHeight});
    menu->SetFocus();
    int clicked = 0;
    On(menu->MenuItemClick, [&](std::int32_t&, std::int32_t& item) { clicked = item; });
    const auto marks = [&](int key) {
      EXPECT_FALSE(form->UserKey({key, 0, {}}));
      return menu->Marked();
    };
    EXPECT_EQ(marks(kKeyUp), 1);
    EXPECT_EQ(marks(kKeyDown), 2);
    EXPECT_EQ(marks(kKeyPageDown), 6) << "one row of five stays in sight";
    EXPECT_EQ(marks(kKeyEnd), 20);
    EXPECT_EQ(marks(kKeyDown), 20);
    EXPECT_EQ(marks(kKeyPageUp), 16);
    EXPECT_EQ(marks(kKeyHome), 1);
    EXPECT_EQ(clicked, 0);
    marks(kKeyDown);
    EXPECT_FALSE(form->UserKey({kKeyReturn, 0, U"\r"}));
    EXPECT_EQ(clicked, 2);
    EXPECT_TRUE(form->UserKey({'A', 0, U"a"}));
  });
}

TEST_F(WholeKeyTest, AKeyChoosesThePresentRowWhereItDoesNotLookChosen) {
  Visit([&] {
    ado::Snapshot data;
    data.AddColumn({"序号", ado::ColumnKind::kInteger, {}});
    for (int i = 1; i <= 3; ++i) data.AppendInteger(i);
    const auto rows = std::make_shared<ado::Recordset>(std::move(data));
    const auto grid = form->Get<DataGrid>("grid");
    grid->SetDataSource(rows);
    grid->SetFocus();
    int moves = 0;
    On(rows->MoveComplete, [&](std::int32_t, std::int32_t&, ado::Recordset&) { ++moves; });
    EXPECT_FALSE(form->UserKey({kKeyHome, 0, {}}));
    EXPECT_EQ(moves, 0) << "it is chosen already";
    grid->SetShowsRow(false);
    EXPECT_FALSE(form->UserKey({kKeyHome, 0, {}}));
    EXPECT_EQ(moves, 1);
  });
}

using PickerKeyTest = PickerTest;

TEST_F(PickerKeyTest, AListPagesByTheRowsInSight) {
  Visit([&] {
    FillList(50);
    form->strip->SetTab(1);
    form->list->Move({0, 0, 1000, 10 * headless::kRowHeight});
    form->list->SetFocus();
    const auto row = [&](int key) {
      EXPECT_FALSE(form->UserKey({key, 0, {}}));
      return form->list->ListIndex();
    };
    EXPECT_EQ(row(kKeyDown), 0);
    EXPECT_EQ(row(kKeyPageDown), 9);
    EXPECT_EQ(row(kKeyRight), 10);
    EXPECT_EQ(row(kKeyPageUp), 1);
    EXPECT_EQ(row(kKeyPageUp), 0);
    EXPECT_EQ(row(kKeyEnd), 49);
    EXPECT_EQ(row(kKeyPageDown), 49);
    EXPECT_EQ(row(kKeyLeft), 48);
    EXPECT_EQ(row(kKeyUp), 47);
    EXPECT_EQ(row(kKeyHome), 0);
    EXPECT_TRUE(form->UserKey({'A', 0, U"a"}));
  });
}

TEST_F(PickerKeyTest, AnEmptyListKeepsItsKeys) {
  Visit([&] {
    form->strip->SetTab(1);
    form->list->SetFocus();
    EXPECT_FALSE(form->UserKey({kKeyDown, 0, {}}));
    EXPECT_EQ(form->list->ListIndex(), -1);
  });
}

TEST_F(PickerKeyTest, ATreePagesAndFoldsByKeys) {
  Visit([&] {
    FillTree();
    form->tree->Move({0, 0, 1000, 3 * headless::kRowHeight});
    form->tree->SetFocus();
    const auto node = [&](int key, const char32_t* text = U"") {
      EXPECT_FALSE(form->UserKey({key, 0, text}));
      return Selected();
    };
    EXPECT_EQ(Selected(), "G1");
    EXPECT_EQ(node(187, U"+"), "G1");
    EXPECT_EQ(node(kKeyPageDown), "G12") << "one row of three stays in sight";
    EXPECT_EQ(node(kKeyPageDown), "G2");
    EXPECT_EQ(node(kKeyPageUp), "G11");
    EXPECT_EQ(node(kKeyUp), "G1");
    EXPECT_EQ(node(107, U"+"), "G1") << "on the keypad; open already";
    EXPECT_EQ(node(kKeyDown), "G11");
    EXPECT_EQ(node(kKeyUp), "G1");
    EXPECT_EQ(node(189, U"-"), "G1");
    EXPECT_EQ(node(kKeyDown), "G2") << "closed again";
    EXPECT_TRUE(form->UserKey({187, 0, U"="}));
  });
}

TEST_F(PickerKeyTest, AnEmptyTreeKeepsItsKeys) {
  Visit([&] {
    form->tree->SetFocus();
    for (const int key : {kKeyHome, kKeyEnd, kKeyUp, kKeyDown, kKeyLeft, kKeyRight, kKeyPageUp, kKeyPageDown})
      EXPECT_FALSE(form->UserKey({key, 0, {}}));
    EXPECT_FALSE(form->UserKey({187, 0, U"+"}));
    EXPECT_EQ(form->tree->SelectedItem(), kNoNode);
  });
}

TEST_F(PickerKeyTest, TabsTurnByArrowsToTheSides) {
  Visit([&] {
    form->strip->SetFocus();
    EXPECT_FALSE(form->UserKey({kKeyRight, 0, {}}));
    EXPECT_EQ(form->strip->Tab(), 1);
    EXPECT_FALSE(form->UserKey({kKeyRight, 0, {}}));
    EXPECT_EQ(form->strip->Tab(), 1);
    EXPECT_FALSE(form->UserKey({kKeyLeft, 0, {}}));
    EXPECT_EQ(form->strip->Tab(), 0);
    EXPECT_TRUE(form->UserKey({kKeyDown, 0, {}}));
  });
}

TEST_F(PickerKeyTest, AMnemonicOnAHiddenTabIsNone) {
  Visit([&] {
    const auto hidden = form->Controls().Make<CommandButton>("cmdHidden");
    hidden->SetCaption("查找(&F)");
    form->strip->SetTabPage(*hidden, 1);
    int clicks = 0;
    On(hidden->Click, [&] { ++clicks; });
    form->UserKey({'F', kAlt, U"f"});
    EXPECT_EQ(clicks, 0);
    form->strip->SetTab(1);
    EXPECT_FALSE(form->UserKey({'F', kAlt, U"f"}));
    EXPECT_EQ(clicks, 1);
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
