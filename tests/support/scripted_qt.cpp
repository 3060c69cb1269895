#include "tests/support/scripted_qt.h"

#include <QApplication>
#include <QTimer>
#include <stdexcept>

#include "platform/toolkit/loop/form.h"
#include "tests/support/qt_user.h"
#include "tests/support/stage.h"
#include "tests/support/window_test.h"

namespace dossierkit::tests {

void ScriptedQt::RunLoop(toolkit::Form& form) {
  const Scene scene = NextScene();
  // What the scene throws must not pass through Qt.
  std::exception_ptr failure;
  QTimer::singleShot(0, [&] {
    try {
      if (scene) scene(form);
    } catch (...) {
      failure = std::current_exception();
    }
    if (!form.LoopEnded()) form.UserClose();
  });
  QtPlatform::RunLoop(form);
  if (failure) std::rethrow_exception(failure);
}

toolkit::MessageAnswer ScriptedQt::ShowMessage(const std::string& text, int flags, const std::string& title) {
  const headless::Message message = {text, flags, title};
  messages.push_back(message);
  const auto answer = NextAnswer(message);
  QTimer::singleShot(0, [&] {
    if (on_message) on_message(message);
    QWidget* box = QApplication::activeModalWidget();
    // The window below hands its place over only in the loop.
    if (!QTest::qWaitFor([box] { return QApplication::activeWindow() == box; })) return;
    if (answer == toolkit::kAnswerNo) {
      QTest::keyClick(box, Qt::Key_N, Qt::AltModifier);
    } else {
      QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key_Return);
    }
  });
  const auto given = QtPlatform::ShowMessage(text, flags, title);
  if (given != answer) throw std::logic_error("the box was answered otherwise: " + text);
  return given;
}

std::string ScriptedQt::ChooseFile(const toolkit::CommonDialog& request) { return NextChoice(request); }

std::unique_ptr<Stage> MakeStage() { return std::make_unique<StageOf<ScriptedQt, QtUser>>(); }

}  // namespace dossierkit::tests
