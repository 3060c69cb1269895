// What text boxes and masked boxes have in common: taking back, the clipboard, the context menu.
#include <random>
#include <type_traits>

#include "platform/environment/text.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class EditBoxTest : public ToolkitTest {
 protected:
  template <typename Box = TextBox>
  void InBox(const std::string& name, const std::type_identity_t<std::function<void(Box&)>>& scene) {
    Visit([&] {
      const auto box = form->Get<Box>(name);
      box->SetFocus();
      On(box->Change, [this] { ++changes; });
      scene(*box);
    });
  }
  void Undo() { user.Press('Z', kCtrl); }
  // The captions of the menu's items; those that cannot be chosen in brackets, a line above as "|".
  std::string Menu(const std::string& name) {
    std::string shown;
    for (const auto& item : user.OpenMenu(name)) {
      if (item.line_above) shown += "|";
      shown += item.enabled ? item.caption : "[" + item.caption + "]";
    }
    return shown;
  }
  int changes = 0;
};

// --- taking back ---------------------------------------------------------------------------------

TEST_F(EditBoxTest, CtrlZTakesBackTheTypedCharactersAtOnceAndRaisesChange) {
  InBox("txtName", [&](TextBox& box) {
    box.SetText("张三");
    box.Select(2, 0);
    user.Type("丰ab");
    changes = 0;
    Undo();
    EXPECT_EQ(box.Text(), "张三");
    EXPECT_EQ(box.SelStart(), 2U);
    EXPECT_EQ(changes, 1);
    Undo();
    EXPECT_EQ(box.Text(), "张三");
    EXPECT_EQ(changes, 1) << "the program's own text stays";
  });
}

TEST_F(EditBoxTest, CtrlZTakesBackStepByStep) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("ab");
    user.Paste("中国");
    user.Type("c");
    user.Press(kKeyBack);
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "ab中");
    Undo();
    EXPECT_EQ(box.Text(), "ab中国c");
    EXPECT_EQ(box.SelStart(), 5U);
    Undo();
    EXPECT_EQ(box.Text(), "ab中国");
    Undo();
    EXPECT_EQ(box.Text(), "ab");
    Undo();
    EXPECT_EQ(box.Text(), "");
  });
}

TEST_F(EditBoxTest, CharactersTypedElsewhereAreAStepOfTheirOwn) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("ab");
    box.UserSelect(0, 0);
    user.Type("c");
    box.UserSelect(1, 1);
    user.Type("d");
    EXPECT_EQ(box.Text(), "cdb");
    Undo();
    EXPECT_EQ(box.Text(), "cab");
    EXPECT_EQ(box.SelStart(), 1U);
    EXPECT_EQ(box.SelLength(), 1U) << "what was typed over is selected again";
    Undo();
    EXPECT_EQ(box.Text(), "ab");
    Undo();
    EXPECT_EQ(box.Text(), "");
  });
}

TEST_F(EditBoxTest, WhatWasTypedAfterTakingBackIsAStepOfItsOwn) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("ab");
    user.Paste("x");
    Undo();
    user.Type("c");
    EXPECT_EQ(box.Text(), "abc");
    Undo();
    EXPECT_EQ(box.Text(), "ab");
  });
}

TEST_F(EditBoxTest, CtrlYMakesAgainWhatWasTakenBackUntilTheNextEdit) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("ab");
    user.Paste("国");
    Undo();
    Undo();
    EXPECT_EQ(box.Text(), "");
    user.Press('Y', kCtrl);
    EXPECT_EQ(box.Text(), "ab");
    EXPECT_EQ(box.SelStart(), 2U);
    user.Press('Z', kCtrl | kShift);
    EXPECT_EQ(box.Text(), "ab国");
    Undo();
    user.Type("c");
    user.Press('Y', kCtrl);
    EXPECT_EQ(box.Text(), "abc");
  });
}

