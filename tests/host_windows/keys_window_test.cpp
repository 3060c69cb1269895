// F1: the page of keys.
#include "host/keys_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTextBrowser>
#include <QTimer>

#include "shell/component.h"
#include "tests/support/scripted_qt.h"
#include "tests/support/visit.h"
#include "tests/support/window_test.h"

namespace dossierkit::host {
namespace {

class KeysPage : public testing::Test {
 protected:
  // Presses F1 on the widget; gives the text of the page that came, which is closed by Esc.
  QString PressF1(QWidget& widget, Qt::KeyboardModifiers modifiers = {}) {
    QString text;
    QTimer::singleShot(0, qApp, [&] {
      if (!QTest::qWaitFor([] { return Page() != nullptr; }, 500)) return;
      text = Page()->findChild<QTextBrowser*>()->toPlainText();
      QTest::keyClick(Page()->focusWidget(), Qt::Key_F1);  // no second one
      QTest::keyClick(Page()->focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(&widget, Qt::Key_F1, modifiers);
    QTest::qWait(modifiers ? 600 : 0);
    return text;
  }
  static QWidget* Page() {
    QWidget* modal = QApplication::activeModalWidget();
    return modal && modal->windowTitle() == "按键说明" ? modal : nullptr;
  }

  tests::ScriptedQt stage_;
  KeysHelp help_;
};

TEST_F(KeysPage, F1ShowsItOverTheHostsWindowAndEscClosesIt) {
  QLineEdit box;
  box.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
  const QString page = PressF1(box);
  EXPECT_TRUE(page.startsWith("按键说明")) << page.toStdString();
  for (const char* key :
       {"Ctrl+N", "Ctrl+S", "Ctrl+,", "Ctrl+.", "F4", "Alt+↓", "Ctrl+Z", "Ctrl+Enter", "Esc"})
    EXPECT_TRUE(page.contains(key)) << key;
  EXPECT_FALSE(page.contains("|"));
  EXPECT_EQ(Page(), nullptr);
  EXPECT_TRUE(PressF1(box).startsWith("按键说明")) << "a second time";
}

TEST_F(KeysPage, OtherKeysWithF1DoNotShowIt) {
  QLineEdit box;
  box.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&box));
  EXPECT_EQ(PressF1(box, Qt::ControlModifier), QString());
}

TEST_F(KeysPage, F1ShowsItInAVisitWhichGoesOn) {
  const auto database = tests::SampleDatabase();
  const Component component(stage_, "/opt/dossier");
  IUserCtrl dossier;
  dossier.SetConnection(database);
  dossier.OperationType = 3;
  dossier.personID = tests::kPerson;
  stage_.WillRun([&](toolkit::Form& form) {
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }));
    const QPointer<QWidget> field = QApplication::focusWidget();
    EXPECT_TRUE(PressF1(*field).startsWith("按键说明"));
    EXPECT_FALSE(form.LoopEnded());
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == field; }));
  });
  dossier.ShowDossier();
}

}  // namespace
}  // namespace dossierkit::host
