// Platform: what an adapter gives the toolkit besides views.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/loop/message_box.h"

namespace dossierkit::toolkit {

class Form;

class Platform {
 public:
  virtual ~Platform() = default;

  // A view for a control, or for a window (Kind::kForm); nullptr for kinds that show nothing. The
  // view of the container exists already.
  virtual std::unique_ptr<View> CreateView(Control& control) = 0;

  // Shows the window and runs events until form.LoopEnded(); not called if it is so already.
  virtual void RunLoop(Form& form) = 0;
  // Makes the innermost RunLoop return soon.
  virtual void WakeLoop() = 0;

  // Shows a message box over the topmost window and returns the answer: see message_box.h.
  virtual MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) = 0;

  // The file dialog: the chosen path, which need not exist, or empty.
  virtual std::string ChooseFile(const CommonDialog& request) = 0;

  // Reads a JPEG and decodes it, once, at the size of the place that it is to be shown in; an empty path
  // gives no picture. Throws 53 where there is no such file, 70 and 75 where it cannot be read, 481 where it
  // is no picture or beyond the limits of files/picture_file.h.
  virtual Picture LoadPicture(const std::string& path, const Rect& place) = 0;

  // The whole screen, in twips.
  virtual Rect Screen() const = 0;

  virtual void Beep() = 0;

  // By which it is told how long an event has taken; tests have a clock of their own.
  virtual std::chrono::steady_clock::time_point Moment() const { return std::chrono::steady_clock::now(); }

  // The pointer says "wait" from now on, or is as before again; by turns.
  virtual void ShowBusy(bool busy) = 0;

  // The text on the clipboard that all programs share, empty where there is none. A line break is LF where
  // it is set, and of any kind where it is read.
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;
};

}  // namespace dossierkit::toolkit