TEST_F(EditBoxTest, ErasedWholeLinesComeBack) {
  InBox("txtNote", [&](TextBox& box) {
    box.SetText("甲\r\n乙\r\n丙");
    box.Select(6, 0);
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "甲\r\n乙丙");
    user.Press(kKeyBack);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "甲\r\n");
    Undo();
    EXPECT_EQ(box.Text(), "甲\r\n乙\r\n丙");
    user.Press('A', kCtrl);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "");
    Undo();
    EXPECT_EQ(box.Text(), "甲\r\n乙\r\n丙");
    EXPECT_EQ(box.SelLength(), 7U);
  });
}

TEST_F(EditBoxTest, ATextThatTheProgramAssignsCannotBeTakenBack) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("bj");
    box.SetText("北京市");
    Undo();
    user.Press('Y', kCtrl);
    EXPECT_EQ(box.Text(), "北京市");
    box.Select(3, 0);
    user.Type("x");
    // Another record, which happens to hold what stands there.
    box.SetText("北京市x");
    Undo();
    EXPECT_EQ(box.Text(), "北京市x");
    EXPECT_EQ(box.SelStart(), 4U);
  });
}

TEST_F(EditBoxTest, ATextThatAChangeHandlerAssignsCannotBeTakenBack) {
  InBox("txtName", [&](TextBox& box) {
    On(box.Change, [&] {
      if (box.Text() == "ab") box.SetText("甲");
    });
    user.Type("ab");
    EXPECT_EQ(box.Text(), "甲");
    Undo();
    EXPECT_EQ(box.Text(), "甲");
  });
}

TEST_F(EditBoxTest, APasteThatWasCutOffIsTakenBackWhole) {
  InBox("txtName", [&](TextBox& box) {
    box.SetText("张三丰");
    box.SetMaxLength(4);
    box.Select(0, 3);
    user.Paste("一二三四五");
    EXPECT_EQ(box.Text(), "一二三四");
    Undo();
    EXPECT_EQ(box.Text(), "张三丰");
    user.Press('Y', kCtrl);
    EXPECT_EQ(box.Text(), "一二三四");
  });
}

TEST_F(EditBoxTest, MaskedBoxesTakeBackToo) {
  InBox<MaskEdBox>("mskDate", [&](MaskEdBox& box) {
    user.Type("1990");
    EXPECT_EQ(box.Text(), "1990年__月");
    user.Paste("2001年5");
    EXPECT_EQ(box.Text(), "1990年20月");
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "1990年2_月");
    changes = 0;
    Undo();
    EXPECT_EQ(box.Text(), "1990年20月");
    Undo();
    EXPECT_EQ(box.Text(), "1990年__月");
    EXPECT_EQ(box.SelStart(), 5U);
    Undo();
    EXPECT_EQ(box.Text(), "____年__月");
    EXPECT_EQ(changes, 3);
    Undo();
    EXPECT_EQ(changes, 3);
    // As the check of a date leaves it.
    user.Type("19903");
    box.SetText("1990年03月");
    Undo();
    EXPECT_EQ(box.Text(), "1990年03月");
    user.Type("2");
    box.SetText("2990年03月");
    Undo();
    EXPECT_EQ(box.Text(), "2990年03月") << "nor where it leaves the same";
    user.Type("3");
    box.SetMask("##");
    Undo();
    EXPECT_EQ(box.Text(), "__");
  });
}

TEST_F(EditBoxTest, WhatAnInputMethodCommitsAtOnceIsAStepOfItsOwn) {
  InBox<MaskEdBox>("mskDate", [&](MaskEdBox& box) {
    box.UserType("19");
    box.UserType("90");
    Undo();
    EXPECT_EQ(box.Text(), "19__年__月");
  });
  InBox("txtName", [&](TextBox& box) {
    box.UserReplace(0, 0, "中国");
    box.UserReplace(2, 0, "人民");
    Undo();
    EXPECT_EQ(box.Text(), "中国");
  });
}

TEST_F(EditBoxTest, AStoredTextThatDoesNotFitItsMaskComesBack) {
  InBox<MaskEdBox>("mskDate", [&](MaskEdBox& box) {
    box.SetText("不详");
    user.Type("1");
    EXPECT_EQ(box.Text(), "1___年__月");
    Undo();
    EXPECT_EQ(box.Text(), "不详");
  });
}

