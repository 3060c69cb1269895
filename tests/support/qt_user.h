// QtUser: the user of the Qt views, whose events on the native widgets are real.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/loop/desktop.h"
#include "tests/support/user.h"

class QModelIndex;
class QTreeView;
class QWidget;

namespace dossierkit::tests {

class QtUser : public User {
 public:
  explicit QtUser(toolkit::Desktop& desktop) : desktop_(desktop) {}

  using User::Find;
  toolkit::Form& Window() override;
  std::shared_ptr<toolkit::Control> Find(const std::string& name) override;
  void Click(const std::string& name, int button = toolkit::kLeftButton) override;
  void DoubleClick(const std::string& name) override;
  void ClickToolbar(const std::string& key) override;
  void ClickMenu(int item) override;
  void ClickRow(int row) override;
  void ClickListRow(const std::string& name, int row) override;
  void ClickNode(const std::string& name, const std::string& key) override;
  void SelectTab(const std::string& name, int tab) override;
  void FoldNode(const std::string& name, const std::string& key) override;
  // ASCII as keys, anything else as the commit of an input method.
  void Type(const std::string& text) override;
  void Press(int key, int shift = 0) override;
  void Tab() override;
  void BackTab() override;
  void Paste(const std::string& text) override;
  void Close() override;

 private:
  QWidget& NativeWindow();
  // The native widget of that object name in the topmost window; throws std::logic_error.
  QWidget& Native(const std::string& name);
  QTreeView& TreeOf(const std::string& name);
  QModelIndex NodeOf(const std::string& name, const std::string& key);

  toolkit::Desktop& desktop_;
};

}  // namespace dossierkit::tests
