// What native widgets do by themselves, where nobody keeps them from it.
#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QWindow>

#include "adapters/qt/keys.h"
#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtHabits : public Stage {
 protected:
  toolkit::TextBox& Name() { return *form->page->name; }
  toolkit::TextBox& Notes() { return *form->page->notes; }
  QLineEdit* Line() { return Native<QLineEdit>(Name()); }
  QPlainTextEdit* Area() { return Native<QPlainTextEdit>(Notes()); }
  static std::string Lines(int count) {
    std::string text = "1";
    for (int i = 2; i <= count; ++i) text += "\r\n" + std::to_string(i);
    return text;
  }
  // A text is dragged over the widget and let go there.
  static void Drop(QWidget* widget, const char* text) {
    QMimeData mime;
    mime.setText(text);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(widget, &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &mime, Qt::LeftButton, {});
    if (enter.isAccepted()) QCoreApplication::sendEvent(widget, &drop);
  }
};

TEST_F(QtHabits, NoTextIsDroppedIntoABox) {
  Play([&] {
    Drop(Line(), "x");
    Drop(Area(), "x");
    Drop(Area()->viewport(), "x");
    Drop(Native(*form->page->date), "1");
    EXPECT_EQ(Name().Text(), "");
    EXPECT_EQ(Notes().Text(), "");
    EXPECT_EQ(form->page->date->Text(), "____年__月");
    EXPECT_FALSE(Line()->acceptDrops());
    EXPECT_FALSE(Area()->acceptDrops());
    EXPECT_FALSE(Area()->viewport()->acceptDrops());
    EXPECT_FALSE(Native(*form->page->date)->acceptDrops());
  });
}

TEST_F(QtHabits, NothingIsDraggedOutOfABoxOfOneLine) {
  Play([&] {
    EXPECT_FALSE(Line()->dragEnabled());
    EXPECT_FALSE(Native<QLineEdit>(*form->page->date)->dragEnabled());
  });
}

// The program scrolls to the caret where it shows a text anew; what the user typed stands there already.
TEST_F(QtHabits, TypingInTheMiddleOfABoxDoesNotScrollIt) {
  Play([&] {
    Notes().SetText(Lines(60));
    Area()->setFocus();
    QCoreApplication::processEvents();
    Notes().Select(80, 0);
    auto* bar = Area()->verticalScrollBar();
    bar->setValue(bar->value() + 3);
    const int scrolled = bar->value();
    ASSERT_TRUE(Area()->viewport()->rect().contains(Area()->cursorRect()));
    Type(Area(), "x");
    EXPECT_EQ(Notes().Text().substr(80, 1), "x");
    EXPECT_EQ(bar->value(), scrolled);
  });
}

TEST_F(QtHabits, EnterKeepsTheCaretInSight) {
  Play([&] {
    Area()->setFocus();
    QCoreApplication::processEvents();
    for (int i = 0; i < 20; ++i) {
      Press(Area(), Qt::Key_Return);
      EXPECT_TRUE(Area()->viewport()->rect().contains(Area()->cursorRect())) << i;
    }
    EXPECT_EQ(Notes().Text().size(), 40U);
  });
}

// On some desktops Alt and Backspace takes back.
TEST_F(QtHabits, ABoxOfSeveralLinesTakesNothingBackByItself) {
  Play([&] {
    Area()->setFocus();
    QCoreApplication::processEvents();
    Type(Area(), "ab");
    Press(Area(), Qt::Key_Backspace, Qt::AltModifier);
    EXPECT_EQ(Notes().Text(), "ab");
    EXPECT_FALSE(Area()->document()->isUndoAvailable());
  });
}

TEST_F(QtHabits, ATextThatTheDesktopCopiesByItselfIsPlain) {
  Play([&] {
    Notes().SetText("甲\r\n乙");
    Area()->selectAll();
    Area()->copy();  // as a selection is for the middle button
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(Text(copied->text()), "甲\n乙");
    EXPECT_FALSE(copied->hasHtml());
    QApplication::clipboard()->clear();
  });
}

TEST_F(QtHabits, ALongTextFromOutsideIsTakenWhole) {
  Play([&] {
    QAccessible::queryAccessibleInterface(Line())->setText(QAccessible::Value,
                                                           QString(40000, QLatin1Char('a')));
    EXPECT_EQ(Name().Text(), std::string(40000, 'a'));
  });
}

TEST_F(QtHabits, ColoursAreTheSameInAWindowThatIsNotActive) {
  Play([&] {
    form->page->date->SetBackColor(0xFCE0C9);
    form->page->notes->SetBackColor(0xFCE0C9);
    for (QWidget* box : {Native(*form->page->coded), Native(*form->page->date), Native(Notes())}) {
      EXPECT_EQ(box->palette().color(QPalette::Inactive, QPalette::Base), QColor(0xC9, 0xE0, 0xFC));
      EXPECT_EQ(box->palette().color(QPalette::Active, QPalette::Base), QColor(0xC9, 0xE0, 0xFC));
    }
  });
}

