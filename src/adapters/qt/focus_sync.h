// FocusSync: the native focus follows the model's, and asks it where it went elsewhere.
#pragma once

#include <QWidget>

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::qt {

class QtApplication;

class FocusSync {
 public:
  explicit FocusSync(QtApplication& application) : application_(application) {}

  // Gives the native focus to the control that has the model's focus.
  void Show(toolkit::Form& form);
  // A widget of the component's windows is about to get the native focus, for that reason.
  void Comes(Qt::FocusReason reason) { reason_ = reason; }
  // The native focus went to a widget. Unless the program moved it there, the model is asked: soon, since
  // its check may open a window, and whoever moved the focus (a screen reader) waits for an answer.
  void Follow(QWidget* now);

 private:
  QtApplication& application_;
  bool showing_ = false;
  Qt::FocusReason reason_ = Qt::OtherFocusReason;
};

}  // namespace dossierkit::qt
