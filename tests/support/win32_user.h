// Win32User: the user of the native views, by messages to their windows.
#pragma once

#include <memory>
#include <string>

#include "adapters/windows/windows_headers.h"
#include "platform/toolkit/loop/desktop.h"
#include "tests/support/user.h"

namespace dossierkit::win32 {
class NativeView;
}

namespace dossierkit::tests {

// Runs all messages that wait.
void RunMessages();
// A key goes to a window, with what it types, and comes up again.
void PressAt(HWND window, int key, int shift = 0);
// The mouse button goes down and up at a place of a window; at the window that is there for the mouse.
void ClickAt(HWND window, POINT place, int button = toolkit::kLeftButton, bool twice = false);

class Win32User : public User {
 public:
  explicit Win32User(toolkit::Desktop& desktop) : desktop_(desktop) {}

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
  // ASCII as keys, anything else as an input method hands it over.
  void Type(const std::string& text) override;
  void Press(int key, int shift = 0) override;
  void Tab() override { Press(toolkit::kKeyTab); }
  void BackTab() override { Press(toolkit::kKeyTab, toolkit::kShift); }
  void Paste(const std::string& text) override;
  void Close() override;

  // The view of a control of the topmost window, or of the window itself; throws std::logic_error.
  win32::NativeView& ViewOf(const std::string& name);
  // The window of a button of a toolbar, and the one in a control's own of that class.
  HWND ToolbarButton(const std::string& key);
  HWND PartOf(const std::string& name, const wchar_t* window_class);

 private:
  static void ClickInList(HWND list, int row);
  static HTREEITEM ItemOf(HWND tree, int node, HTREEITEM first);
  RECT PlaceOfNode(HWND tree, const std::string& name, const std::string& key);
  HWND NativeWindow();
  // Brings a control into sight and gives its window, with the place in it that is clicked.
  HWND Reveal(const std::string& name, POINT& place);
  // What has the keyboard.
  HWND Target();

  toolkit::Desktop& desktop_;
};

}  // namespace dossierkit::tests
