// User: what a person at the keyboard and the mouse does, on whichever views a program of tests has.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::tests {

// A control is known by its name, a button of a toolbar by its key; menu items and rows of a grid count from
// 1, rows of a list and tabs from 0. What is not there fails (std::logic_error), as do a row of a list, a
// node and a tab that are out of sight.
class User {
 public:
  virtual ~User() = default;

  // The topmost window, and a control in it or on its page.
  virtual toolkit::Form& Window() = 0;
  virtual std::shared_ptr<toolkit::Control> Find(const std::string& name) = 0;
  template <typename T>
  std::shared_ptr<T> Find(const std::string& name) {
    return std::dynamic_pointer_cast<T>(Find(name));
  }

  virtual void Click(const std::string& name, int button = toolkit::kLeftButton) = 0;
  virtual void DoubleClick(const std::string& name) = 0;
  virtual void ClickToolbar(const std::string& key) = 0;
  virtual void ClickMenu(int item) = 0;
  virtual void ClickRow(int row) = 0;
  virtual void ClickListRow(const std::string& name, int row) = 0;
  virtual void ClickNode(const std::string& name, const std::string& key) = 0;
  virtual void SelectTab(const std::string& name, int tab) = 0;
  // Opens or closes a node by its mark.
  virtual void FoldNode(const std::string& name, const std::string& key) = 0;

  virtual void Type(const std::string& text) = 0;
  // A key by its code (or the capital letter of it), with a mask of Shift, Ctrl, Alt.
  virtual void Press(int key, int shift = 0) = 0;
  virtual void Tab() = 0;
  virtual void BackTab() = 0;
  // Puts the text on the clipboard and presses Ctrl+V.
  virtual void Paste(const std::string& text) = 0;
  virtual void Close() = 0;
};

}  // namespace dossierkit::tests
