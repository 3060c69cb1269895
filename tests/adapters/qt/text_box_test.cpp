#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtTextBox : public Stage {
 protected:
  toolkit::TextBox& Name() { return *form->page->name; }
  toolkit::TextBox& Notes() { return *form->page->notes; }
  QLineEdit* Line() { return Native<QLineEdit>(Name()); }
  QPlainTextEdit* Area() { return Native<QPlainTextEdit>(Notes()); }
};

TEST_F(QtTextBox, ShowsWhatTheProgramAssignsAndReportsNothing) {
  int changes = 0;
  Play([&] {
    On(Name().Change, [&] { ++changes; });
    const std::string odd = "a\r\nb\xFF  c\t";
    Name().SetText(odd);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Name().Text(), odd);
    Notes().SetText("甲\r\n乙\r丙\n丁\u00A0");
    EXPECT_EQ(Area()->document()->blockCount(), 4);
    EXPECT_EQ(Notes().Text(), "甲\r\n乙\r丙\n丁\u00A0");
    Press(Line(), Qt::Key_End);
    EXPECT_EQ(Name().Text(), odd);
  });
  EXPECT_EQ(changes, 1);
}

TEST_F(QtTextBox, ReportsTypingKeyByKey) {
  std::vector<std::string> texts;
  Play([&] {
    On(Name().Change, [&] { texts.push_back(Name().Text()); });
    Type(Line(), "ab");
    Press(Line(), Qt::Key_Left);
    Type(Line(), "c");
    Press(Line(), Qt::Key_Backspace);
    Press(Line(), Qt::Key_Delete);
    EXPECT_EQ(Name().SelStart(), 1U);
  });
  EXPECT_EQ(texts, (std::vector<std::string>{"a", "ab", "acb", "ab", "a"}));
}

TEST_F(QtTextBox, TheModelLimitsTheLength) {
  Play([&] {
    Name().SetMaxLength(3);
    Type(Line(), "ab");
    Commit(Line(), "中华人民");
    EXPECT_EQ(Name().Text(), "ab中");
    EXPECT_EQ(Text(Line()->text()), "ab中");
    EXPECT_EQ(Line()->cursorPosition(), 3);
    Name().SetText("programme");
    EXPECT_EQ(Text(Line()->text()), "programme");
  });
}

TEST_F(QtTextBox, PassesCommittedTextCharacterByCharacter) {
  Play([&] {
    form->page->characters.clear();
    Commit(Line(), "", "zhong'guo");
    EXPECT_EQ(form->page->characters, U"") << "nothing is raised while a text is composed";
    EXPECT_EQ(Name().Text(), "");
    Press(Line(), Qt::Key_Return);
    EXPECT_EQ(form->page->characters, U"") << "the Enter of the composition is not the model's";
    Commit(Line(), "中'国");
    EXPECT_EQ(form->page->characters, U"中'国");
    EXPECT_EQ(Name().Text(), "中国");
    Commit(Area(), "甲'乙");
    EXPECT_EQ(Notes().Text(), "甲乙");
  });
}

TEST_F(QtTextBox, SwallowsTheApostropheAtTheKeyboard) {
  Play([&] {
    Type(Line(), "a'b");
    EXPECT_EQ(Name().Text(), "ab");
    EXPECT_EQ(Text(Line()->text()), "ab");
  });
}

TEST_F(QtTextBox, APasteIntoOneLineStopsAtTheFirstBreak) {
  Play([&] {
    QApplication::clipboard()->setText("甲'\n乙");
    Press(Line(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Name().Text(), "甲'");
    EXPECT_EQ(Text(Line()->text()), "甲'");
    Notes().SetFocus();
    Press(Area(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Notes().Text(), "甲'\r\n乙");
  });
}

TEST_F(QtTextBox, BreaksLinesByEnterAndCtrlEnter) {
  Play([&] {
    Notes().SetText("x\ny");  // a break of another kind stays as it is
    Notes().SetFocus();
    Press(Area(), Qt::Key_End, Qt::ControlModifier);
    Press(Area(), Qt::Key_Return);
    Type(Area(), "a");
    Press(Area(), Qt::Key_Return, Qt::ControlModifier);
    Type(Area(), "b");
    EXPECT_EQ(Notes().Text(), "x\ny\r\na\r\nb");
    EXPECT_EQ(Notes().SelStart(), 9U);
    Press(Area(), Qt::Key_Backspace);
    Press(Area(), Qt::Key_Backspace);
    EXPECT_EQ(Notes().Text(), "x\ny\r\na");
    // Over the old break.
    Notes().Select(1, 1);
    Type(Area(), "z");
    EXPECT_EQ(Notes().Text(), "xzy\r\na");
  });
}

TEST_F(QtTextBox, ShowsAndReportsTheSelection) {
  Play([&] {
    Name().SetText("𠮷林大学");
    Name().Select(1, 2);
    EXPECT_EQ(Text(Line()->selectedText()), "林大");
    Press(Line(), Qt::Key_End);
    Press(Line(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Name().SelStart(), 3U);
    EXPECT_EQ(Name().SelLength(), 1U);
    Commit(Line(), "士");
    EXPECT_EQ(Name().Text(), "𠮷林大士");
  });
}

TEST_F(QtTextBox, UndoesWithCtrlZ) {
  Play([&] {
    Type(Line(), "abc");
    Press(Line(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(Name().Text(), "abc");
    EXPECT_EQ(Name().Text(), Text(Line()->text()));
  });
}

TEST_F(QtTextBox, ReportsADoubleClick) {
  int clicks = 0;
  Play([&] {
    On(form->page->coded->DblClick, [&] { ++clicks; });
    QTest::mouseDClick(Native(*form->page->coded), Qt::LeftButton);
    EXPECT_TRUE(form->page->coded->HasFocus());
  });
  EXPECT_EQ(clicks, 1);
}

TEST_F(QtTextBox, AChangeHandlerMayDropThePage) {
  Play([&] {
    On(Name().Change, [&] { form->NewPage(); });
    const QPointer<QLineEdit> old = Line();
    Type(old, "a");
    EXPECT_TRUE(form->page->name->Text().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(form->page->name->HasFocus());
    Type(Line(), "b");
  });
}

}  // namespace
}  // namespace dossierkit::qt
