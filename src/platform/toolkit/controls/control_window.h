// ControlWindow: a window as the controls in it see it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

class CommonDialog;
class Controls;

class ControlWindow {
 public:
  virtual ~ControlWindow() = default;

  // The window itself, which is a control, too.
  virtual Control& AsControl() = 0;
  // Its controls have views.
  virtual bool Shown() const = 0;
  // It is on show, and not about to close: its controls can be reached.
  virtual bool Open() const = 0;
  // Runs one event of the user's, with whatever it queues. Ignored while the window is not the topmost modal
  // one; gives false then. Never throws: a failure ends the window's loop.
  virtual bool Deliver(const std::function<void()>& event) = 0;
  // What it still does once the handler that added the page has ended: UserControl_Show.
  virtual void PageAdded(const std::shared_ptr<UserControl>& page) = 0;
  // Queues "{tab}" or "{Home}+{End}" for after the present event; dropped if the page that has the
  // focus now is gone by then.
  virtual void SendKeys(const std::string& keys) = 0;

  // --- focus -----------------------------------------------------------------------------------
  virtual const std::shared_ptr<Control>& ActiveControl() const = 0;
  // Moves the focus: Validate, LostFocus, GotFocus. False if the check refused or the control went.
  virtual bool MoveFocus(Control& to) = 0;
  // The check of a focus change without the change, for a toolbar button. False if it refused.
  virtual bool CheckFocus() = 0;
  // A control or page goes: what has the focus in it has it no more, and hears nothing of it.
  virtual void ForgetFocusOf(const Control& removed) = 0;

  // --- what stands around it -------------------------------------------------------------------
  virtual std::unique_ptr<View> CreateView(Control& control) = 0;
  // A control by the name of its class; throws 731 where there is no such class.
  virtual std::shared_ptr<Control> CreateControl(const std::string& class_name, const std::string& name) = 0;
  // The path that the user chose in the file dialog, or empty.
  virtual std::string ChooseFile(const CommonDialog& request) = 0;
  // The text that all programs share, with line breaks as the model has them, CR LF.
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardText(const std::string& text) = 0;
  virtual void Beep() = 0;
  // In the course of an event, where the work comes by: see busy_pointer.h.
  virtual void Tick() = 0;

 protected:
  // The views of a control and of what it owns come with its window and go with it.
  static void CreateViewsOf(Control& control) { control.CreateViews(); }
  static void DestroyViewsOf(Control& control) { control.DestroyViews(); }
};

}  // namespace dossierkit::toolkit
