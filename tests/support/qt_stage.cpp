#include "tests/support/qt_stage.h"

#include <QApplication>
#include <QTimer>
#include <stdexcept>

#include "platform/toolkit/loop/form.h"
#include "tests/support/window_test.h"

namespace dossierkit::tests {

void QtStage::RunLoop(toolkit::Form& form) {
  std::function<void(toolkit::Form&)> scene;
  if (!scenes_.empty()) {
    scene = std::move(scenes_.front());
    scenes_.pop_front();
  }
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

toolkit::MessageAnswer QtStage::ShowMessage(const std::string& text, int flags, const std::string& title) {
  messages.push_back({text, flags, title});
  const bool asks = (flags & toolkit::kYesNo) != 0;
  if (asks && answers_.empty()) throw std::logic_error("no answer was prepared for: " + text);
  auto answer = toolkit::kAnswerOk;
  if (asks) {
    answer = answers_.front();
    answers_.pop_front();
  }
  QTimer::singleShot(0, [&] {
    if (on_message) on_message(messages.back());
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

std::string QtStage::ChooseFile(const toolkit::CommonDialog& request) {
  if (on_choose) on_choose(request);
  if (choices_.empty()) return {};
  std::string path = std::move(choices_.front());
  choices_.pop_front();
  return path;
}

}  // namespace dossierkit::tests
