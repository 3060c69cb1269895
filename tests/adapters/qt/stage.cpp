#include "tests/adapters/qt/stage.h"

#include <QInputMethodEvent>
#include <QLabel>
#include <QScrollArea>

namespace dossierkit::qt {

QtPlatform* Stage::the_platform = nullptr;
std::chrono::steady_clock::time_point Stage::moment;

namespace {

class PlatformOfTests : public QtPlatform {
 public:
  std::chrono::steady_clock::time_point Moment() const override { return Stage::moment; }
};

// One application serves all tests, and ends before the program does.
class OnePlatform : public ::testing::Environment {
  void SetUp() override {
    platform_ = std::make_unique<PlatformOfTests>();
    Stage::the_platform = platform_.get();
  }
  void TearDown() override { platform_.reset(); }
  std::unique_ptr<QtPlatform> platform_;
};

[[maybe_unused]] const auto* const environment = ::testing::AddGlobalTestEnvironment(new OnePlatform);

}  // namespace

void Stage::Play(toolkit::Form& window, const std::function<void()>& scene) {
  // A message box that comes before the window is answered first.
  std::function<void()> start = [&] {
    if (desktop.MessageShown()) {
      QTimer::singleShot(5, qApp, start);
      return;
    }
    EXPECT_TRUE(QTest::qWaitFor([] {
      return QApplication::activeWindow() &&
             QApplication::activeWindow() == QApplication::activeModalWidget();
    }));
    scene();
    if (window.Loaded()) window.UserClose();
  };
  QTimer::singleShot(0, qApp, start);
  window.ShowModal();
}

void Stage::Next(const std::function<void()>& act) {
  const QWidget* present = QApplication::activeModalWidget();
  QTimer::singleShot(0, qApp, [present, act] {
    ASSERT_TRUE(QTest::qWaitFor([present] {
      QWidget* modal = QApplication::activeModalWidget();
      return modal && modal != present && modal == QApplication::activeWindow();
    }));
    act();
  });
}

void Stage::AnswerNext(const char* button) {
  Next([this, button] {
    auto* box = dynamic_cast<MessageDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(box);
    message = box->findChild<QLabel*>("Text")->text().toStdString();
    Click(box->findChild<QPushButton*>(button));
  });
}

void Stage::Click(QWidget* widget) {
  ASSERT_TRUE(widget);
  for (QWidget* parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(widget);
  }
  QTest::mouseClick(widget, Qt::LeftButton);
}

void Stage::Commit(QWidget* widget, const char* text, const char* composing) {
  QInputMethodEvent event(QString::fromUtf8(composing), {});
  event.setCommitString(QString::fromUtf8(text));
  QCoreApplication::sendEvent(widget, &event);
}

}  // namespace dossierkit::qt
