#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QWindow>

#include "adapters/qt/translator.h"
#include "platform/environment/text.h"
#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtTextBox : public Stage {
 protected:
  toolkit::TextBox& Name() { return *form->page->name; }
  toolkit::TextBox& Notes() { return *form->page->notes; }
  QLineEdit* Line() { return Native<QLineEdit>(Name()); }
  // Presses and releases the right button, as the window gets it; the menu that opens, if any.
  static QMenu* RightClick(QWidget* widget) {
    const QPoint at = widget->mapTo(widget->window(), QPoint(6, 6));
    QTest::mouseClick(widget->window()->windowHandle(), Qt::RightButton, {}, at);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
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

TEST_F(QtTextBox, ACommitMayReplaceWhatStandsBeforeTheCaret) {
  Play([&] {
    Commit(Line(), "大学");
    QInputMethodEvent event;
    event.setCommitString("士", -1, 1);
    QCoreApplication::sendEvent(Line(), &event);
    EXPECT_EQ(Name().Text(), "大士");
  });
}

TEST_F(QtTextBox, ACommitEndsWhereACharacterDropsThePage) {
  Play([&] {
    On(Name().KeyPress, [&](char32_t&) { form->NewPage(); });
    const QPointer<QLineEdit> old = Line();
    Commit(old, "甲乙");
    EXPECT_EQ(form->page->characters, U"") << "the new page hears nothing of it";
    EXPECT_EQ(Name().Text(), "");
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

TEST_F(QtTextBox, UndoesWithCtrlZWhatTheModelRemembers) {
  Play([&] {
    Name().SetMaxLength(4);
    Type(Line(), "ab");
    QApplication::clipboard()->setText("一二三");
    Press(Line(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(Line()->text()), "ab一二");
    Press(Line(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Name().Text(), "ab");
    EXPECT_EQ(Text(Line()->text()), "ab");
    EXPECT_EQ(Line()->cursorPosition(), 2);
    Press(Line(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(Line()->text()), "");
    Press(Line(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Text(Line()->text()), "ab");
    Name().SetText("王五");
    Press(Line(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(Line()->text()), "王五");
    Notes().SetFocus();
    Commit(Area(), "甲");
    Press(Area(), Qt::Key_Return);
    Commit(Area(), "乙");
    Press(Area(), Qt::Key_Z, Qt::ControlModifier);
    Press(Area(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Notes().Text(), "甲");
    EXPECT_EQ(Text(Area()->toPlainText()), "甲");
    Press(Area(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Notes().Text(), "甲\r\n");
    EXPECT_EQ(Area()->document()->blockCount(), 2);
  });
}

TEST_F(QtTextBox, CopiesAndCutsThroughTheClipboardOfTheDesktop) {
  Play([&] {
    Notes().SetText("甲\r\n乙");
    Notes().SetFocus();
    Press(Area(), Qt::Key_A, Qt::ControlModifier);
    Press(Area(), Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(Text(QApplication::clipboard()->text()), "甲\n乙");
    Press(Area(), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(Notes().Text(), "");
    Press(Area(), Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(Notes().Text(), "甲\r\n乙");
  });
}

TEST_F(QtTextBox, F4AndAltDownAreDoubleClicks) {
  int clicks = 0;
  Play([&] {
    auto& coded = *form->page->coded;
    On(coded.DblClick, [&] { ++clicks; });
    coded.SetFocus();
    form->page->keys.clear();
    QWidget* box = Native(coded);
    Press(box, Qt::Key_F4);
    Press(box, Qt::Key_Down, Qt::AltModifier);
    Press(box, Qt::Key_Down, Qt::AltModifier | Qt::KeypadModifier);
    EXPECT_EQ(clicks, 3);
    const std::pair<int, int> alt = {18, toolkit::kAlt};  // goes down by itself before
    const std::pair<int, int> down = {40, toolkit::kAlt};
    EXPECT_EQ(form->page->keys, (std::vector<std::pair<int, int>>{{115, 0}, alt, down, alt, down}));
    Press(box, Qt::Key_F4, Qt::ControlModifier);
    Press(box, Qt::Key_Down);
    Press(box, Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
  });
  EXPECT_EQ(clicks, 3);
}

// --- the context menu ----------------------------------------------------------------------------

TEST_F(QtTextBox, TheRightButtonOpensTheMenuAfterItsPressWasRaised) {
  int presses = 0;
  QApplication::clipboard()->setText("李");
  Play([&] {
    Name().SetText("张三");
    Notes().SetFocus();
    On(Name().MouseDown, [&](int button, int, int, int) {
      EXPECT_EQ(button, toolkit::kRightButton);
      EXPECT_FALSE(QApplication::activePopupWidget());
      ++presses;
    });
    Name().Select(0, 2);
    QMenu* menu = RightClick(Line());
    ASSERT_TRUE(menu);
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(Name().HasFocus());
    QStringList items;
    for (const QAction* action : menu->actions()) {
      items << (action->isSeparator() ? "|" : action->isEnabled() ? action->text() : "-" + action->text());
    }
    QApplication::clipboard()->clear();
    EXPECT_EQ(Text(items.join(" ")), "-撤销(&U) | 剪切(&T) 复制(&C) 粘贴(&P) 删除(&D) | -全选(&A)");
    EXPECT_EQ(Text(Line()->selectedText()), "张三") << "the selection stays on show";
    Press(menu, Qt::Key_T);
    EXPECT_EQ(Name().Text(), "");
    EXPECT_EQ(Text(QApplication::clipboard()->text()), "张三");
    EXPECT_TRUE(Line()->hasFocus());
    Press(RightClick(Line()), Qt::Key_U);
    EXPECT_EQ(Name().Text(), "张三");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(Line()->findChild<QMenu*>("EditMenu")) << "the menu goes with its choice";
  });
}

TEST_F(QtTextBox, BoxesOfSeveralLinesAndMaskedBoxesHaveTheMenuToo) {
  Play([&] {
    QApplication::clipboard()->setText("甲\n乙");
    Press(RightClick(Area()->viewport()), Qt::Key_P);
    EXPECT_EQ(Notes().Text(), "甲\r\n乙");
    auto& date = *form->page->date;
    auto* box = Native<QLineEdit>(date);
    QApplication::clipboard()->setText("1990-03");
    Press(RightClick(box), Qt::Key_P);
    EXPECT_EQ(date.Text(), "1990年03月");
    Press(RightClick(box), Qt::Key_A);
    EXPECT_EQ(Text(box->selectedText()), "1990年03月");
    Press(RightClick(box), Qt::Key_D);
    EXPECT_EQ(Text(box->text()), "____年__月");
    Press(RightClick(box), Qt::Key_U);
    EXPECT_EQ(Text(box->text()), "1990年03月");
  });
}

TEST_F(QtTextBox, NoMenuWhereTheFieldBeforeRefusesToBeLeft) {
  Play([&] {
    Notes().SetFocus();
    On(Notes().Validate, [](bool& cancel) { cancel = true; });
    EXPECT_FALSE(RightClick(Line()));
    EXPECT_TRUE(Notes().HasFocus());
  });
}

TEST_F(QtTextBox, TheMenuGoesWithItsBox) {
  Play([&] {
    const QPointer<QMenu> menu = RightClick(Line());
    ASSERT_TRUE(menu);
    form->NewPage();
    EXPECT_FALSE(QApplication::activePopupWidget());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(menu);
  });
}

TEST_F(QtTextBox, KeysInTheMenuAreNotThePages) {
  Play([&] {
    QMenu* menu = RightClick(Line());
    ASSERT_TRUE(menu);
    form->page->keys.clear();
    form->page->characters.clear();
    Press(menu, Qt::Key_Down);
    Press(menu, Qt::Key_Escape);
    EXPECT_TRUE(form->page->keys.empty());
    EXPECT_EQ(form->page->characters, U"");
  });
}

TEST_F(QtTextBox, ABoxOfTheHostHasItsOwnMenuInTheSameLanguageWhereThatIsWanted) {
  const TextsInChinese texts;
  QLineEdit box(QStringLiteral("甲"));
  const std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
  QStringList items;
  for (const QAction* action : menu->actions()) {
    if (!action->isSeparator()) items << action->text().section('\t', 0, 0);
  }
  EXPECT_EQ(Text(items.join(" ")), "撤销(&U) 恢复(&R) 剪切(&T) 复制(&C) 粘贴(&P) 删除 全选");
}

// --- very long texts -----------------------------------------------------------------------------

TEST_F(QtTextBox, ALongLineGoesOnInTheNextAndIsEditedAcross) {
  Play([&] {
    std::string text(12000, 'a');
    text += "\r\nb";
    Notes().SetText(text);
    Notes().SetFocus();
    EXPECT_EQ(Area()->document()->blockCount(), 4);
    Notes().Select(5000, 0);
    Press(Area(), Qt::Key_Backspace);
    EXPECT_EQ(Notes().Text(), text.substr(1));
    EXPECT_EQ(Notes().SelStart(), 4999U);
    Notes().SetText(text);
    Notes().Select(4999, 0);
    Press(Area(), Qt::Key_Right);  // before the break that is only shown
    Press(Area(), Qt::Key_Delete);
    EXPECT_EQ(Notes().Text(), text.substr(1));
    Type(Area(), "xy");
    EXPECT_EQ(environment::Length(Notes().Text()), 12004U);
    EXPECT_EQ(Notes().Text().find("xy"), 5000U);
    EXPECT_EQ(Notes().SelStart(), 5002U);
    Press(Area(), Qt::Key_A, Qt::ControlModifier);
    Press(Area(), Qt::Key_Delete);
    EXPECT_EQ(Notes().Text(), "");
  });
}

TEST_F(QtTextBox, OfALongTextInOneLineTheBeginningIsShownAndNothingIsLost) {
  Play([&] {
    const std::string text = std::string(7000, 'a') + "z";
    QApplication::clipboard()->setText(QString::fromStdString(text));
    Press(Line(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Name().Text(), text);
    EXPECT_EQ(Line()->text().size(), 5000);
    // The caret stands behind the paste, out of sight.
    Type(Line(), "x");
    EXPECT_EQ(Name().Text(), text + "x");
    Press(Line(), Qt::Key_Backspace);
    Press(Line(), Qt::Key_Backspace);
    EXPECT_EQ(Name().Text(), text.substr(0, 7000));
    Press(Line(), Qt::Key_Home);
    Type(Line(), "b");
    EXPECT_EQ(Name().Text(), "b" + text.substr(0, 7000));
    Press(Line(), Qt::Key_A, Qt::ControlModifier);
    Type(Line(), "c");
    EXPECT_EQ(Name().Text(), "c");
    Press(Line(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Name().Text(), "b" + text.substr(0, 7000));
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
