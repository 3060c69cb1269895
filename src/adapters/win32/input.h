// Input: asks the model about each press and each key before a native window acts on it.
#pragma once

#include <optional>
#include <string>

#include "adapters/win32/message.h"

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::win32 {

class Application;
class NativeView;

// A key goes to the model with all that it types, as one: the characters that the system has made of it wait
// in the queue behind it. Only what the model leaves comes to the native window. A character without a key is
// from an input method, and so is what it composes: the model hears of the text that it hands over at the end
// alone.
class Input {
 public:
  explicit Input(Application& application) : application_(application) {}

  // The answer to a message that the native window must not see; nothing for all others.
  std::optional<LRESULT> Receive(HWND window, const Message& message);

  // Between a press that goes on and its release nothing may move below the pointer: the release would miss
  // what was pressed.
  bool MouseHeld() const { return held_; }

 private:
  std::optional<LRESULT> Press(HWND window, const Message& message);
  std::optional<LRESULT> Release(HWND window, const Message& message);
  void Move(HWND window, const Message& message);
  std::optional<LRESULT> Key(HWND window, const Message& message);
  std::optional<LRESULT> Character(HWND window, const Message& message);
  std::optional<LRESULT> Compose(HWND window, const Message& message);
  std::optional<LRESULT> Result(HWND window, const Message& message);
  // What the model took of a text that an input method hands over comes to the native window.
  void Commit(HWND window, const std::wstring& text);
  LRESULT Send(HWND window, const Message& message);
  NativeView* ViewOf(HWND window) const;

  Application& application_;
  HWND pressed_ = nullptr;
  UINT swallowed_ = 0;  // the release that belongs to a press which was refused
  bool held_ = false;
  bool sending_ = false;    // a message that was seen here already
  wchar_t first_half_ = 0;  // of a character that comes as two
};

// Shift, Ctrl and Alt as they are now, as the model's mask.
int ShiftNow();

}  // namespace dossierkit::win32
