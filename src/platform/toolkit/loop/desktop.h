// Desktop: the modal windows that are on show, message boxes, and the classes of controls by name.
#pragma once

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/toolkit/loop/busy_pointer.h"
#include "platform/toolkit/loop/platform.h"

namespace dossierkit::toolkit {

class UserControl;

// One for a program or library. Everything happens on the one thread that uses it.
class Desktop {
 public:
  explicit Desktop(Platform& platform) : platform_(platform) {}

  Platform& GetPlatform() { return platform_; }
  BusyPointer& Busy() { return busy_; }

  // --- classes ---------------------------------------------------------------------------------
  using Factory = std::function<std::shared_ptr<Control>(const std::string& name)>;
  // A class is found without regard to the case of its name; the control bears the given name as it
  // stands. Create throws 731 where there is no such class.
  void RegisterClass(const std::string& class_name, Factory factory);
  std::shared_ptr<Control> Create(const std::string& class_name, const std::string& name) const;

  // --- message boxes ---------------------------------------------------------------------------
  // Without a title of its own a box bears "DossierKit".
  MessageAnswer MsgBox(const std::string& text, int flags = kOkOnly, const std::string& title = "DossierKit");
  // Shows the file dialog: the chosen path, or empty. Input goes to it alone, as to a message box.
  std::string ChooseFile(const CommonDialog& request);
  // Whether a message box or the file dialog is on show.
  bool MessageShown() const { return message_shown_; }
  void Beep() { platform_.Beep(); }

  // --- input methods ---------------------------------------------------------------------------
  // A text is being composed; no longer, once a message box or another window opens.
  bool Composing() const { return composing_; }
  void SetComposing(bool composing) { composing_ = composing; }

  // --- modal windows ---------------------------------------------------------------------------
  bool IsTopmost(const Form& form) const;
  bool LoopEnded(const Form& form) const;
  Form* TopmostForm() const;

 private:
  friend class Form;
  struct Frame {
    Form* form;
    bool ended = false;
    std::exception_ptr failure;
  };
  // Runs the loop of a window; rethrows what Fail noted.
  void RunModal(Form& form, const std::function<void()>& at_start);
  void EndLoop(const Form& form);
  void Fail(std::exception_ptr failure);
  // A message box or file dialog while it is on show.
  class Showing;

  Platform& platform_;
  BusyPointer busy_{platform_};
  std::map<std::string, Factory> classes_;  // by the name in small letters
  std::vector<Frame*> frames_;
  bool message_shown_ = false;
  bool composing_ = false;
};

}  // namespace dossierkit::toolkit
