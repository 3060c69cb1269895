// The component in the program of a host that has an application object, looks and habits of its own.
#include <QAbstractItemView>
#include <QCompleter>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWindow>
#include <cstdlib>
#include <stdexcept>

#include "adapters/qt/program_style.h"
#include "platform/environment/failure.h"
#include "tests/adapters/qt/stage.h"
#include "tests/support/foreign_application.h"

namespace dossierkit::qt {
namespace {

// Before main() looks at it.
[[maybe_unused]] const int as_guest = setenv("DOSSIERKIT_TESTS_AS_GUEST", "1", 1);

// A window of the host's, which notes what comes to it.
class HostWindow : public QWidget {
 public:
  HostWindow() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel("host", this));
    edit = new QLineEdit("host", this);
    layout->addWidget(edit);
    resize(400, 200);
    move(20, 20);
  }
  QLineEdit* edit;
  int presses = 0;
  int translations = 0;

 protected:
  void mousePressEvent(QMouseEvent*) override { ++presses; }
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::LanguageChange) ++translations;
    QWidget::changeEvent(event);
  }
};

class Guest : public Stage {
 protected:
  void SetUp() override {
    ASSERT_TRUE(host);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.isActiveWindow(); }));
  }
  void TearDown() override {
    if (!host) return;
    host->catches = false;
    host->caught.clear();
  }

  // The looks of the component's, and nothing of the host's.
  static void ExpectLooks(const QWidget& widget) {
    const std::string name =
        std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
    EXPECT_TRUE(dynamic_cast<const ProgramStyle*>(widget.style())) << name;
    EXPECT_FALSE(widget.font().italic()) << name;
    EXPECT_FALSE(widget.font().underline()) << name;
    EXPECT_LE(widget.font().letterSpacing(), 1) << name;
    EXPECT_TRUE(widget.font().families().contains("WenQuanYi Zen Hei")) << name;
    EXPECT_EQ(widget.palette().color(QPalette::Active, QPalette::Highlight), QColor(0x2B, 0x6C, 0xB0))
        << name;
    EXPECT_EQ(widget.palette().color(QPalette::Disabled, QPalette::Text), QColor(0x8B, 0x95, 0xA3)) << name;
    EXPECT_EQ(widget.layoutDirection(), Qt::LeftToRight) << name;
    EXPECT_EQ(widget.locale(), QLocale(QLocale::Chinese, QLocale::China)) << name;
  }
  static void ExpectLooksOfAllIn(const QWidget& root) {
    ExpectLooks(root);
    for (const QWidget* widget : root.findChildren<QWidget*>()) ExpectLooks(*widget);
  }
  QImage Picture() { return window.grab().toImage(); }

  tests::ForeignApplication* host = tests::ForeignApplication::Instance();
  HostWindow window;
};

TEST_F(Guest, EveryWidgetOfTheWindowHasTheComponentsLooks) {
  Play([&] {
    EXPECT_GT(QApplication::activeWindow()->findChildren<QWidget*>().size(), 40);
    ExpectLooksOfAllIn(*QApplication::activeWindow());
  });
}

TEST_F(Guest, TheProgramsOwnLooksStayInAVisit) {
  window.edit->clearFocus();
  QCoreApplication::processEvents();
  const QStyle* style = window.edit->style();
  Play([&] {
    host->ExpectUntouched();
    EXPECT_EQ(window.edit->style(), style);
    EXPECT_EQ(window.edit->palette().color(QPalette::Button), QColor(Qt::darkCyan));
    EXPECT_TRUE(window.edit->font().italic());
    // What the host opens meanwhile is the host's.
    QLineEdit late;
    EXPECT_EQ(late.style(), style);
    EXPECT_TRUE(late.font().italic());
  });
  EXPECT_EQ(window.edit->style(), style);
}

TEST_F(Guest, AMessageBoxAMenuAndAToolTipHaveTheComponentsLooks) {
  Play([&] {
    Next([&] {
      ExpectLooksOfAllIn(*QApplication::activeModalWidget());
      QApplication::activeModalWidget()->close();
    });
    desktop.MsgBox("完成。");
    QToolTip::showText({60, 60}, "整个文字", Native(*form->page->name));
    const QWidget* tip = nullptr;
    for (const QWidget* top : QApplication::topLevelWidgets()) {
      if (top->windowType() == Qt::ToolTip && top->isVisible()) tip = top;
    }
    ASSERT_TRUE(tip);
    ExpectLooks(*tip);
    EXPECT_EQ(tip->palette().color(QPalette::ToolTipBase), QColor(0xFF, 0xFD, 0xEE));
    QToolTip::hideText();
    QTest::mouseClick(Native(*form->page->name), Qt::RightButton);
    auto* menu = QApplication::activePopupWidget();
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->objectName(), "EditMenu");
    ExpectLooksOfAllIn(*menu);
    menu->close();
  });
  Next([&] {
    ExpectLooksOfAllIn(*QApplication::activeModalWidget());
    QApplication::activeModalWidget()->close();
  });
  desktop.MsgBox("没有窗口。");
}