TEST_F(EditBoxTest, AllEditsCanBeTakenBackAndMadeAgain) {
  std::mt19937 random(11);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
  const std::vector<std::string> pieces = {"a", "中", "𠮷", "\r\n", "\xE4", "\xB8\xAD", "b\r\nc", ""};
  InBox("txtNote", [&](TextBox& box) {
    for (int round = 0; round < 200; ++round) {
      const std::string start = "\xE4x\xB8\xAD\r\n甲";
      box.SetText("");
      box.SetText(start);
      for (int step = 0; step < 30; ++step) box.UserReplace(below(9), below(4), pieces[below(pieces.size())]);
      const std::string end = box.Text();
      for (int step = 0; step < 30; ++step) Undo();
      ASSERT_EQ(box.Text(), start);
      for (int step = 0; step < 30; ++step) user.Press('Y', kCtrl);
      ASSERT_EQ(box.Text(), end);
    }
  });
}

TEST_F(EditBoxTest, APageThatSwallowsCtrlZKeepsTheText) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("a");
    form->Page()->on_key_press = [](char32_t& key) { key = key == 26 ? 0 : key; };
    Undo();
    EXPECT_EQ(box.Text(), "a");
    form->Page()->on_key_press = {};
    form->Page()->on_key_down = [](int& key, int) { key = 0; };
    Undo();
    EXPECT_EQ(box.Text(), "a");
    form->Page()->on_key_down = {};
    box.SetEnabled(false);
    Undo();
    EXPECT_EQ(box.Text(), "a");
    box.SetEnabled(true);
    Undo();
    EXPECT_EQ(box.Text(), "");
  });
}

// --- commands ------------------------------------------------------------------------------------

TEST_F(EditBoxTest, KeysGiveTheCommandsOfEveryDesktop) {
  const std::vector<std::tuple<int, int, EditCommand>> keys = {
      {'Z', kCtrl, EditCommand::kUndo},          {'Y', kCtrl, EditCommand::kRedo},
      {'Z', kCtrl | kShift, EditCommand::kRedo}, {'X', kCtrl, EditCommand::kCut},
      {kKeyDelete, kShift, EditCommand::kCut},   {'C', kCtrl, EditCommand::kCopy},
      {kKeyInsert, kCtrl, EditCommand::kCopy},   {'V', kCtrl, EditCommand::kPaste},
      {kKeyInsert, kShift, EditCommand::kPaste}, {'A', kCtrl, EditCommand::kSelectAll},
  };
  std::size_t found = 0;
  for (int key = 0; key < 256; ++key) {
    for (int shift = 0; shift < 8; ++shift) found += EditCommandOf(key, shift) ? 1 : 0;
  }
  EXPECT_EQ(found, keys.size()) << "no other key gives one";
  for (const auto& [key, shift, command] : keys) EXPECT_EQ(EditCommandOf(key, shift), command) << key;
}

TEST_F(EditBoxTest, CutCopyAndPasteGoThroughTheClipboard) {
  InBox("txtName", [&](TextBox& box) {
    box.SetText("张三丰");
    box.Select(1, 1);
    user.Press(kKeyInsert, kCtrl);
    EXPECT_EQ(platform.clipboard, "三");
    EXPECT_EQ(box.Text(), "张三丰");
    user.Press(kKeyDelete, kShift);
    EXPECT_EQ(box.Text(), "张丰");
    EXPECT_EQ(box.SelStart(), 1U);
    box.Select(0, 0);
    user.Press(kKeyInsert, kShift);
    EXPECT_EQ(box.Text(), "三张丰");
    user.Press('C', kCtrl);
    EXPECT_EQ(platform.clipboard, "三") << "nothing is selected";
    platform.clipboard.clear();
    user.Press('A', kCtrl);
    user.Press('V', kCtrl);
    EXPECT_EQ(box.Text(), "三张丰") << "there is nothing to paste";
    EXPECT_EQ(box.SelLength(), 3U);
  });
}

