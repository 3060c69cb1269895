// KeyInput: what a key passes through in a window, and where it goes.
#pragma once

#include <memory>
#include <string>

#include "platform/toolkit/controls/control_window.h"
#include "platform/toolkit/controls/controls.h"
#include "platform/toolkit/focus/focus.h"

namespace dossierkit::toolkit {

// The window whose keys these are.
class KeyWindow : public ControlWindow {
 public:
  // Its controls; nullptr while it is unloaded.
  virtual const Controls* LoadedControls() const = 0;
  // An input method composes a text.
  virtual bool Composing() const = 0;
  // A character before anything else sees it, where the window previews keys; 0 swallows it.
  virtual void PreviewKeyPress(char32_t& character) = 0;
};

// One for each window; form.h says what its methods mean.
class KeyInput {
 public:
  KeyInput(KeyWindow& window, Focus& focus) : window_(window), focus_(focus) {}

  bool Key(const KeyStroke& stroke);
  bool KeyDown(int key, int shift);
  bool KeyPress(char32_t character);
  std::string Commit(const std::string& text);
  void Tab(bool forward);
  // "{tab}": to the next tab stop; "{Home}+{End}": the whole text is selected.
  void Send(const std::string& keys);

 private:
  bool ClickButtonOf(int key);

  KeyWindow& window_;
  Focus& focus_;
};

}  // namespace dossierkit::toolkit
