#include <random>

#include "platform/environment/text.h"
#include "tests/platform/toolkit/test_form.h"

namespace dossierkit::toolkit {
namespace {

class TextBoxTest : public ToolkitTest {
 protected:
  // Runs `scene` with the focus in a box of one line or of several.
  void InBox(const std::string& name, const std::function<void(TextBox&)>& scene) {
    Visit([&] {
      const auto box = form->Get<TextBox>(name);
      box->SetFocus();
      On(box->Change, [this] { ++changes; });
      scene(*box);
    });
  }
  int changes = 0;
};

TEST_F(TextBoxTest, AssigningRaisesChangeInTheSameCallAndOnlyIfTheTextDiffers) {
  InBox("txtName", [&](TextBox& box) {
    std::string seen;
    On(box.Change, [&] { seen = box.Text(); });
    box.SetText("张三");
    EXPECT_EQ(seen, "张三");
    EXPECT_EQ(changes, 1);
    box.SetText("张三");
    EXPECT_EQ(changes, 1);
    box.SetText("");
    EXPECT_EQ(changes, 2);
  });
}

TEST_F(TextBoxTest, AssignedTextIsReadBackByteForByte) {
  InBox("txtNote", [&](TextBox& box) {
    for (const char* text : {"a\nb", "a\rb", " a \t", "a\r\n\r\nb", "\xFF\xFE", "　全角　", "x\r"}) {
      box.SetText(text);
      EXPECT_EQ(box.Text(), text);
    }
  });
  InBox("txtName", [&](TextBox& box) {
    box.SetText("两\r\n行");
    EXPECT_EQ(box.Text(), "两\r\n行");
  });
}

TEST_F(TextBoxTest, TypedTextRaisesChangeForEachCharacter) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("张三");
    EXPECT_EQ(box.Text(), "张三");
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(box.SelStart(), 2U);
  });
}

TEST_F(TextBoxTest, ReplacingByTheSameTextRaisesNothing) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("ab");
    changes = 0;
    box.Select(0, 2);
    user.Paste("ab");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(box.SelStart(), 2U);
    EXPECT_EQ(box.SelLength(), 0U);
  });
}

TEST_F(TextBoxTest, EditingWorksOnCaretAndSelectionInCodePoints) {
  InBox("txtName", [&](TextBox& box) {
    user.Type("张三丰");
    box.Select(1, 1);
    user.Type("四");
    EXPECT_EQ(box.Text(), "张四丰");
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "张丰");
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "张");
    user.Press('A', kCtrl);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "");
    user.Press(kKeyBack);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "");
  });
}

TEST_F(TextBoxTest, SelectionStaysInsideTheText) {
  InBox("txtName", [&](TextBox& box) {
    box.SetText("张三");
    box.Select(1, 9);
    EXPECT_EQ(box.SelLength(), 1U);
    box.UserSelect(9, 9);
    EXPECT_EQ(box.SelStart(), 2U);
    EXPECT_EQ(box.SelLength(), 0U);
    box.Select(1, 1);
    box.SetText("");
    EXPECT_EQ(box.SelStart() + box.SelLength(), 0U);
  });
}

// --- MaxLength -----------------------------------------------------------------------------------

TEST_F(TextBoxTest, MaxLengthLimitsTypingAndPasting) {
  InBox("txtName", [&](TextBox& box) {
    box.SetMaxLength(3);
    user.Type("张三丰好");
    EXPECT_EQ(box.Text(), "张三丰");
    EXPECT_EQ(changes, 3);
    box.Select(1, 1);
    user.Paste("一二三");
    EXPECT_EQ(box.Text(), "张一丰");
    box.SetMaxLength(0);
    user.Paste("一二三");
    EXPECT_EQ(box.Text(), "张一一二三丰");
  });
}

TEST_F(TextBoxTest, MaxLengthNeverLimitsTheProgram) {
  InBox("txtName", [&](TextBox& box) {
    box.SetMaxLength(2);
    box.SetText("张三丰");
    EXPECT_EQ(box.Text(), "张三丰");
    box.Select(3, 0);
    user.Type("x");
    EXPECT_EQ(box.Text(), "张三丰");
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "张三");
  });
}

