#include "tests/adapters/qt/stage.h"

#include <QInputMethodEvent>
#include <QLabel>

namespace dossierkit::qt {

QtPlatform* Stage::the_platform = nullptr;

void Stage::Play(toolkit::Form& window, const std::function<void()>& scene) {
  QTimer::singleShot(0, qApp, [&window, scene] {
    scene();
    if (window.Loaded()) window.UserClose();
  });
  window.ShowModal();
}

void Stage::AnswerNext(const char* button) {
  Next([this, button] {
    auto* box = dynamic_cast<MessageDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(box);
    message = box->findChild<QLabel*>("Text")->text().toStdString();
    Click(box->findChild<QPushButton*>(button));
  });
}

void Stage::Commit(QWidget* widget, const char* text, const char* composing) {
  QInputMethodEvent event(QString::fromUtf8(composing), {});
  event.setCommitString(QString::fromUtf8(text));
  QCoreApplication::sendEvent(widget, &event);
}

}  // namespace dossierkit::qt
