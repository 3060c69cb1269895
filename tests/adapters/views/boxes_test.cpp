// What every view set must do with text boxes, masked boxes, check boxes, buttons, focus and keys.
#include "platform/environment/failure.h"
#include "tests/adapters/views/view_test.h"

namespace dossierkit::views {
namespace {

using toolkit::CheckBox;
using toolkit::CommandButton;
using toolkit::kAlt;
using toolkit::kCtrl;
using toolkit::kShift;
using toolkit::MaskEdBox;
using toolkit::Selection;
using toolkit::TextBox;

using ViewBoxes = ViewTest;

TEST_F(ViewBoxes, WhatTheProgramAssignsShowsAtOnceAndStaysAsItIs) {
  Visit([&] {
    const auto box = form->Get<TextBox>("txtName");
    box->SetText(" 张\xE2\x80\x83三 ");
    EXPECT_EQ(driver->Text("txtName"), " 张\xE2\x80\x83三 ");
    EXPECT_EQ(box->Text(), " 张\xE2\x80\x83三 ");
    const auto note = form->Get<TextBox>("txtNote");
    note->SetText("一\r\n二\r\n");
    EXPECT_EQ(driver->Text("txtNote"), "一\r\n二\r\n");
    EXPECT_EQ(note->Text(), "一\r\n二\r\n");
    form->Get<toolkit::Label>("labName")->SetCaption("名称");
    EXPECT_EQ(driver->Text("labName"), "名称");
    form->SetCaption("另一窗口");
    EXPECT_EQ(driver->Text("frmSample"), "另一窗口");
  });
}

TEST_F(ViewBoxes, TypingGoesThroughTheModel) {
  Visit([&] {
    user.Click("txtName");
    const auto box = form->Get<TextBox>("txtName");
    box->SetMaxLength(4);
    On(box->Change, [&] { log.push_back(box->Text()); });
    user.Type("ab张");
    EXPECT_EQ(TakeLog(), (Log{"a", "ab", "ab张"}));
    EXPECT_EQ(driver->Text("txtName"), "ab张");
    user.Type("cd");
    EXPECT_EQ(driver->Text("txtName"), "ab张c") << "no longer than MaxLength";
    EXPECT_EQ(driver->Script().beeps, 1);
    EXPECT_EQ(driver->Selected("txtName"), (Selection{4, 0}));
    user.Press(toolkit::kKeyBack);
    EXPECT_EQ(box->Text(), "ab张");
    user.Press(toolkit::kKeyHome);
    EXPECT_EQ(box->SelStart(), 0U);
    user.Press(toolkit::kKeyDelete);
    EXPECT_EQ(driver->Text("txtName"), "b张");
  });
}

TEST_F(ViewBoxes, AHandlerOfChangeMayAssignAnotherText) {
  Visit([&] {
    user.Click("txtName");
    const auto box = form->Get<TextBox>("txtName");
    On(box->Change, [&] {
      if (box->Text() == "ab") box->SetText("xyz");
    });
    user.Type("ab");
    EXPECT_EQ(driver->Text("txtName"), "xyz");
    EXPECT_EQ(driver->Selected("txtName"), (Selection{0, 0}));
  });
}

TEST_F(ViewBoxes, ASwallowedKeyOrCharacterIsNotEntered) {
  Visit([&] {
    user.Click("txtName");
    form->page->on_key_press = [](char32_t& key) {
      if (key == U'\'' || key == U'三') key = 0;
    };
    user.Type("O'B张三");
    EXPECT_EQ(driver->Text("txtName"), "OB张");
    form->page->on_key_down = [](int& key, int) { key = 0; };
    user.Type("x");
    user.Press(toolkit::kKeyBack);
    EXPECT_EQ(driver->Text("txtName"), "OB张");
  });
}

TEST_F(ViewBoxes, KeysPassThePageThenTheControl) {
  Visit([&] {
    user.Click("txtName");
    form->page->on_key_down = [&](int& key, int shift) {
      const bool shift_alone = key >= 16 && key <= 18;
      if (!shift_alone) log.push_back("down " + std::to_string(key) + " " + std::to_string(shift));
    };
    form->page->on_key_press = [&](char32_t& key) { log.push_back("press " + std::to_string(key)); };
    user.Press('S', kCtrl);
    EXPECT_EQ(TakeLog(), (Log{"down 83 2", "press 19"}));
    user.Press(190, kCtrl);
    EXPECT_EQ(TakeLog(), Log{"down 190 2"});
    user.Press(toolkit::kKeyReturn, kCtrl);
    EXPECT_EQ(TakeLog(), (Log{"down 13 2", "press 10"}));
    user.Press(toolkit::kKeyEscape);
    EXPECT_EQ(TakeLog(), (Log{"down 27 0", "press 27"}));
    EXPECT_TRUE(form->Shown()) << "Esc closes no window";
    user.Type("，");
    EXPECT_EQ(TakeLog(), Log{"press 65292"}) << "what an input method hands over goes with no key down";
  });
}

TEST_F(ViewBoxes, SeveralLinesBreakAtEnterAndOneLineStopsAtABreak) {
  Visit([&] {
    user.Click("txtNote");
    user.Type("a");
    user.Press(toolkit::kKeyReturn);
    user.Type("b");
    EXPECT_EQ(form->Get<TextBox>("txtNote")->Text(), "a\r\nb");
    user.Paste("c\nd");
    EXPECT_EQ(driver->Text("txtNote"), "a\r\nbc\r\nd");
    user.Click("txtName");
    user.Paste("一\n二");
    EXPECT_EQ(driver->Text("txtName"), "一");
  });
}

TEST_F(ViewBoxes, UndoCutCopyPasteAndSelectAllByKeys) {
  Visit([&] {
    user.Click("txtName");
    user.Type("abc");
    user.Press('A', kCtrl);
    EXPECT_EQ(driver->Selected("txtName"), (Selection{0, 3}));
    user.Press('X', kCtrl);
    EXPECT_EQ(driver->Text("txtName"), "");
    user.Press('V', kCtrl);
    user.Press(toolkit::kKeyInsert, kShift);
    EXPECT_EQ(driver->Text("txtName"), "abcabc");
    user.Press('Z', kCtrl);
    EXPECT_EQ(driver->Text("txtName"), "abc");
    user.Press('Y', kCtrl);
    EXPECT_EQ(driver->Text("txtName"), "abcabc");
  });
}

TEST_F(ViewBoxes, AMaskedBoxIsEditedByTheModel) {
  Visit([&] {
    user.Click("mskDate");
    EXPECT_EQ(driver->Text("mskDate"), "____年__月");
    user.Type("19903");
    EXPECT_EQ(driver->Text("mskDate"), "1990年3_月");
    EXPECT_EQ(driver->Selected("mskDate"), (Selection{6, 0}));
    user.Type("x");
    EXPECT_EQ(driver->Script().beeps, 1);
    user.Press(toolkit::kKeyBack);
    user.Press(toolkit::kKeyBack);
    EXPECT_EQ(driver->Text("mskDate"), "199_年__月");
    user.Press('A', kCtrl);
    user.Paste("2001年12月");
    EXPECT_EQ(form->Get<MaskEdBox>("mskDate")->Text(), "2001年12月");
    form->Get<MaskEdBox>("mskDate")->SetText("不详");
    EXPECT_EQ(driver->Text("mskDate"), "不详");
  });
}

TEST_F(ViewBoxes, F4AndAltDownAndADoubleClickAreOne) {
  Visit([&] {
    const auto box = form->Get<TextBox>("txtCode");
    int raised = 0;
    On(box->DblClick, [&] { ++raised; });
    user.DoubleClick("txtCode");
    EXPECT_EQ(raised, 1);
    user.Press(toolkit::kKeyF4);
    user.Press(toolkit::kKeyDown, kAlt);
    EXPECT_EQ(raised, 3);
  });
}

TEST_F(ViewBoxes, TheFocusFollowsClicksTabsAndTheProgram) {
  Visit([&] {
    user.Click("txtName");
    EXPECT_EQ(driver->Focus(), "txtName");
    user.Press(toolkit::kKeyTab);
    EXPECT_EQ(driver->Focus(), "txtCode");
    user.Press(toolkit::kKeyTab, kShift);
    EXPECT_EQ(driver->Focus(), "txtName");
    form->Get("mskDate")->SetFocus();
    EXPECT_EQ(driver->Focus(), "mskDate");
    form->Get("txtNote")->SetEnabled(false);
    user.Press(toolkit::kKeyTab);
    EXPECT_EQ(driver->Focus(), "chkFlag");
  });
}

TEST_F(ViewBoxes, ARefusedCheckKeepsTheFocusAndTheClick) {
  Visit([&] {
    user.Click("txtName");
    Refuse(*form->Get("txtName"));
    for (const char* name : {"txtCode", "mskDate", "chkFlag", "cmdPhoto", "DGItems"}) {
      On(form->Get(name)->GotFocus, [&, name] { log.push_back(name); });
    }
    On(form->Get<CommandButton>("cmdPhoto")->Click, [&] { log.push_back("click"); });
    user.Click("txtCode");
    user.Click("mskDate");
    user.Click("chkFlag");
    user.Click("cmdPhoto");
    user.ClickRow(3);
    user.ClickMenu(2);
    user.Press(toolkit::kKeyTab);
    EXPECT_EQ(TakeLog(), Log{});
    EXPECT_EQ(driver->Focus(), "txtName");
    EXPECT_FALSE(driver->Checked("chkFlag"));
    EXPECT_EQ(driver->Row("DGItems"), 0);
    EXPECT_EQ(driver->Row("VMenu1"), 0);
    user.Type("a");
    EXPECT_EQ(driver->Text("txtName"), "a") << "keys still come here";
  });
}

TEST_F(ViewBoxes, MnemonicsClickToolbarButtonsButtonsAndCheckBoxes) {
  Visit([&] {
    On(form->Get<CommandButton>("cmdPhoto")->Click, [&] { log.push_back("photo"); });
    On(form->Get<toolkit::Toolbar>("TbMain")->ButtonClick,
       [&](toolkit::ToolbarButton& button) { log.push_back(button.Key()); });
    user.Click("txtName");
    user.Press('N', kAlt);
    user.Press('D', kAlt);
    EXPECT_EQ(TakeLog(), (Log{"Add", "Delete"}));
    EXPECT_EQ(driver->Focus(), "txtName") << "toolbar buttons take no focus";
    user.Press('U', kAlt);
    EXPECT_EQ(TakeLog(), Log{"photo"});
    EXPECT_EQ(driver->Focus(), "cmdPhoto");
    user.Press('Z', kAlt);
    EXPECT_TRUE(driver->Checked("chkFlag"));
    EXPECT_EQ(driver->Focus(), "chkFlag");
  });
}

TEST_F(ViewBoxes, AMnemonicOfWhatIsHiddenDisabledOrRefusedClicksNothing) {
  Visit([&] {
    int clicks = 0;
    On(form->Get<CommandButton>("cmdPhoto")->Click, [&] { ++clicks; });
    user.Click("txtName");
    form->Get("cmdPhoto")->SetEnabled(false);
    user.Press('U', kAlt);
    form->Get("cmdPhoto")->SetEnabled(true);
    form->Get("cmdPhoto")->SetVisible(false);
    user.Press('U', kAlt);
    form->Get("cmdPhoto")->SetVisible(true);
    Refuse(*form->Get("txtName"));
    user.Press('U', kAlt);
    user.Press('Z', kAlt);
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(driver->Checked("chkFlag"));
    EXPECT_EQ(driver->Focus(), "txtName");
    EXPECT_EQ(driver->Text("txtName"), "") << "and types nothing";
  });
}

TEST_F(ViewBoxes, AltWithAKeyThatIsNoMnemonicTypesNothing) {
  Visit([&] {
    user.Click("txtName");
    user.Press('Q', kAlt);
    user.Press(222, kAlt);
    EXPECT_EQ(driver->Text("txtName"), "");
  });
}

TEST_F(ViewBoxes, AToolbarChecksTheFieldWhereItSaysSo) {
  Visit([&] {
    On(form->Get<toolkit::Toolbar>("TbMain")->ButtonClick,
       [&](toolkit::ToolbarButton& button) { log.push_back(button.Key()); });
    user.Click("txtName");
    Refuse(*form->Get("txtName"));
    user.ClickToolbar("Add");
    user.ClickToolbar("Delete");
    user.Press('N', kAlt);
    user.Press('D', kAlt);
    EXPECT_EQ(TakeLog(), (Log{"Delete", "Delete"}));
    form->Get<toolkit::Toolbar>("TbMain")->Button("Delete").SetEnabled(false);
    EXPECT_FALSE(driver->Enabled("Delete"));
    user.ClickToolbar("Delete");
    EXPECT_EQ(TakeLog(), Log{});
  });
}

TEST_F(ViewBoxes, ButtonsAndCheckBoxesTakeClickBlankAndEnter) {
  Visit([&] {
    const auto flag = form->Get<CheckBox>("chkFlag");
    On(flag->Click, [&] { log.push_back("flag " + std::to_string(flag->Value())); });
    On(form->Get<CommandButton>("cmdPhoto")->Click, [&] { log.push_back("photo"); });
    user.Click("chkFlag");
    EXPECT_TRUE(driver->Checked("chkFlag"));
    user.Press(' ');
    EXPECT_FALSE(driver->Checked("chkFlag"));
    EXPECT_EQ(TakeLog(), (Log{"flag 1", "flag 0"}));
    user.Click("cmdPhoto");
    user.Press(' ');
    user.Press(toolkit::kKeyReturn);
    EXPECT_EQ(TakeLog(), (Log{"photo", "photo", "photo"}));
    flag->SetValue(1);
    EXPECT_TRUE(driver->Checked("chkFlag"));
  });
}

TEST_F(ViewBoxes, WhatHappensInAReportMayDropThePage) {
  Visit([&] {
    On(form->Get<CommandButton>("cmdPhoto")->Click, [&] { form->RemovePage(); });
    user.Click("cmdPhoto");
    EXPECT_EQ(form->Controls().Find("page"), nullptr);
    EXPECT_EQ(driver->Focus(), "");
    user.Press('A');
  });
  Visit([&] {
    form->page->on_key_press = [&](char32_t&) { form->RemovePage(); };
    user.Click("txtName");
    user.Type("a");
    EXPECT_EQ(form->Controls().Find("page"), nullptr);
  });
  Visit([&] {
    On(form->Get<TextBox>("txtName")->Change, [&] { form->RemovePage(); });
    user.Click("txtName");
    user.Type("a");
    EXPECT_EQ(form->Controls().Find("page"), nullptr);
  });
}

TEST_F(ViewBoxes, AFailureInAReportEndsTheWindow) {
  int number = 0;
  try {
    Visit([&] {
      On(form->Get<CommandButton>("cmdPhoto")->Click,
         [] { throw environment::MakeFailure(environment::kInvalidCall); });
      user.Click("cmdPhoto");
      EXPECT_FALSE(form->Open());
    });
  } catch (const environment::Failure& failure) {
    number = failure.number();
  }
  EXPECT_EQ(number, 5);
  EXPECT_FALSE(form->Loaded());
}

TEST_F(ViewBoxes, MessageBoxesGiveTheirAnswerAndTheFocusComesBack) {
  Visit([&] {
    user.Click("txtName");
    driver->Script().WillAnswer(toolkit::kAnswerNo);
    EXPECT_EQ(driver->Desktop().MsgBox("保存吗？", toolkit::kYesNo), toolkit::kAnswerNo);
    driver->Script().WillAnswer(toolkit::kAnswerYes);
    EXPECT_EQ(driver->Desktop().MsgBox("保存吗？", toolkit::kYesNo), toolkit::kAnswerYes);
    EXPECT_EQ(driver->Desktop().MsgBox("完"), toolkit::kAnswerOk);
    EXPECT_EQ(driver->Focus(), "txtName");
    user.Type("a");
    EXPECT_EQ(driver->Text("txtName"), "a");
  });
}

}  // namespace
}  // namespace dossierkit::views
