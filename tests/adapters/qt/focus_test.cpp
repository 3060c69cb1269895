#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtFocus : public Stage {
 protected:
  DemoPage& Page() { return *form->page; }
};

TEST_F(QtFocus, FollowsTheModel) {
  Play([&] {
    EXPECT_TRUE(Native(*Page().name)->hasFocus());
    Page().notes->SetFocus();
    EXPECT_TRUE(Native(*Page().notes)->hasFocus());
  });
}

TEST_F(QtFocus, MovesByTabInTheModelsOrder) {
  Play([&] {
    Press(Native(*Page().name), Qt::Key_Tab);
    EXPECT_TRUE(Page().coded->HasFocus());
    EXPECT_TRUE(Native(*Page().coded)->hasFocus());
    Press(Native(*Page().coded), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Page().name->HasFocus());
    Page().notes->SetFocus();
    Press(Native(*Page().notes), Qt::Key_Tab);
    EXPECT_TRUE(Page().check->HasFocus());
  });
}

TEST_F(QtFocus, IsKeptByTheCheckAgainstMouseAndTab) {
  std::string events;
  Play([&] {
    On(Page().name->Validate, [&](bool& cancel) {
      events += "check ";
      cancel = true;
    });
    On(Page().name->LostFocus, [&] { events += "lost "; });
    On(Page().button->Click, [&] { events += "click "; });
    On(Page().coded->MouseDown, [&](int, int, int, int) { events += "down "; });
    Click(Native(*Page().coded));
    EXPECT_TRUE(Native(*Page().name)->hasFocus());
    Press(Native(*Page().name), Qt::Key_Tab);
    EXPECT_TRUE(Native(*Page().name)->hasFocus());
    Click(Native(*Page().button));
    EXPECT_TRUE(Page().name->HasFocus());
    QTest::mouseDClick(Native(*Page().coded), Qt::LeftButton);
    Click(Native("DGItems")->findChild<QWidget*>("qt_scrollarea_viewport"));
    EXPECT_EQ(Page().grid->Row(), 1);
  });
  EXPECT_EQ(events.find("lost"), std::string::npos) << events;
  EXPECT_EQ(events.find("click"), std::string::npos) << events;
  EXPECT_EQ(events.find("down"), std::string::npos) << events;
}

TEST_F(QtFocus, TheClickIsDeliveredOnceAfterACheckThatOpenedAMessage) {
  std::string events;
  Play([&] {
    On(Page().name->Validate, [&](bool&) {
      events += "check ";
      desktop.MsgBox("请核对。");
    });
    On(Page().name->LostFocus, [&] { events += "lost "; });
    On(Page().button->GotFocus, [&] { events += "got "; });
    On(Page().button->Click, [&] { events += "click "; });
    AnswerNext("OK");
    // The message box takes the release, as on a real screen.
    QTest::mousePress(Native(*Page().button), Qt::LeftButton);
    EXPECT_EQ(message, "请核对。");
    EXPECT_FALSE(Native<QPushButton>(*Page().button)->isDown());
    EXPECT_TRUE(Native(*Page().button)->hasFocus());
  });
  EXPECT_EQ(events, "check lost got click ");
}

// A window that becomes active again gives the focus back where it was; nobody asked for another field.
TEST_F(QtFocus, AFocusThatComesWithTheWindowIsNotTheUsers) {
  Play([&] {
    int checks = 0;
    On(Page().name->Validate, [&](bool&) { ++checks; });
    for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
      Native(*Page().coded)->setFocus(reason);
      QCoreApplication::processEvents();
      EXPECT_TRUE(Page().name->HasFocus());
      EXPECT_TRUE(Native(*Page().name)->hasFocus());
    }
    EXPECT_EQ(checks, 0);
  });
}

TEST_F(QtFocus, AMoveOfTheMouseIsThatOfTheControlUnderItOnceNoButtonIsDown) {
  std::string moves;
  Play([&] {
    On(Page().name->MouseMove, [&](int, int, int, int) { moves += "name "; });
    On(Page().date->MouseMove, [&](int, int, int, int) { moves += "date "; });
    QWidget* window = QApplication::activeWindow();
    const auto at = [&](const toolkit::Control& control) {
      return Native(control)->mapTo(window, QPoint(20, 8));
    };
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, at(*Page().name));
    moves.clear();
    QTest::mouseMove(window->windowHandle(), at(*Page().date));
    QCoreApplication::processEvents();
  });
  EXPECT_EQ(moves, "date ");
}

