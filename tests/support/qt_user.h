// QtUser: what a person at the keyboard and the mouse does, as real events on the native widgets.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/loop/desktop.h"
#include "platform/toolkit/loop/form.h"

class QModelIndex;
class QTreeView;
class QWidget;

namespace dossierkit::tests {

class QtUser {
 public:
  explicit QtUser(toolkit::Desktop& desktop) : desktop_(desktop) {}

  toolkit::Form& Window();
  std::shared_ptr<toolkit::Control> Find(const std::string& name);
  template <typename T>
  std::shared_ptr<T> Find(const std::string& name) {
    return std::dynamic_pointer_cast<T>(Find(name));
  }

  void Click(const std::string& name, int button = toolkit::kLeftButton);
  void DoubleClick(const std::string& name);
  void ClickToolbar(const std::string& key);
  void ClickMenu(int item);
  void ClickRow(int row);
  // A row of a list, from 0, a node of a tree by its key, a tab from 0. All must be in sight
  // (std::logic_error).
  void ClickListRow(const std::string& name, int row);
  void ClickNode(const std::string& name, const std::string& key);
  void SelectTab(const std::string& name, int tab);
  // Opens or closes a node by its mark.
  void FoldNode(const std::string& name, const std::string& key);

  // ASCII as keys, anything else as the commit of an input method.
  void Type(const std::string& text);
  void Press(int key, int shift = 0);
  void Tab();
  void BackTab();
  void Paste(const std::string& text);
  void Close();

 private:
  QWidget& NativeWindow();
  // The native widget of that object name in the topmost window; throws std::logic_error.
  QWidget& Native(const std::string& name);
  QTreeView& TreeOf(const std::string& name);
  QModelIndex NodeOf(const std::string& name, const std::string& key);

  toolkit::Desktop& desktop_;
};

}  // namespace dossierkit::tests
