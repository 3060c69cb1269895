#include "adapters/qt/keys.h"

#include "platform/toolkit/controls/control.h"

namespace dossierkit::qt {
namespace {

struct KeyRow {
  int native;
  int code;
};

constexpr KeyRow kKeyRows[] = {
    {Qt::Key_Backspace, 8},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Exclam, '1'},
    {Qt::Key_At, '2'},
    {Qt::Key_NumberSign, '3'},
    {Qt::Key_Dollar, '4'},
    {Qt::Key_Percent, '5'},
    {Qt::Key_AsciiCircum, '6'},
    {Qt::Key_Ampersand, '7'},
    {Qt::Key_ParenLeft, '9'},
    {Qt::Key_ParenRight, '0'},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Colon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Less, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Underscore, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Greater, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, 192},
    {Qt::Key_AsciiTilde, 192},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_BraceLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_Bar, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_BraceRight, 221},
    {Qt::Key_Apostrophe, 222},
    {Qt::Key_QuoteDbl, 222},
    // The same keys while an input method gives Chinese punctuation.
    {0xFF0C, 188},
    {0x300A, 188},
    {0x3002, 190},
    {0x300B, 190},
};

int KeypadCode(int key) {
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return 96 + key - Qt::Key_0;
  switch (key) {
    case Qt::Key_Asterisk: return 106;
    case Qt::Key_Plus: return 107;
    case Qt::Key_Minus: return 109;
    case Qt::Key_Period:
    case Qt::Key_Comma: return 110;
    case Qt::Key_Slash: return 111;
    default: return 0;
  }
}

}  // namespace

int KeyCodeOf(const QKeyEvent& event) {
  const int key = event.key();
  if (event.modifiers() & Qt::KeypadModifier) {
    if (const int code = KeypadCode(key)) return code;
  }
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
  if (key == Qt::Key_Asterisk) return '8';
  for (const KeyRow& row : kKeyRows) {
    if (row.native == key) return row.code;
  }
  return 0;
}

int ShiftOf(Qt::KeyboardModifiers modifiers) {
  int mask = 0;
  if (modifiers & Qt::ShiftModifier) mask |= toolkit::kShift;
  if (modifiers & Qt::ControlModifier) mask |= toolkit::kCtrl;
  if (modifiers & Qt::AltModifier) mask |= toolkit::kAlt;
  return mask;
}

int ButtonOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton: return toolkit::kLeftButton;
    case Qt::RightButton: return toolkit::kRightButton;
    case Qt::MiddleButton: return toolkit::kMiddleButton;
    default: return 0;
  }
}

std::vector<char32_t> CharactersOf(const QKeyEvent& event) {
  const bool ctrl = event.modifiers() & Qt::ControlModifier;
  const bool alt = event.modifiers() & Qt::AltModifier;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return {ctrl ? U'\n' : U'\r'};
    case Qt::Key_Backspace: return {U'\b'};
    case Qt::Key_Escape: return {char32_t{27}};
    case Qt::Key_Delete:
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return {};
    default: break;
  }
  if (ctrl && !alt && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) {
    return {static_cast<char32_t>(event.key() - Qt::Key_A + 1)};
  }
  if (ctrl != alt) return {};  // Ctrl and Alt together are AltGr
  std::vector<char32_t> characters;
  for (const uint character : event.text().toUcs4()) {
    if (character >= 32 && character != 127) characters.push_back(character);
  }
  return characters;
}

char MnemonicKeyOf(const QKeyEvent& event) {
  if ((event.modifiers() & ~Qt::ShiftModifier & ~Qt::KeypadModifier) != Qt::AltModifier) return 0;
  const int key = event.key();
  const bool known = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
  return known ? static_cast<char>(key) : '\0';
}

}  // namespace dossierkit::qt
