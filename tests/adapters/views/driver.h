// Driver: what a view set brings so that the suite of tests for views runs on it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/toolkit/controls/edit_history.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"
#include "tests/support/stage.h"

namespace dossierkit::views {

// A stage, and a look at what shows on it: at the native widgets where there are any. A control is known by
// its name, a button of a toolbar by its key.
class Driver {
 public:
  virtual ~Driver() = default;

  toolkit::Desktop& Desktop() { return desktop_; }
  tests::User& User() { return *user_; }
  headless::Script& Script() { return stage_->GetScript(); }
  // Shows the window, plays the scene in its loop, and closes it behind.
  virtual void Play(toolkit::Form& form, const std::function<void()>& scene) {
    Script().WillRun([&](toolkit::Form&) { scene(); });
    form.ShowModal();
  }

  // --- what the user sees ----------------------------------------------------------------------
  virtual std::string Text(const std::string& name) = 0;  // of a box, label or button
  // Of a box, in places of the shown text.
  virtual toolkit::Selection Selected(const std::string& name) = 0;
  virtual bool Checked(const std::string& name) = 0;
  virtual bool InSight(const std::string& name) = 0;
  virtual bool Enabled(const std::string& name) = 0;
  // The chosen row of a list, grid or menu, or the tab in front, from 0; -1 without one.
  virtual int Row(const std::string& name) = 0;
  // How many rows a list has, or a tree shows under its open nodes.
  virtual int Rows(const std::string& name) = 0;
  virtual std::string Node(const std::string& name) = 0;  // the text of a tree's chosen node, or nothing
  // The control that has the keyboard, or nothing.
  virtual std::string Focus() = 0;
  // What a screen reader says.
  virtual std::string Spoken(const std::string& name) = 0;

 protected:
  // The control of that name in the topmost window.
  template <typename T>
  std::shared_ptr<T> Find(const std::string& name) {
    return user_->Find<T>(name);
  }
  toolkit::Form& Window() { return user_->Window(); }

 private:
  const std::unique_ptr<tests::Stage> stage_ = tests::MakeStage();
  toolkit::Desktop desktop_{stage_->GetPlatform()};
  const std::unique_ptr<tests::User> user_ = stage_->MakeUser(desktop_);
};

// Each program of tests that runs the suite defines it for its views.
std::unique_ptr<Driver> MakeDriver();

}  // namespace dossierkit::views