// What is selected shows while the box has the keyboard.
TEST_F(QtHabits, ABoxOfSeveralLinesHidesItsSelectionWhereItIsNotActive) {
  Play([&] {
    const QPalette palette = Area()->palette();
    EXPECT_EQ(palette.color(QPalette::Inactive, QPalette::Highlight), QColor(Qt::white));
    EXPECT_EQ(palette.color(QPalette::Inactive, QPalette::HighlightedText),
              palette.color(QPalette::Inactive, QPalette::Text));
    EXPECT_NE(palette.color(QPalette::Active, QPalette::Highlight), QColor(Qt::white));
  });
}

TEST_F(QtHabits, ABoxOfSeveralLinesAlwaysHasItsScrollBar) {
  Play([&] {
    EXPECT_TRUE(Area()->verticalScrollBar()->isVisible());
    EXPECT_FALSE(Area()->horizontalScrollBar()->isVisible());
  });
}

TEST_F(QtHabits, ARemovedControlHasTheKeyboardNoMore) {
  Play([&] {
    Click(Line());
    const QPointer<QWidget> line = Line();
    ASSERT_TRUE(line->hasFocus());
    form->DropPage();
    ASSERT_TRUE(line);
    EXPECT_FALSE(line->hasFocus());
    EXPECT_EQ(QApplication::focusWidget(), nullptr);
  });
}

// The menu closes, and nothing below it hears of the press.
TEST_F(QtHabits, APressBesideAnOpenMenuOnlyClosesIt) {
  Play([&] {
    Click(Line());
    QTest::mouseClick(Line()->window()->windowHandle(), Qt::RightButton, {},
                      Line()->mapTo(Line()->window(), QPoint(6, 6)));
    ASSERT_TRUE(QApplication::activePopupWidget());
    QWidget* date = Native(*form->page->date);
    int presses = 0;
    On(form->page->date->MouseDown, [&](int, int, int, int) { ++presses; });
    QTest::mouseClick(date->window()->windowHandle(), Qt::LeftButton, {},
                      date->mapTo(date->window(), QPoint(250, 6)));
    EXPECT_EQ(presses, 0);
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_TRUE(Name().HasFocus());
  });
}

TEST_F(QtHabits, TheMenuKeyOpensTheMenuBelowTheBox) {
  Play([&] {
    Click(Line());
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, {5, 5}, {700, 500});
    QCoreApplication::sendEvent(Line(), &asked);
    QWidget* menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->pos(), Line()->mapToGlobal(QPoint(0, Line()->height())));
    menu->close();
  });
}

TEST_F(QtHabits, AButtonHasNoShortCutOfItsOwn) {
  int clicks = 0;
  Play([&] {
    form->page->button->SetCaption("照片(&P)");
    auto* button = Native<QPushButton>(*form->page->button);
    EXPECT_TRUE(button->shortcut().isEmpty());
    EXPECT_FALSE(button->isDefault());
    form->page->button->SetDefault(true);
    EXPECT_TRUE(button->isDefault());
    form->page->button->SetDefault(false);
    On(form->page->button->Click, [&] { ++clicks; });
    Press(Line(), Qt::Key_P, Qt::AltModifier);
  });
  EXPECT_EQ(clicks, 1);
}

TEST_F(QtHabits, TheMiddleButtonIsToldToo) {
  std::vector<int> buttons;
  Play([&] {
    On(Name().MouseDown, [&](int button, int, int, int) { buttons.push_back(button); });
    QTest::mouseClick(Line(), Qt::MiddleButton);
  });
  EXPECT_EQ(buttons, std::vector<int>{4});
}

TEST_F(QtHabits, AFrameStandsBelowWhatItDoesNotHold) {
  Play([&] {
    const auto late = form->page->Controls().Make<toolkit::Frame>("frmLate");
    late->Move({0, 3000, 13000, 3500});
    QWidget* page = Native("ctrlUserA02");
    const QPoint at = Line()->mapTo(page, Line()->rect().center());
    EXPECT_EQ(page->childAt(at), Line());
  });
}

TEST_F(QtHabits, ATextStaysReadableOnADisabledPageAndPlainCaptionsRecede) {
  Play([&] {
    EXPECT_EQ(Native(*form->page->help)->palette().color(QPalette::Disabled, QPalette::WindowText),
              QColor(Qt::white));
    const auto ink = [&] { return Native(*form->page->name_label)->palette().color(QPalette::WindowText); };
    EXPECT_EQ(ink(), QColor(0x1D, 0x26, 0x33));
    form->page->name_label->SetFontBold(false);
    EXPECT_EQ(ink(), QColor(0x57, 0x63, 0x73));
  });
}

TEST_F(QtHabits, ToolbarButtonsHaveRoomForPictureAndText) {
  Play([&] {
    for (const char* name : {"Add", "Delete", "Save", "Cancel", "Exit"}) {
      auto* button = Native<QToolButton>(name);
      EXPECT_GE(button->width(),
                button->fontMetrics().horizontalAdvance(button->text()) + button->iconSize().width() + 20)
          << name;
    }
  });
}

TEST(Keys, BackTabIsTabWithShift) {
  EXPECT_EQ(StrokeOf(QKeyEvent(QEvent::KeyPress, Qt::Key_Backtab, Qt::NoModifier)).shift, toolkit::kShift);
  EXPECT_EQ(StrokeOf(QKeyEvent(QEvent::KeyPress, Qt::Key_Backtab, Qt::NoModifier)).code, toolkit::kKeyTab);
}

}  // namespace
}  // namespace dossierkit::qt