TEST_F(TextBoxTest, MaxLengthDoesNotSplitALineBreak) {
  InBox("txtNote", [&](TextBox& box) {
    box.SetMaxLength(3);
    user.Paste("ab\r\nc");
    EXPECT_EQ(box.Text(), "ab");
    box.SetMaxLength(4);
    user.Press(kKeyReturn);
    EXPECT_EQ(box.Text(), "ab\r\n");
  });
}

// --- lines ---------------------------------------------------------------------------------------

TEST_F(TextBoxTest, PasteIntoOneLineStopsAtTheFirstBreak) {
  for (const char* pasted : {"一\r\n二", "一\n二", "一\r二"}) {
    InBox("txtName", [&](TextBox& box) {
      user.Paste(pasted);
      EXPECT_EQ(box.Text(), "一");
    });
  }
  InBox("txtName", [&](TextBox& box) {
    user.Paste("\r\n二");
    EXPECT_EQ(box.Text(), "");
  });
}

TEST_F(TextBoxTest, LineBreakIsCrLfHoweverItWasPasted) {
  InBox("txtNote", [&](TextBox& box) {
    user.Paste("一\n二\r三\r\n四\n\n五");
    EXPECT_EQ(box.Text(), "一\r\n二\r\n三\r\n四\r\n\r\n五");
    EXPECT_EQ(box.SelStart(), environment::Length(box.Text()));
  });
}

TEST_F(TextBoxTest, LineBreakIsRemovedWhole) {
  InBox("txtNote", [&](TextBox& box) {
    box.SetText("a\r\nb");
    box.Select(3, 0);
    user.Press(kKeyBack);
    EXPECT_EQ(box.Text(), "ab");
    box.SetText("a\r\nb");
    box.Select(1, 0);
    user.Press(kKeyDelete);
    EXPECT_EQ(box.Text(), "ab");
    box.SetText("a\r\nb");
    box.UserReplace(2, 0, "x");
    EXPECT_EQ(box.Text(), "ax\r\nb");
  });
}

TEST_F(TextBoxTest, EditedTextNeverHoldsHalfALineBreak) {
  const std::vector<std::string> pieces = {"a", "中", "\r\n", "\n", "\r", "b\r\nc", ""};
  std::mt19937 random(7);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
  InBox("txtNote", [&](TextBox& box) {
    box.SetMaxLength(20);
    for (int step = 0; step < 5000; ++step) {
      box.UserReplace(below(22), below(5), pieces[below(pieces.size())]);
      ASSERT_LE(environment::Length(box.Text()), 20U);
      const std::string rest = environment::Replace(box.Text(), "\r\n", "");
      ASSERT_EQ(rest.find_first_of("\r\n"), std::string::npos);
      ASSERT_LE(box.SelStart(), environment::Length(box.Text()));
    }
  });
}

// --- refusals ------------------------------------------------------------------------------------

TEST_F(TextBoxTest, DisabledBoxTakesNothing) {
  InBox("txtName", [&](TextBox& box) {
    box.SetText("张三");
    box.SetEnabled(false);
    box.UserReplace(0, 2, "李");
    EXPECT_EQ(box.Text(), "张三");
  });
}

TEST_F(TextBoxTest, BoxBelowAModalWindowTakesNothing) {
  auto inner = std::make_shared<TestForm>(desktop, log, "frmInner");
  InBox("txtName", [&](TextBox& box) {
    platform.WillRun([&](Form&) { box.UserReplace(0, 0, "x"); });
    InEvent([&] { inner->ShowModal(); });
    EXPECT_EQ(box.Text(), "");
  });
}

TEST_F(TextBoxTest, DoubleClickComesAfterTheFocus) {
  Visit([&] {
    form->Get("mskDate")->SetFocus();
    On(form->Get<TextBox>("txtName")->DblClick, [&] { log.push_back("txtName.DblClick"); });
    TakeLog();
    user.DoubleClick("txtName");
    EXPECT_EQ(TakeLog(), (Log{"mskDate.Validate", "mskDate.LostFocus", "txtName.GotFocus",
                              "txtName.MouseDown", "txtName.DblClick"}));
    On(form->Get("txtName")->Validate, [](bool& cancel) { cancel = true; });
    On(form->Get<TextBox>("txtNote")->DblClick, [&] { log.push_back("txtNote.DblClick"); });
    user.DoubleClick("txtNote");
    EXPECT_EQ(TakeLog(), (Log{"txtName.Validate"}));
  });
}

}  // namespace
}  // namespace dossierkit::toolkit
