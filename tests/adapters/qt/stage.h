// Stage: shows a window, lets a scene act on its native widgets by real events, and closes it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <ctime>
#include <functional>
#include <memory>
#include <string>

#include "adapters/qt/message_dialog.h"
#include "adapters/qt/qt_platform.h"
#include "tests/adapters/qt/demo_form.h"
#include "tests/support/window_test.h"

namespace dossierkit::qt {

class Stage : public ::testing::Test {
 public:
  static QtPlatform* the_platform;
  // Its clock, which stands still: on a machine that is busy an event of a test may take its time.
  static std::chrono::steady_clock::time_point moment;

 protected:
  // Shows the window; the scene runs in its loop; the window is closed behind it.
  void Play(const std::function<void()>& scene) { Play(*form, scene); }
  void Play(toolkit::Form& window, const std::function<void()>& scene);

  // Runs once the next nested loop (a message box, a window) runs.
  void Next(const std::function<void()>& act);
  // Answers the next message box by a click on its button ("OK", "Yes", "No") and notes its text.
  void AnswerNext(const char* button);
  std::string message;  // of the box answered last

  // The native widget of that name in the active window.
  template <typename Widget = QWidget>
  Widget* Native(const std::string& name) {
    QWidget* window = QApplication::activeWindow();
    auto* widget = window ? window->findChild<Widget*>(QString::fromStdString(name)) : nullptr;
    EXPECT_TRUE(widget) << name;
    return widget;
  }
  template <typename Widget = QWidget>
  Widget* Native(const toolkit::Control& control) {
    return Native<Widget>(control.Name());
  }
  // In its middle, which scrolls into sight first, as for a user who looks for it.
  static void Click(QWidget* widget);
  static void Type(QWidget* widget, const char* keys) { QTest::keyClicks(widget, QString::fromUtf8(keys)); }
  static void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(widget, key, modifiers);
  }
  // What this program has had of the processor so far: others that are busy take nothing of it.
  static double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
  static void Commit(QWidget* widget, const char* text, const char* composing = "");
  static std::string Text(const QString& text) { return text.toStdString(); }

  template <typename... Parameters, typename Handler>
  void On(environment::Event<Parameters...>& event, Handler handler) {
    hooks_.push_back(event.Subscribe(handler));
  }

  toolkit::Desktop desktop{*the_platform};
  std::shared_ptr<DemoForm> form = std::make_shared<DemoForm>(desktop);

 private:
  std::vector<environment::Subscription> hooks_;
};

}  // namespace dossierkit::qt
