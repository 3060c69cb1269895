// FocusSync: the native focus follows the model's, and asks it where it went elsewhere.
#pragma once

#include "adapters/windows/windows_headers.h"

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::win32 {

class Application;
class NativeView;

class FocusSync {
 public:
  explicit FocusSync(Application& application) : application_(application) {}

  // Gives the native focus to the control that has the model's focus, or to the window itself where that
  // control cannot have it. A window that takes no input now is left alone: it is shown again when it does.
  void Show(toolkit::Form& form);
  // The native focus came to a view's window. Unless the program moved it there, the model is asked: soon,
  // since its check may open a window, and whoever moved the focus (a screen reader) waits for an answer.
  void Follow(NativeView& view);

 private:
  Application& application_;
  bool showing_ = false;
};

}  // namespace dossierkit::win32
