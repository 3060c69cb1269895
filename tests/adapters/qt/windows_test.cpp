#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <typeinfo>

#include "platform/environment/failure.h"
#include "tests/adapters/qt/stage.h"
#include "tests/support/foreign_application.h"

namespace dossierkit::qt {
namespace {

class QtWindows : public Stage {
 protected:
  std::shared_ptr<DemoForm> inner = std::make_shared<DemoForm>(desktop, "frmInner", 9000, 6000);
};

TEST_F(QtWindows, ShowsItsCaptionAndActivatesOnce) {
  Play([&] {
    auto* window = QApplication::activeWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(Text(window->windowTitle()), "人员维护");
    EXPECT_EQ(window->objectName(), "frmDemo");
    EXPECT_TRUE(window->isModal());
    form->SetCaption("另一个");
    EXPECT_EQ(Text(window->windowTitle()), "另一个");
  });
  EXPECT_EQ(form->activations, 1);
  EXPECT_FALSE(form->Loaded());
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(QtWindows, TheCloseBoxEndsTheLoopWithoutACheck) {
  bool checked = false;
  Play([&] {
    On(form->page->name->Validate, [&](bool&) { checked = true; });
    QApplication::activeWindow()->close();
    EXPECT_FALSE(form->Loaded());
  });
  EXPECT_FALSE(checked);
}

TEST_F(QtWindows, EscClosesNothing) {
  Play([&] {
    Press(Native(*form->page->name), Qt::Key_Escape);
    EXPECT_TRUE(form->Loaded());
    EXPECT_TRUE(QApplication::activeWindow());
  });
}

TEST_F(QtWindows, ReportsItsSize) {
  Play([&] {
    const int before = form->resizes;
    QApplication::activeWindow()->resize(1200, 900);
    EXPECT_EQ(form->resizes, before + 1);
    EXPECT_EQ(form->Place().width, 1200 * 15 + 120);
    EXPECT_EQ(form->Place().height, 900 * 15 + 405);
    QApplication::activeWindow()->resize(600, 400);
    EXPECT_EQ(form->Place().width, 15240 + 120) << "a smaller window scrolls";
  });
}

TEST_F(QtWindows, Nest) {
  Play([&] {
    auto* outer = QApplication::activeWindow();
    Next([&] {
      EXPECT_EQ(QApplication::activeWindow()->objectName(), "frmInner");
      Type(Native(*inner->page->name), "x");
      EXPECT_EQ(inner->page->name->Text(), "x");
      outer->close();
      EXPECT_TRUE(form->Loaded()) << "a window above it keeps it open";
      QApplication::activeWindow()->close();
    });
    inner->ShowModal();
    EXPECT_EQ(QApplication::activeWindow(), outer);
    EXPECT_TRUE(Native(*form->page->name)->hasFocus());
    EXPECT_EQ(QApplication::focusWidget(), Native(*form->page->name));
    Type(Native(*form->page->name), "y");
    EXPECT_EQ(form->page->name->Text(), "y");
  });
}

struct CenteredForm : DemoForm {
  explicit CenteredForm(toolkit::Desktop& desktop) : DemoForm(desktop, "frmCentered", 3000, 1500) {
    SetCenteredOnOwner(true);
  }
};

TEST_F(QtWindows, OpensOverTheMiddleOfItsOwnerWhereItIsSaid) {
  const auto small = std::make_shared<CenteredForm>(desktop);
  Play([&] {
    QWidget* outer = QApplication::activeWindow();
    outer->resize(400, 300);
    outer->move(40, 30);
    Next([&] {
      const QPoint off =
          QApplication::activeWindow()->frameGeometry().center() - outer->frameGeometry().center();
      EXPECT_LE(off.manhattanLength(), 8) << "but for the frame";
      QApplication::activeWindow()->close();
    });
    small->ShowModal();
  });
}

TEST_F(QtWindows, IsShownAgainAfterHiding) {
  for (int i = 0; i < 2; ++i) {
    Play([&] {
      EXPECT_TRUE(QApplication::activeWindow());
      form->Hide();
    });
    EXPECT_TRUE(form->Loaded());
    form->Unload();
  }
}

TEST_F(QtWindows, AMessageBoxIsAnsweredByMouseAndKeys) {
  Play([&] {
    const auto answer = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
      Next([key, modifiers] {
        QTest::keyClick(QApplication::activeModalWidget()->focusWidget(), key, modifiers);
      });
      return desktop.MsgBox("是否保存？", toolkit::kYesNo + toolkit::kQuestionIcon, "信息保存");
    };
    AnswerNext("No");
    EXPECT_EQ(desktop.MsgBox("是否保存？", toolkit::kYesNo), toolkit::kAnswerNo);
    EXPECT_EQ(answer(Qt::Key_Return), toolkit::kAnswerYes);
    EXPECT_EQ(answer(Qt::Key_Space), toolkit::kAnswerYes);
    EXPECT_EQ(answer(Qt::Key_N), toolkit::kAnswerNo);
    EXPECT_EQ(answer(Qt::Key_Y, Qt::AltModifier), toolkit::kAnswerYes);
    Next([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(desktop.MsgBox("完成。"), toolkit::kAnswerOk);
    Next([] { QApplication::activeModalWidget()->close(); });
    EXPECT_EQ(desktop.MsgBox("完成。"), toolkit::kAnswerOk);
    EXPECT_TRUE(Native(*form->page->name)->hasFocus());
    EXPECT_TRUE(QApplication::activeWindow()->isActiveWindow());
  });
}

TEST_F(QtWindows, ArrowsLeadFromButtonToButtonOfAQuestion) {
  Play([&] {
    Next([] {
      QWidget* box = QApplication::activeModalWidget();
      const auto focus_behind = [box](Qt::Key key) {
        QTest::keyClick(box->focusWidget(), key);
        return Text(box->focusWidget()->objectName());
      };
      EXPECT_EQ(Text(box->focusWidget()->objectName()), "Yes");
      EXPECT_EQ(focus_behind(Qt::Key_Right), "No");
      EXPECT_EQ(focus_behind(Qt::Key_Left), "Yes");
      EXPECT_EQ(focus_behind(Qt::Key_Down), "No");
      EXPECT_EQ(focus_behind(Qt::Key_Up), "Yes");
      QTest::keyClick(box->focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(desktop.MsgBox("是否保存？", toolkit::kYesNo), toolkit::kAnswerYes);
  });
}

TEST_F(QtWindows, TheFirstAnswerCounts) {
  Play([&] {
    Next([] {
      QWidget* box = QApplication::activeModalWidget();
      QTest::keyClick(box, Qt::Key_Y);
      QTest::keyClick(box, Qt::Key_N);
    });
    EXPECT_EQ(desktop.MsgBox("是否保存？", toolkit::kYesNo), toolkit::kAnswerYes);
  });
}

TEST_F(QtWindows, AMessageIsShownAsItStandsHoweverLongAndReadOut) {
  Play([&] {
    QString text = "<b>语句</b> a&b";
    for (int line = 0; line < 200; ++line) text += "\n第" + QString::number(line) + "行";
    Next([&] {
      QWidget* box = QApplication::activeModalWidget();
      const auto* label = box->findChild<QLabel*>("Text");
      EXPECT_EQ(label->textFormat(), Qt::PlainText);
      EXPECT_EQ(label->text(), text);
      EXPECT_EQ(box->accessibleDescription(), text);
      EXPECT_TRUE(box->screen()->availableGeometry().contains(box->geometry())) << box->height();
      EXPECT_TRUE(box->findChild<QPushButton*>("OK")->visibleRegion().boundingRect().height() > 20);
      QTest::keyClick(box, Qt::Key_Escape);
    });
    desktop.MsgBox(text.toStdString());
  });
}

// A host without windows of its own would end where its last one seems to close.
TEST_F(QtWindows, NoWindowOfTheComponentsIsTheProgramsLast) {
  int last = 0;
  const auto spy = QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, [&] { ++last; });
  QTimer::singleShot(0, qApp, [&] {
    AnswerNext("OK");
    desktop.MsgBox("没有窗口。");
    Next([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    the_platform->ChooseFile(toolkit::CommonDialog("dlgSelPic"));
    Play([&] {
      AnswerNext("OK");
      desktop.MsgBox("完成。");
      QApplication::activeWindow()->close();
    });
    QTimer::singleShot(20, qApp, [] { QCoreApplication::exit(); });
  });
  QCoreApplication::exec();
  QObject::disconnect(spy);
  EXPECT_EQ(last, 0);
}

// Its loop ends behind the visit, and not under it.
TEST_F(QtWindows, AProgramThatIsToldToEndGoesOnUntilTheVisitEnds) {
  bool typed = false;
  QTimer::singleShot(0, qApp, [&] {
    QTimer::singleShot(0, qApp, [&] {
      EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; }));
      QCoreApplication::exit();
      QTimer::singleShot(10, qApp, [&] {
        form->page->name->UserReplace(0, 0, "x");
        typed = form->page->name->Text() == "x";
        form->UserClose();
      });
    });
    form->ShowModal();
  });
  QCoreApplication::exec();
  EXPECT_TRUE(typed);
}

TEST_F(QtWindows, TheWindowBelowHasTheKeyboardWhereOneHidesItself) {
  Play([&] {
    On(form->page->button->Click, [&] {
      Next([&] { inner->Hide(); });
      inner->ShowModal();
    });
    Click(Native(*form->page->button));
    EXPECT_EQ(Text(QApplication::activeWindow()->objectName()), "frmDemo");
    EXPECT_TRUE(Native(*form->page->button)->hasFocus());
    EXPECT_TRUE(inner->Loaded());
    inner->Unload();
  });
}

TEST_F(QtWindows, AQuestionHasNoOtherWayOut) {
  Play([&] {
    Next([] {
      auto* box = dynamic_cast<MessageDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(box);
      EXPECT_EQ(box->windowTitle(), "信息保存");
      EXPECT_FALSE(box->windowFlags() & Qt::WindowCloseButtonHint);
      EXPECT_EQ(box->findChild<QPushButton*>("Yes")->text(), "是(&Y)");
      EXPECT_EQ(box->findChild<QPushButton*>("No")->accessibleName(), "否");
      EXPECT_TRUE(box->findChild<QPushButton*>("Yes")->isDefault());
      QTest::keyClick(box, Qt::Key_Escape);
      box->close();
      EXPECT_TRUE(box->isVisible());
      EXPECT_FALSE(box->Answered());
      QTest::mouseClick(box->findChild<QPushButton*>("No"), Qt::LeftButton);
    });
    EXPECT_EQ(desktop.MsgBox("是否保存？", toolkit::kYesNo, "信息保存"), toolkit::kAnswerNo);
  });
}

TEST_F(QtWindows, AMessageWithoutATitleBearsTheProgramsName) {
  Play([&] {
    Next([] {
      EXPECT_EQ(QApplication::activeModalWidget()->windowTitle(), "DossierKit");
      QApplication::activeModalWidget()->close();
    });
    desktop.MsgBox("完成。");
  });
}

TEST_F(QtWindows, AMessageBeforeTheWindowIsShownStandsOverIt) {
  bool stands_over_it = false;
  form->on_activate = [&] {
    AnswerNext("OK");
    QTimer::singleShot(0, qApp, [&] {
      const QWidget* box = QApplication::activeModalWidget();
      stands_over_it = box && box->parentWidget() && box->parentWidget()->objectName() == "frmDemo" &&
                       box->parentWidget()->isVisible();
    });
    desktop.MsgBox("开始。");
  };
  Play([&] { EXPECT_TRUE(QApplication::activeWindow()); });
  EXPECT_EQ(message, "开始。");
  EXPECT_TRUE(stands_over_it);
}

TEST_F(QtWindows, AFailureGoesThroughTwoLoopsToTheCaller) {
  int number = 0;
  try {
    Play([&] {
      On(form->page->button->Click, [&] { inner->ShowModal(); });
      Next([&] {
        On(inner->page->name->Change, [] { throw environment::MakeFailure(environment::kOverflow); });
        Type(Native(*inner->page->name), "x");
      });
      Click(Native(*form->page->button));
    });
  } catch (const environment::Failure& failure) {
    number = failure.number();
  }
  EXPECT_EQ(number, environment::kOverflow);
  EXPECT_FALSE(inner->Loaded());
  EXPECT_FALSE(form->Loaded());
  EXPECT_FALSE(QApplication::activeModalWidget());
  // And the next visit works.
  Play([&] { EXPECT_TRUE(Native(*form->page->name)->hasFocus()); });
}

TEST_F(QtWindows, AListThatWasClosedShowsNothing) {
  Play([&] {
    form->rows->Close();
    Native("DGItems")->grab();
    QCoreApplication::processEvents();
    EXPECT_TRUE(form->Loaded());
  });
}

// In a filter that Qt asks before the widget, in the middle of a press.
TEST_F(QtWindows, AFailureInAHandlerOfAViewEndsTheWindowBehindQtsFrames) {
  int number = 0;
  bool went_on = false;
  try {
    Play([&] {
      On(form->page->coded->MouseDown,
         [](int, int, int, int) { throw environment::MakeFailure(environment::kOverflow); });
      Click(Native(*form->page->coded));
      went_on = true;
      EXPECT_TRUE(form->LoopEnded());
    });
  } catch (const environment::Failure& failure) {
    number = failure.number();
  }
  EXPECT_TRUE(went_on);
  EXPECT_EQ(number, environment::kOverflow);
}

TEST_F(QtWindows, TheClockOfThePlatformGoesOnByItself) {
  const auto before = std::chrono::steady_clock::now();
  const auto moment_of_platform = the_platform->QtPlatform::Moment();
  EXPECT_GE(moment_of_platform, before);
  EXPECT_LE(moment_of_platform, std::chrono::steady_clock::now());
}

TEST_F(QtWindows, ABusyPointerShowsInALongEvent) {
  Play([&] {
    On(form->page->button->Click, [&] {
      form->page->coded->SetText("1");
      EXPECT_FALSE(QApplication::overrideCursor());
      moment += std::chrono::milliseconds(300);
      form->page->coded->SetText("2");
      ASSERT_TRUE(QApplication::overrideCursor());
      EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
      AnswerNext("OK");
      Next([&] { EXPECT_FALSE(QApplication::overrideCursor()); });
      desktop.MsgBox("完成。");
    });
    Click(Native(*form->page->button));
    EXPECT_EQ(message, "完成。");
    EXPECT_FALSE(QApplication::overrideCursor());
  });
}

TEST_F(QtWindows, TheProgramsApplicationObjectIsUsedAndAPlainOneMadeWhereThereIsNone) {
  const QCoreApplication& application = *QCoreApplication::instance();
  const auto& kind = typeid(application);
  EXPECT_TRUE(kind == typeid(QApplication) || kind == typeid(tests::ForeignApplication)) << kind.name();
}

TEST_F(QtWindows, AFileIsChosenThatNeedNotExist) {
  Play([&] {
    toolkit::CommonDialog request("dlgSelPic");
    request.filter = "图片文件 (*.jpg)|*.jpg;";
    request.init_dir = "/tmp\\nobody.jpg";
    Next([] {
      auto* dialog = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      EXPECT_EQ(dialog->directory().path(), "/tmp");
      auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
      name->setText("no-such-picture.jpg");
      QTest::keyClick(name, Qt::Key_Return);
    });
    EXPECT_EQ(the_platform->ChooseFile(request), "/tmp/no-such-picture.jpg");
    Next([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(the_platform->ChooseFile(request), "");
    EXPECT_TRUE(Native(*form->page->name)->hasFocus());
  });
}

TEST_F(QtWindows, APageMayBeRemovedInItsOwnEvent) {
  Play([&] {
    On(form->page->button->Click, [&] { form->NewPage(); });
    Click(Native(*form->page->button));
    EXPECT_TRUE(Native(*form->page->name)->hasFocus());
    On(form->menu->MenuItemClick, [&](std::int32_t&, std::int32_t&) { form->NewPage(); });
    On(form->page->date->KeyPress, [&](char32_t&) { form->NewPage(); });
    form->page->date->SetFocus();
    Type(Native(*form->page->date), "1");
    On(form->page->notes->KeyDown, [&](int&, int) { form->DropPage(); });
    form->page->notes->SetFocus();
    Type(Native(*form->page->notes), "1");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(QApplication::activeWindow()->findChild<QWidget*>("A02_A0202_v"));
  });
}

// As where the handler shows a message box: its loop does what was put off.
TEST_F(QtWindows, AKeyWhoseHandlerEndedTheFieldGoesNoFurther) {
  Play([&] {
    int keys = 0;
    On(form->page->date->KeyDown, [&](int&, int) {
      ++keys;
      form->DropPage();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    form->page->date->SetFocus();
    const QPointer<QWidget> date = Native(*form->page->date);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_1, Qt::NoModifier, "1");
    QCoreApplication::sendEvent(date, &press);
    EXPECT_TRUE(press.isAccepted());
    EXPECT_FALSE(date);
    EXPECT_EQ(keys, 1);
  });
}

TEST_F(QtWindows, AWindowUnloadedInItsOwnEventGoesLater) {
  Play([&] {
    On(form->bar->ButtonClick, [&](toolkit::ToolbarButton&) { form->Unload(); });
    Click(Native("Exit"));
    EXPECT_FALSE(form->Loaded());
  });
}

}  // namespace
}  // namespace dossierkit::qt
