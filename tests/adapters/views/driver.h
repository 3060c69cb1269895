// Driver: what a view set brings so that the suite of tests for views runs on it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/headless/headless_platform.h"
#include "platform/toolkit/controls/edit_history.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::views {

// A user who acts by native events, and looks at native widgets. A control is known by its name, a button of
// a toolbar by its key.
class Driver {
 public:
  virtual ~Driver() = default;

  virtual toolkit::Desktop& Desktop() = 0;
  // Shows the window, plays the scene in its loop, and closes it behind.
  virtual void Play(toolkit::Form& form, const std::function<void()>& scene) = 0;
  // The answer to the next question.
  virtual void WillAnswer(toolkit::MessageAnswer answer) = 0;
  virtual int Beeps() = 0;

  // --- what the user does ----------------------------------------------------------------------
  virtual void Click(const std::string& name) = 0;
  virtual void DoubleClick(const std::string& name) = 0;
  virtual void ClickToolbar(const std::string& key) = 0;
  virtual void ClickMenu(int item) = 0;
  virtual void ClickRow(int row) = 0;
  virtual void ClickListRow(const std::string& name, int row) = 0;
  virtual void ClickNode(const std::string& name, const std::string& key) = 0;
  virtual void FoldNode(const std::string& name, const std::string& key) = 0;
  virtual void SelectTab(const std::string& name, int tab) = 0;
  virtual void Type(const std::string& text) = 0;
  virtual void Press(int key, int shift = 0) = 0;
  virtual void Paste(const std::string& text) = 0;
  virtual void CloseWindow() = 0;

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
};

// Each program of tests that runs the suite defines it for its views.
std::unique_ptr<Driver> MakeDriver();

// What all drivers share: a platform with scenes and answers prepared, and a user for it.
template <typename Platform, typename User>
class DriverOf : public Driver {
 public:
  toolkit::Desktop& Desktop() override { return desktop_; }
  void Play(toolkit::Form& form, const std::function<void()>& scene) override {
    platform_.WillRun([&](toolkit::Form&) { scene(); });
    form.ShowModal();
  }
  void WillAnswer(toolkit::MessageAnswer answer) override { platform_.WillAnswer(answer); }
  int Beeps() override { return platform_.beeps; }

  void Click(const std::string& name) override { user_.Click(name); }
  void DoubleClick(const std::string& name) override { user_.DoubleClick(name); }
  void ClickToolbar(const std::string& key) override { user_.ClickToolbar(key); }
  void ClickMenu(int item) override { user_.ClickMenu(item); }
  void ClickRow(int row) override { user_.ClickRow(row); }
  void ClickListRow(const std::string& name, int row) override { user_.ClickListRow(name, row); }
  void ClickNode(const std::string& name, const std::string& key) override { user_.ClickNode(name, key); }
  void FoldNode(const std::string& name, const std::string& key) override { user_.FoldNode(name, key); }
  void SelectTab(const std::string& name, int tab) override { user_.SelectTab(name, tab); }
  void Type(const std::string& text) override { user_.Type(text); }
  void Press(int key, int shift) override { user_.Press(key, shift); }
  void Paste(const std::string& text) override { user_.Paste(text); }
  void CloseWindow() override { user_.Close(); }

 protected:
  // The control of that name in the topmost window.
  template <typename T>
  std::shared_ptr<T> Find(const std::string& name) {
    return user_.template Find<T>(name);
  }
  toolkit::Form& Window() { return user_.Window(); }

 private:
  Platform platform_;
  toolkit::Desktop desktop_{platform_};
  User user_{desktop_};
};

}  // namespace dossierkit::views
