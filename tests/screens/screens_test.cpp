// Every window on one screen, whose size the environment names. The program runs once on each screen that
// clerks have; a task bar is what is missing from a screen's height.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <map>
#include <utility>

#include "adapters/qt/qt_platform.h"
#include "codes/fm_grp_cod.h"
#include "photos/frm_picture_preview.h"
#include "tests/support/visit.h"
#include "tests/support/window_test.h"

namespace dossierkit::tests {
namespace {

// For screens by width and height, in pixels that scaling enlarges: where the client area of the main window
// is, and what of the page shows without scrolling. Frames here are 2 pixels of the
// device wide on all sides.
struct Expected {
  QRect window;
  QSize page;
};
const std::map<std::pair<int, int>, Expected> kScreens = {
    {{1024, 768}, {{4, 13, 1016, 741}, {863, 625}}}, {{1366, 728}, {{175, 2, 1016, 724}, {863, 625}}},
    {{853, 533}, {{1, 1, 851, 531}, {692, 482}}},    {{1920, 1080}, {{452, 169, 1016, 741}, {863, 625}}},
    {{960, 540}, {{1, 1, 958, 538}, {799, 489}}},
};

class Screens : public testing::Test {
 protected:
  static QRect Screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }
  static Expected Present() { return kScreens.at({Screen().width(), Screen().height()}); }

  static QRect OnScreen(const QWidget& widget) { return {widget.mapToGlobal(QPoint(0, 0)), widget.size()}; }
  static void ExpectFramed(const QWidget& window) {
    EXPECT_TRUE(Screen().contains(window.frameGeometry()))
        << window.objectName().toStdString() << " " << window.frameGeometry().bottom();
  }
  // All of the widget can be seen.
  static void ExpectInSight(const QWidget& widget) {
    QRect place = OnScreen(widget);
    EXPECT_TRUE(widget.isVisible());
    for (const QWidget* around = widget.parentWidget(); around; around = around->parentWidget()) {
      EXPECT_TRUE(OnScreen(*around).contains(place))
          << widget.objectName().toStdString() << " in " << around->objectName().toStdString();
      if (around->isWindow()) break;
    }
    EXPECT_TRUE(Screen().contains(place)) << widget.objectName().toStdString();
  }
  QWidget& Native(const char* name) const {
    for (QWidget* widget : QApplication::activeWindow()->findChildren<QWidget*>(QString::fromUtf8(name))) {
      if (widget->isVisible()) return *widget;
    }
    throw std::logic_error(std::string("no widget ") + name);
  }
  QScrollArea& Area() const {
    QWidget* around = &Native("frmCtrl");
    while (!qobject_cast<QScrollArea*>(around)) around = around->parentWidget();
    return *qobject_cast<QScrollArea*>(around);
  }

  Visit visit;
};

TEST_F(Screens, AreAllKnown) { ASSERT_TRUE(kScreens.contains({Screen().width(), Screen().height()})); }

TEST_F(Screens, TheMainWindowOpensWithinTheScreen) {
  visit.OpenPerson(kPerson, [&] {
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activeWindow()->geometry(), Present().window);
    ExpectFramed(*QApplication::activeWindow());
    EXPECT_EQ(Area().viewport()->size().boundedTo({863, 625}), Present().page);
    EXPECT_EQ(visit.Window().Place(), (toolkit::Rect{0, 0, 15240 + 120, 11115 + 405}));
  });
}

TEST_F(Screens, ToolbarNameAndMenuAreInSightOnEveryPage) {
  visit.OpenPerson(kPerson, [&] {
    for (std::int32_t item = 1; item <= visit.Window().VMenu1().menuitemsmax(); ++item) {
      visit.Window().VMenu1().UserClick(item);
      QCoreApplication::processEvents();
      for (const char* name : {"Add", "Delete", "Save", "Cancel", "Exit", "labPersonName", "VMenu1"})
        ExpectInSight(Native(name));
      EXPECT_EQ(visit.OnShow().Place(), (toolkit::Rect{300, 300, 13000, 9800}));
    }
  });
}