TEST_F(EditBoxTest, ALineBreakIsLfOnTheClipboardAndCrLfInTheBoxWhateverItWas) {
  InBox("txtNote", [&](TextBox& box) {
    box.SetText("甲\r\n乙");
    user.Press('A', kCtrl);
    user.Press('C', kCtrl);
    EXPECT_EQ(platform.clipboard, "甲\n乙");
    platform.clipboard = "一\n二\r\n三\r四";
    EXPECT_EQ(form->ClipboardText(), "一\r\n二\r\n三\r\n四");
    user.Press('A', kCtrl);
    user.Press('V', kCtrl);
    EXPECT_EQ(box.Text(), "一\r\n二\r\n三\r\n四");
  });
}

TEST_F(EditBoxTest, CommandsOfADisabledBoxOrOneBelowAWindowDoNothing) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  InBox("txtName", [&](TextBox& box) {
    user.Type("张三");
    box.Select(0, 2);
    platform.WillRun([&](Form&) {
      for (const auto command : {EditCommand::kCut, EditCommand::kUndo, EditCommand::kDelete})
        box.UserCommand(command);
      EXPECT_TRUE(box.ContextMenu().empty());
    });
    InEvent([&] { inner->ShowModal(); });
    EXPECT_EQ(box.Text(), "张三");
    EXPECT_EQ(platform.clipboard, "");
    EXPECT_FALSE(box.ContextMenu().empty());
    box.SetEnabled(false);
    box.UserCommand(EditCommand::kCut);
    EXPECT_EQ(box.Text(), "张三");
    EXPECT_EQ(platform.clipboard, "");
    EXPECT_TRUE(box.ContextMenu().empty());
  });
}

TEST_F(EditBoxTest, KeysOfOtherControlsAreTheirOwn) {
  Visit([&] {
    form->Get("chkFlag")->SetFocus();
    EXPECT_TRUE(form->UserKey({'V', kCtrl, {}})) << "left to the native widget";
    form->Get("txtName")->SetFocus();
    EXPECT_FALSE(form->UserKey({'Z', kCtrl, {}})) << "done, also where nothing is to be taken back";
    EXPECT_TRUE(form->UserKey({'Z', 0, {}}));
  });
}

TEST_F(EditBoxTest, ACommandMayDropItsPage) {
  Visit([&] {
    const auto box = form->Get<TextBox>("txtName");
    box->SetFocus();
    user.Type("a");
    On(box->Change, [&] { form->LoadPage("second"); });
    Undo();
    EXPECT_TRUE(box->Removed());
    EXPECT_EQ(form->Page()->Name(), "second");
    box->UserCommand(EditCommand::kPaste);
    EXPECT_TRUE(box->ContextMenu().empty());
  });
}

// --- over the length -----------------------------------------------------------------------------

TEST_F(EditBoxTest, WhatIsCutOffAtTheLengthIsToldByABeep) {
  InBox("txtName", [&](TextBox& box) {
    box.SetMaxLength(3);
    user.Paste("一二三");
    EXPECT_EQ(platform.beeps, 0);
    box.Select(2, 0);
    user.Paste("四五");
    EXPECT_EQ(box.Text(), "一二三");
    EXPECT_EQ(platform.beeps, 1);
    user.Press('A', kCtrl);
    user.Paste("一二三四");
    EXPECT_EQ(box.Text(), "一二三");
    EXPECT_EQ(platform.beeps, 2);
    user.Press('A', kCtrl);
    user.Paste("一\r\n二三四");
    EXPECT_EQ(box.Text(), "一");
    EXPECT_EQ(platform.beeps, 2) << "the lines behind the first are not cut off by the length";
    user.Type("23");
    EXPECT_EQ(platform.beeps, 2);
    user.Type("4");
    EXPECT_EQ(box.Text(), "一23");
    EXPECT_EQ(platform.beeps, 3);
    user.Press(kKeyBack);
    EXPECT_EQ(platform.beeps, 3);
  });
}

