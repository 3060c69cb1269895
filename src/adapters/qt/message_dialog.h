// MessageDialog: a message box that never runs a loop of its own.
#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <utility>

#include "adapters/qt/look.h"
#include "platform/toolkit/loop/message_box.h"

class QHBoxLayout;

namespace dossierkit::qt {

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
  void AddButton(QHBoxLayout& row, const toolkit::MessageButton& offered);
  void Take(toolkit::MessageAnswer answer);

  Metrics metrics_;
  int flags_;
  bool answered_ = false;
  toolkit::MessageAnswer answer_ = toolkit::kAnswerOk;
  std::function<void()> wake_;
};

}  // namespace dossierkit::qt
