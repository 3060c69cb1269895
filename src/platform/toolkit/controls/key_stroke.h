// KeyStroke: one press of a key, in the terms of the model, and what follows from it on every desktop.
#pragma once

#include <string>

namespace dossierkit::toolkit {

enum ShiftMask { kShift = 1, kCtrl = 2, kAlt = 4 };

// Key codes that the toolkit itself looks at.
enum KeyCode {
  kKeyBack = 8,
  kKeyTab = 9,
  kKeyReturn = 13,
  kKeyEscape = 27,
  kKeyPageUp = 33,
  kKeyPageDown = 34,
  kKeyEnd = 35,
  kKeyHome = 36,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyInsert = 45,
  kKeyDelete = 46,
  kKeyPad0 = 96,  // of the keypad; 1 to 9 follow
  kKeyF4 = 115,
};

struct KeyStroke {
  int code = 0;         // 65 for A, 188 for the comma, 13 for either Enter, ...; 0 for a key without one
  int shift = 0;        // ShiftMask
  std::u32string text;  // what the system says that the key types
};

// The characters for which KeyPress comes: 13 for Enter, 10 for Ctrl+Enter, 8 for Backspace, 27 for Esc, 1 to
// 26 for Ctrl and a letter, else what the key types; none for keys that type nothing. Ctrl and Alt together
// are AltGr, which types.
std::u32string CharactersOf(const KeyStroke& stroke);

// The capital letter or digit of Alt and a letter or digit, or 0.
char MnemonicKeyOf(const KeyStroke& stroke);

// The code of the key that types a character on a keyboard of the usual (US) order; also of the key that
// types Chinese punctuation under an input method. 0 where there is none.
int KeyCodeOfCharacter(char32_t character);

}  // namespace dossierkit::toolkit
