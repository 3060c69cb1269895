// HeadlessUser: what a person at the keyboard and the mouse does, on windows without a screen. It
// edits text boxes and moves in lists as a native widget would.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/environment/export.h"
#include "platform/toolkit/controls/edit_box.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::headless {

class DOSSIERKIT_EXPORT HeadlessUser {
 public:
  explicit HeadlessUser(toolkit::Desktop& desktop) : desktop_(desktop) {}

  // The topmost window; throws std::logic_error where there is none.
  toolkit::Form& Window();
  // The control of that name in the topmost window or on its page; throws std::logic_error.
  std::shared_ptr<toolkit::Control> Find(const std::string& name);
  template <typename T>
  std::shared_ptr<T> Find(const std::string& name) {
    return std::dynamic_pointer_cast<T>(Find(name));
  }

  void Click(const std::string& name, int button = toolkit::kLeftButton);
  void DoubleClick(const std::string& name);
  // Both fail (std::logic_error) where there is no such control; a disabled button does nothing. Items of the
  // menu count from 1; one that is not there is a click beside them.
  void ClickToolbar(const std::string& key);
  void ClickMenu(int item);
  void ClickRow(int row);
  // A row of a list, from 0, a node of a tree by its key, a tab from 0. A row that is not there is a
  // click beside the rows; what is out of sight fails (std::logic_error).
  void ClickListRow(const std::string& name, int row);
  void ClickNode(const std::string& name, const std::string& key);
  void SelectTab(const std::string& name, int tab);
  // Opens or closes a node by its mark.
  void FoldNode(const std::string& name, const std::string& key);

  void Type(const std::string& text);
  // A key by its code (or the capital letter of it), with a mask of Shift, Ctrl, Alt.
  void Press(int key, int shift = 0);
  void Tab() { Window().UserTab(true); }
  void BackTab() { Window().UserTab(false); }
  // Puts the text on the clipboard and presses Ctrl+V.
  void Paste(const std::string& text);
  // Presses the right button on a text box or masked box: the items of its menu, none where the press was
  // refused.
  std::vector<toolkit::EditMenuItem> OpenMenu(const std::string& name);
  // Clicks an item of that menu; throws std::logic_error where it is not there or disabled.
  void ChooseFromMenu(const std::string& name, const std::string& caption);
  void Close() { Window().UserClose(); }

 private:
  void Enter(const std::string& text);
  void Edit(const toolkit::KeyStroke& stroke);

  toolkit::Desktop& desktop_;
};

}  // namespace dossierkit::headless
