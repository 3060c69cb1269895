// MessageDialog: a message box that never runs a loop of its own, with the buttons of the model.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/win32/look.h"
#include "platform/toolkit/loop/message_box.h"

namespace dossierkit::win32 {

// Whichever loop dispatches its messages: arrows and Tab go from button to button, Enter and the blank press
// the one that has the keyboard, and the letter of a button, with Alt or without, presses that.
class MessageDialog {
 public:
  // Not on show yet; for a screen of so many dots to the inch. `owner` may be null. Throws std::system_error
  // where Windows makes no window.
  MessageDialog(Looks& looks, int dpi, const std::string& text, int flags, const std::string& title,
                HWND owner);
  ~MessageDialog();
  MessageDialog(const MessageDialog&) = delete;
  MessageDialog& operator=(const MessageDialog&) = delete;

  // Stands over the middle of its owner or of the screen, makes the sound of its icon, and takes the
  // keyboard.
  void Show();
  void Hide() const { ShowWindow(window_, SW_HIDE); }
  HWND Handle() const { return window_; }  // null once it was destroyed from outside

  bool Answered() const { return answered_; }
  toolkit::MessageAnswer Answer() const { return answer_; }
  // What is to happen once the box is answered.
  void OnAnswer(std::function<void()> wake) { wake_ = std::move(wake); }

 private:
  static LRESULT CALLBACK BoxProcedure(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept;
  static LRESULT CALLBACK PartProcedure(HWND window, UINT id, WPARAM wide, LPARAM low, UINT_PTR,
                                        DWORD_PTR dialog) noexcept;
  LRESULT Receive(UINT id, WPARAM wide, LPARAM low);
  bool TakesKey(HWND window, UINT id, WPARAM wide);
  void MakeWindow(const std::string& title, HWND owner);
  HWND MakePart(const wchar_t* window_class, const std::wstring& text, DWORD style, int id);
  void MakeParts();
  RECT NeededByText() const;
  int HighestText() const;
  void PlacePart(HWND part, const RECT& place) const;
  void Arrange();
  RECT Outer() const;
  void ScreenChanged(int dpi, POINT corner);
  void Paint() const;
  void MoveFocus(HWND from, int step) const;
  void Take(toolkit::MessageAnswer answer);

  Looks& looks_;
  const Look* look_;
  const std::wstring text_;
  int flags_;
  HWND window_ = nullptr;
  HBRUSH surface_;
  HWND first_ = nullptr;  // the button that has the keyboard, or gets it with the window
  HWND shown_text_ = nullptr;
  bool scrolls_ = false;  // the text, which has no room
  std::vector<HWND> buttons_;
  SIZE upper_ = {};  // icon and text, with the margins around them
  SIZE client_ = {};
  bool answered_ = false;
  toolkit::MessageAnswer answer_;
  std::function<void()> wake_;
};

}  // namespace dossierkit::win32
