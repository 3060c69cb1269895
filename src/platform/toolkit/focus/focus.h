// Focus: which control of a window has the keyboard, and how it gets there.
#pragma once

#include <memory>
#include <vector>

#include "platform/toolkit/controls/controls.h"

namespace dossierkit::toolkit {

// One for each window. All its methods may run handlers that move the focus themselves or remove controls.
class Focus {
 public:
  // The control that has the focus, or nullptr.
  const std::shared_ptr<Control>& Present() const { return present_; }
  // The same, if keys go there: a control that was disabled or hidden while it has the focus keeps it, but
  // gets no keys.
  std::shared_ptr<Control> KeyTarget() const;

  // Validate of the control that has the focus; false if it refused.
  bool Check();
  // Validate, LostFocus, GotFocus. False if the check refused or the control cannot be reached any more.
  bool Move(Control& to);
  // A control or page goes: what has the focus in it has it no more, without an event.
  void ForgetOf(const Control& removed);

  // The next reachable tab stop after (or before) the focus among the controls of a window and its pages, on
  // no hidden tab; nullptr where there is none.
  std::shared_ptr<Control> NextTabStop(const Controls& all, bool forward) const;

 private:
  std::shared_ptr<Control> present_;
  bool checking_ = false;  // a Validate is being raised
};

}  // namespace dossierkit::toolkit
