// MessageDialog: a message box that never runs a loop of its own.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <utility>

#include "adapters/qt/look.h"
#include "platform/toolkit/loop/platform.h"

class QHBoxLayout;

namespace dossierkit::qt {

// With flags kYesNo it has 是(&Y), the default, and 否(&N) and no other way out; else 确定, which Esc
// and the close box mean too.
class MessageDialog : public QDialog {
 public:
  MessageDialog(const Metrics& metrics, const QString& text, int flags, const QString& title,
                QWidget* parent);

  bool Answered() const { return answered_; }
  toolkit::MessageAnswer Answer() const { return answer_; }
  // What is to happen once the box is answered.
  void OnAnswer(std::function<void()> wake) { wake_ = std::move(wake); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddButton(QHBoxLayout& row, const QString& text, const char* name, toolkit::MessageAnswer answer,
                 bool is_default);
  void Take(toolkit::MessageAnswer answer);

  Metrics metrics_;
  bool asks_;
  bool answered_ = false;
  toolkit::MessageAnswer answer_ = toolkit::kAnswerOk;
  std::function<void()> wake_;
};

}  // namespace dossierkit::qt