TEST_F(Guest, TheFileDialogIsInChineseAndTheHostHearsNothingOfIt) {
  toolkit::CommonDialog request("dlgSelPic");
  request.filter = "图片文件 (*.jpg)|*.jpg;";
  Play([&] {
    Next([&] {
      auto* dialog = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      ExpectLooksOfAllIn(*dialog);
      ExpectLooks(*dialog->findChild<QCompleter*>()->popup());
      EXPECT_EQ(Text(dialog->findChild<QWidget*>("backButton")->toolTip()), "后退");
      EXPECT_EQ(QCoreApplication::translate("HostWindow", "Open"), "fremd Open");
      QTest::keyClick(dialog, Qt::Key_Escape);
    });
    the_platform->ChooseFile(request);
  });
  EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Open"), "fremd Open");
  EXPECT_EQ(window.translations, 0);
}

TEST_F(Guest, WhatASlotOfTheHostsThrowsIsCaughtByItsOwnNotifyAsEver) {
  using Caught = std::vector<std::string>;
  host->catches = true;
  const auto turn = [] {
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [] { throw std::runtime_error("the slot's"); });
    timer.start(0);
    QTest::qWait(10);
  };
  turn();
  EXPECT_EQ(host->caught, Caught{"the slot's"});
  Play([&] {
    turn();
    EXPECT_EQ(host->caught, (Caught{"the slot's", "the slot's"}));
    EXPECT_TRUE(form->Loaded());
    Type(Native(*form->page->name), "x");
    EXPECT_EQ(form->page->name->Text(), "x");
  });
  turn();
  EXPECT_EQ(host->caught.size(), 3U);
}

TEST_F(Guest, AFailureOfAHandlerGoesToTheCallerAndNotThroughTheHostsNotify) {
  host->catches = true;
  int number = 0;
  try {
    Play([&] {
      On(form->page->button->Click, [] { throw environment::MakeFailure(environment::kOverflow); });
      Click(Native(*form->page->button));
    });
  } catch (const environment::Failure& failure) {
    number = failure.number();
  }
  EXPECT_EQ(number, environment::kOverflow);
  EXPECT_TRUE(host->caught.empty());
}

TEST_F(Guest, TheHostsWindowTakesNoInputInAVisit) {
  const auto click = [&] { QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, {3, 3}); };
  click();
  EXPECT_EQ(window.presses, 1);
  Play([&] {
    click();
    EXPECT_EQ(window.presses, 1);
  });
  click();
  EXPECT_EQ(window.presses, 2);
}

TEST_F(Guest, TheNativeWindowStandsOverTheHostsActiveOneWithoutAnOwner) {
  Play([&] {
    const QWidget* visit = QApplication::activeWindow();
    EXPECT_FALSE(visit->parentWidget());
    EXPECT_EQ(visit->windowHandle()->transientParent(), window.windowHandle());
    EXPECT_EQ(visit->windowModality(), Qt::ApplicationModal);
  });
}

TEST_F(Guest, TheNativeWindowStandsOverTheOneThatIsHandedIn) {
  HostWindow other;
  other.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&] { return window.isActiveWindow(); }));
  the_platform->StandOver(other.edit);
  Play([&] {
    EXPECT_EQ(QApplication::activeWindow()->windowHandle()->transientParent(), other.windowHandle());
  });
  the_platform->StandOver(nullptr);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&] { return window.isActiveWindow(); }));
  Play([&] {
    EXPECT_EQ(QApplication::activeWindow()->windowHandle()->transientParent(), window.windowHandle());
  });
}

TEST_F(Guest, TheHostsWindowHasTheKeyboardAgainAfterAVisit) {
  window.edit->setFocus();
  Play([&] { EXPECT_FALSE(window.isActiveWindow()); });
  EXPECT_TRUE(window.isActiveWindow());
  EXPECT_TRUE(window.edit->hasFocus());
}

TEST_F(Guest, AWindowOfTheHostsThatGoesInAVisitTakesNothingAlong) {
  auto going = std::make_unique<HostWindow>();
  going->show();
  the_platform->StandOver(going.get());
  Play([&] {
    going.reset();
    EXPECT_TRUE(QApplication::activeWindow());
    Type(Native(*form->page->name), "x");
    EXPECT_EQ(form->page->name->Text(), "x");
  });
}

TEST_F(Guest, AStyleSheetOfTheProgramsStaysAndTheVisitWorks) {
  host->setStyleSheet("QPushButton { min-width: 200px; }");
  Play([&] {
    Type(Native(*form->page->name), "x");
    EXPECT_EQ(form->page->name->Text(), "x");
    // A style of its own stands behind the sheet, which has the last word.
    EXPECT_EQ(Native(*form->page->name)->palette().color(QPalette::Highlight), QColor(0x2B, 0x6C, 0xB0));
  });
  EXPECT_EQ(host->styleSheet(), "QPushButton { min-width: 200px; }");
  host->setStyleSheet({});
}

TEST_F(Guest, APlatformThatEndsLeavesNoWindowBehind) {
  const auto windows = QApplication::topLevelWidgets().size();
  {
    QtPlatform platform;
    toolkit::Desktop own(platform);
    const auto inner = std::make_shared<DemoForm>(own);
    Play(*inner, [] {});
    Play(*inner, [&] { inner->Hide(); });
  }
  EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
}

}  // namespace
}  // namespace dossierkit::qt
