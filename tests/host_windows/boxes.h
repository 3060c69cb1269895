// Boxes: notes and answers the host's own boxes while something that opens them runs.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <string>
#include <vector>

namespace dossierkit::host {

// A box is answered by the button of the caption that was prepared for it, in order; without one it is
// closed.
class Boxes {
 public:
  Boxes() {
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start();
  }

  // From now on boxes are left to the test.
  void Rest() { timer_.stop(); }

  void WillPress(const char* caption) { answers_.push_back(caption); }

  // What each box said, in order.
  std::vector<std::string> texts;

 private:
  // The component's own boxes are QDialogs, too; the stage answers those.
  static bool IsTheHosts(const QDialog& box) {
    return box.inherits("QMessageBox") || box.windowTitle() == "人员重复" || box.windowTitle() == "人员档案";
  }

  void Look() {
    auto* box = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
    if (!box || !IsTheHosts(*box) || QApplication::activeWindow() != box) return;
    const auto* message = dynamic_cast<QMessageBox*>(box);
    texts.push_back((message ? message->text() : box->findChild<QLabel*>()->text()).toStdString());
    const QString wanted = answers_.empty() ? QString() : answers_.front();
    if (!answers_.empty()) answers_.erase(answers_.begin());
    for (auto* button : box->findChildren<QPushButton*>()) {
      if (button->text() == wanted) {
        button->click();
        return;
      }
    }
    box->reject();
  }

  QTimer timer_;
  std::vector<QString> answers_;
};

}  // namespace dossierkit::host