TEST_F(Screens, APageOpensWithItsHeadingAndItsFirstFieldInSight) {
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A03", "A12", "A01", "A02"}) {
      visit.GoTo(set);
      QCoreApplication::processEvents();
      EXPECT_EQ(Native("frmCtrl").mapTo(Area().viewport(), QPoint(0, 0)), QPoint(0, 0)) << set;
    }
    ExpectInSight(Native("A02_A0201_v"));
  });
}

TEST_F(Screens, TabBringsEveryFieldIntoSight) {
  visit.OpenPerson(kPerson, [&] {
    const std::string first = visit.Focus();
    int fields = 0;
    do {
      ++fields;
      const std::string name = visit.Focus();
      QCoreApplication::processEvents();
      ExpectInSight(Native(name.c_str()));
      if (name.ends_with("_v")) ExpectInSight(Native((name.substr(0, name.size() - 1) + "c").c_str()));
      QTest::keyClick(QApplication::activeWindow()->windowHandle(), Qt::Key_Tab);
    } while (visit.Focus() != first && fields < 100);
    EXPECT_EQ(fields, 31) << "fields, the button of the photograph, the menu";
  });
}

TEST_F(Screens, ThePickersButtonsAreInSight) {
  visit.OpenPerson(kPerson, [&] {
    visit.script.WillRun([&](toolkit::Form&) {
      QCoreApplication::processEvents();
      ExpectFramed(*QApplication::activeWindow());
      for (const char* name : {"cmdOK", "cmdCancel", "cmdDel", "Tab1"}) ExpectInSight(Native(name));
      EXPECT_EQ(QApplication::activeWindow()->size(), QSize(337, 437));
    });
    visit.Window().Deliver([] {
      CodePicker().DmGrp = "GB2260";
      CodePicker().ShowModal();
    });
  });
}

TEST_F(Screens, ThePhotographWindowFits) {
  visit.OpenPerson(kPerson, [&] {
    visit.script.WillRun([&](toolkit::Form&) {
      QCoreApplication::processEvents();
      ExpectFramed(*QApplication::activeWindow());
      for (const char* name : {"imgOld", "imgNew", "cmdSelPic", "cmdOK", "cmdCancel"})
        ExpectInSight(Native(name));
      // In the middle of the whole screen, as its handler places it.
      const QPoint off = QApplication::activeWindow()->frameGeometry().center() - Screen().center();
      EXPECT_LE(off.manhattanLength(), 20);
    });
    visit.user.Click("cmdAddPhoto");
  });
}

TEST_F(Screens, MessageBoxesFitWithTheirButtons) {
  visit.OpenPerson(kPerson, [&] {
    QString lines;
    for (int i = 0; i < 200; ++i) lines += "附注：此项内容很长，长得在任何一个屏幕上都放不下，必须滚动。\r\n";
    for (const std::string& text : {std::string("数据被修改且未保存，是否保存？"), lines.toStdString()}) {
      int boxes = 0;
      visit.script.on_message = [&](const headless::Message&) {
        ++boxes;
        QWidget& box = *QApplication::activeModalWidget();
        QCoreApplication::processEvents();
        ExpectFramed(box);
        ExpectInSight(*box.findChild<QWidget*>("Yes"));
        ExpectInSight(*box.findChild<QWidget*>("No"));
      };
      visit.script.WillAnswer(toolkit::kAnswerYes);
      visit.Window().Deliver(
          [&] { visit.desktop.MsgBox(text, toolkit::kYesNo + toolkit::kQuestionIcon, "信息保存"); });
      EXPECT_EQ(boxes, 1);
    }
  });
}

TEST_F(Screens, TheFileDialogFits) {
  visit.OpenPerson(kPerson, [&] {
    QTimer::singleShot(0, [&] {
      ASSERT_TRUE(QTest::qWaitFor([] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        return dialog && dialog == QApplication::activeWindow();
      }));
      ExpectFramed(*QApplication::activeWindow());
      QTest::keyClick(QApplication::activeWindow(), Qt::Key_Escape);
    });
    toolkit::CommonDialog request("dlgSelPic");
    request.filter = "图片文件 (*.jpg)|*.jpg;";
    dynamic_cast<qt::QtPlatform&>(visit.stage->GetPlatform()).qt::QtPlatform::ChooseFile(request);
  });
}

}  // namespace
}  // namespace dossierkit::tests
