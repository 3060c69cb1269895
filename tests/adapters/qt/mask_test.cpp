#include <QClipboard>
#include <QLineEdit>

#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtMask : public Stage {
 protected:
  toolkit::MaskEdBox& Date() { return *form->page->date; }
  QLineEdit* Box() { return Native<QLineEdit>(Date()); }
  void InBox(const std::function<void()>& scene) {
    Play([this, scene] {
      Date().SetFocus();
      ASSERT_TRUE(Box()->hasFocus());
      scene();
      EXPECT_EQ(Text(Box()->text()), Date().Text());
    });
  }
};

TEST_F(QtMask, TypesIntoTheMask) {
  InBox([&] {
    Type(Box(), "1990");
    EXPECT_EQ(Date().Text(), "1990年__月");
    EXPECT_EQ(Box()->cursorPosition(), 5);
    Type(Box(), "0x3");
    EXPECT_EQ(Date().Text(), "1990年03月");
  });
}

TEST_F(QtMask, DeletesAndKeepsTheLiterals) {
  InBox([&] {
    Date().SetText("1990年03月");
    Press(Box(), Qt::Key_End);
    Press(Box(), Qt::Key_Backspace);
    EXPECT_EQ(Date().Text(), "1990年0_月");
    Press(Box(), Qt::Key_Home);
    Press(Box(), Qt::Key_Delete);
    EXPECT_EQ(Date().Text(), "_990年0_月");
    Press(Box(), Qt::Key_A, Qt::ControlModifier);
    Press(Box(), Qt::Key_Delete);
    EXPECT_EQ(Date().Text(), "____年__月");
  });
}

TEST_F(QtMask, CopiesCutsAndPastes) {
  InBox([&] {
    Date().SetText("1990年03月");
    Press(Box(), Qt::Key_A, Qt::ControlModifier);
    Press(Box(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Text(QApplication::clipboard()->text()), "1990年03月");
    Press(Box(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Date().Text(), "____年__月");
    QApplication::clipboard()->setText("2001年12月");
    Press(Box(), Qt::Key_Home);
    Press(Box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Date().Text(), "2001年12月");
  });
}

TEST_F(QtMask, TakesBackWithCtrlZ) {
  InBox([&] {
    Date().SetText("1990年03月");
    Type(Box(), "2001");
    EXPECT_EQ(Date().Text(), "2001年03月");
    Press(Box(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Date().Text(), "1990年03月");
    EXPECT_EQ(Box()->cursorPosition(), 0);
    Press(Box(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Date().Text(), "1990年03月");
    Press(Box(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Date().Text(), "2001年03月");
  });
}

TEST_F(QtMask, TakesCommittedTextAndDropsTheApostrophe) {
  InBox([&] {
    form->page->characters.clear();
    Commit(Box(), "19'90");
    EXPECT_EQ(form->page->characters, U"19'90");
    EXPECT_EQ(Date().Text(), "1990年__月");
  });
}

TEST_F(QtMask, RoutesATextFromOutsideToTheModel) {
  InBox([&] {
    Box()->setText("1985年7");
    EXPECT_EQ(Date().Text().substr(0, 4), "1985");
  });
}

TEST_F(QtMask, SelectsByKeysAndMouse) {
  InBox([&] {
    Date().SetText("1990年03月");
    Press(Box(), Qt::Key_Home);
    Press(Box(), Qt::Key_Right, Qt::ShiftModifier);
    Press(Box(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Date().SelStart(), 0U);
    EXPECT_EQ(Date().SelLength(), 2U);
    Type(Box(), "2");
    EXPECT_EQ(Date().Text(), "2_90年03月");
  });
}

TEST_F(QtMask, TheClickThatGivesTheFocusLeavesTheCaretAndTheNextMovesIt) {
  Play([&] {
    Date().SetText("1990年03月");
    form->page->name->SetFocus();
    const QPoint behind(Box()->width() - 8, Box()->height() / 2);
    QTest::mouseClick(Box(), Qt::LeftButton, {}, behind);
    EXPECT_TRUE(Box()->hasFocus());
    EXPECT_EQ(Box()->cursorPosition(), 0);
    QTest::qWait(1);
    QTest::mouseClick(Box(), Qt::LeftButton, {}, behind);
    EXPECT_EQ(Box()->cursorPosition(), 8);
    EXPECT_EQ(Date().SelStart(), 8U);
  });
}

TEST_F(QtMask, KeepsAValueThatDoesNotFit) {
  InBox([&] {
    Date().SetText("不详");
    EXPECT_EQ(Text(Box()->text()), "不详");
    Type(Box(), "1");
    EXPECT_EQ(Date().Text(), "1___年__月");
  });
}

}  // namespace
}  // namespace dossierkit::qt
