// Keys: native key events in the terms of the model.
#pragma once

#include <QKeyEvent>
#include <vector>

namespace dossierkit::qt {

// The key code (65 for A, 188 for the comma, 13 for Enter, ...), or 0 for a key without one.
int KeyCodeOf(const QKeyEvent& event);

// Shift, Ctrl and Alt as the model's mask.
int ShiftOf(Qt::KeyboardModifiers modifiers);

// The mouse button by the model's numbers, or 0.
int ButtonOf(Qt::MouseButton button);

// The characters that the key types: 13 for Enter, 10 for Ctrl+Enter, 8 for Backspace, 27 for Esc,
// 1 to 26 for Ctrl and a letter; none for keys that type nothing.
std::vector<char32_t> CharactersOf(const QKeyEvent& event);

// The letter or digit of Alt and a letter or digit, or 0.
char MnemonicKeyOf(const QKeyEvent& event);

}  // namespace dossierkit::qt