// Of the press that was refused there the message box has taken the release.
TEST_F(QtFocus, TheClickAfterARefusedOneArrives) {
  int clicks = 0;
  bool refuse = true;
  Play([&] {
    On(Page().button->Click, [&] { ++clicks; });
    On(Page().name->Validate, [&](bool& cancel) {
      if (!refuse) return;
      desktop.MsgBox("请核对。");
      cancel = true;
    });
    AnswerNext("OK");
    QTest::mousePress(Native(*Page().button), Qt::LeftButton);
    EXPECT_EQ(clicks, 0);
    refuse = false;
    Click(Native(*Page().button));
    EXPECT_EQ(clicks, 1);
  });
}

// What would scroll below the pointer between press and release would miss the click.
TEST_F(QtFocus, AButtonHalfInSightIsClickedAndThenScrollsIntoSight) {
  int clicks = 0;
  Play([&] {
    On(Page().button->Click, [&] { ++clicks; });
    QApplication::activeWindow()->resize(600, 500);
    auto* button = Native(*Page().button);
    auto* area = QApplication::activeWindow()->findChild<QScrollArea*>();
    ASSERT_TRUE(area);
    const QPoint place = button->mapTo(area->widget(), QPoint(0, 0));
    area->verticalScrollBar()->setValue(place.y() - 100);
    area->horizontalScrollBar()->setValue(place.x() + 20 - area->viewport()->width());
    EXPECT_EQ(button->visibleRegion().boundingRect().width(), 20);
    QTest::mouseClick(button, Qt::LeftButton, {}, {10, 10});
    EXPECT_EQ(clicks, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(button->visibleRegion().boundingRect().width(), button->width());
  });
}

TEST_F(QtFocus, FromOutsideAsksTheModel) {
  bool refuse = true;
  Play([&] {
    On(Page().name->Validate, [&](bool& cancel) { cancel = refuse; });
    bool checked = false;
    On(Page().name->Validate, [&](bool&) { checked = true; });
    Native(*Page().coded)->setFocus(Qt::OtherFocusReason);
    EXPECT_FALSE(checked) << "a check may open a window, and a screen reader waits for its answer";
    QCoreApplication::processEvents();
    EXPECT_TRUE(checked);
    EXPECT_TRUE(Page().name->HasFocus());
    EXPECT_TRUE(Native(*Page().name)->hasFocus());
    refuse = false;
    Native(*Page().coded)->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Page().coded->HasFocus());
    EXPECT_TRUE(Native(*Page().coded)->hasFocus());
  });
}

TEST_F(QtFocus, LeavingTheWindowIsNoEvent) {
  std::string events;
  Play([&] {
    On(Page().name->Validate, [&](bool&) { events += "check "; });
    On(Page().name->LostFocus, [&] { events += "lost "; });
    On(Page().name->GotFocus, [&] { events += "got "; });
    auto* window = QApplication::activeWindow();
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    window->activateWindow();
    QCoreApplication::processEvents();
    EXPECT_TRUE(Native(*Page().name)->hasFocus());
  });
  EXPECT_EQ(events, "");
}

TEST_F(QtFocus, ADisabledFieldTakesNoPress) {
  Play([&] {
    Page().coded->SetEnabled(false);
    Click(Native(*Page().coded));
    EXPECT_TRUE(Page().name->HasFocus());
    EXPECT_TRUE(Native(*Page().name)->hasFocus());
  });
}

TEST_F(QtFocus, KeysPassThePageFirst) {
  Play([&] {
    Page().keys.clear();
    Press(Native(*Page().name), Qt::Key_N, Qt::ControlModifier);
    Press(Native(*Page().name), Qt::Key_Comma, Qt::ControlModifier);
    using Keys = std::vector<std::pair<int, int>>;
    EXPECT_EQ(Page().keys, (Keys{{17, 2}, {78, 2}, {17, 2}, {188, 2}}));
    EXPECT_EQ(Page().name->Text(), "");
  });
}

TEST_F(QtFocus, AKeySetToNothingGoesNoFurther) {
  Play([&] {
    On(Page().name->KeyDown, [&](int& key, int) {
      if (key == 'A') key = 0;
    });
    On(Page().name->KeyPress, [&](char32_t& key) {
      if (key == U'\r') {
        key = 0;
        form->SendKeys("{tab}");
        form->SendKeys("{Home}+{End}");
      }
    });
    Page().coded->SetText("清华");
    Type(Native(*Page().name), "ab");
    EXPECT_EQ(Page().name->Text(), "b");
    Press(Native(*Page().name), Qt::Key_Return);
    EXPECT_TRUE(Page().coded->HasFocus());
    EXPECT_EQ(Text(Native<QLineEdit>(*Page().coded)->selectedText()), "清华");
  });
}

}  // namespace
}  // namespace dossierkit::qt