TEST_F(EditBoxTest, ALineBreakThatIsCutOffIsToldToo) {
  InBox("txtNote", [&](TextBox& box) {
    box.SetMaxLength(3);
    user.Paste("ab\n");
    EXPECT_EQ(box.Text(), "ab");
    EXPECT_EQ(platform.beeps, 1);
  });
}

// --- the context menu ----------------------------------------------------------------------------

TEST_F(EditBoxTest, TheMenuOffersWhatCanBeDone) {
  InBox("txtName", [&](TextBox& box) {
    EXPECT_EQ(Menu("txtName"), "[撤销(&U)]|[剪切(&T)][复制(&C)][粘贴(&P)][删除(&D)]|[全选(&A)]");
    platform.clipboard = "李";
    EXPECT_EQ(Menu("txtName"), "[撤销(&U)]|[剪切(&T)][复制(&C)]粘贴(&P)[删除(&D)]|[全选(&A)]");
    user.Type("张三");
    EXPECT_EQ(Menu("txtName"), "撤销(&U)|[剪切(&T)][复制(&C)]粘贴(&P)[删除(&D)]|全选(&A)");
    box.Select(0, 1);
    EXPECT_EQ(Menu("txtName"), "撤销(&U)|剪切(&T)复制(&C)粘贴(&P)删除(&D)|全选(&A)");
    box.Select(0, 2);
    EXPECT_EQ(Menu("txtName"), "撤销(&U)|剪切(&T)复制(&C)粘贴(&P)删除(&D)|[全选(&A)]");
    box.SetText("王五");
    EXPECT_EQ(Menu("txtName"), "[撤销(&U)]|[剪切(&T)][复制(&C)]粘贴(&P)[删除(&D)]|全选(&A)");
  });
}

TEST_F(EditBoxTest, ItemsOfTheMenuDoWhatTheySay) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("张三丰");
    user.ChooseFromMenu("txtName", "全选(&A)");
    EXPECT_EQ(box.SelLength(), 3U);
    user.ChooseFromMenu("txtName", "复制(&C)");
    EXPECT_EQ(platform.clipboard, "张三丰");
    box.Select(2, 1);
    user.ChooseFromMenu("txtName", "删除(&D)");
    EXPECT_EQ(box.Text(), "张三");
    EXPECT_EQ(platform.clipboard, "张三丰");
    box.Select(1, 1);
    user.ChooseFromMenu("txtName", "剪切(&T)");
    EXPECT_EQ(box.Text(), "张");
    EXPECT_EQ(platform.clipboard, "三");
    user.ChooseFromMenu("txtName", "粘贴(&P)");
    EXPECT_EQ(box.Text(), "张三");
    user.ChooseFromMenu("txtName", "撤销(&U)");
    EXPECT_EQ(box.Text(), "张");
  });
  InBox<MaskEdBox>("mskDate", [&](MaskEdBox& box) {
    platform.clipboard = "1990-03";
    user.ChooseFromMenu("mskDate", "粘贴(&P)");
    EXPECT_EQ(box.Text(), "1990年03月");
    user.ChooseFromMenu("mskDate", "全选(&A)");
    user.ChooseFromMenu("mskDate", "删除(&D)");
    EXPECT_EQ(box.Text(), "____年__月");
    user.ChooseFromMenu("mskDate", "撤销(&U)");
    EXPECT_EQ(box.Text(), "1990年03月");
  });
}

TEST_F(EditBoxTest, ThePressOfTheRightButtonIsRaisedBeforeTheMenu) {
  Visit([&] {
    form->Get("mskDate")->SetFocus();
    TakeLog();
    EXPECT_EQ(user.OpenMenu("txtName").size(), 6U);
    EXPECT_EQ(TakeLog(),
              (Log{"mskDate.Validate", "mskDate.LostFocus", "txtName.GotFocus", "txtName.MouseDown"}));
    // A field that refuses to be left keeps the focus, and no menu comes.
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    EXPECT_TRUE(user.OpenMenu("txtNote").empty());
    EXPECT_TRUE(form->Get<TextBox>("txtNote")->ContextMenu().empty());
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate"}));
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
