#include "adapters/qt/keys.h"

#include "platform/toolkit/controls/control.h"

namespace dossierkit::qt {
namespace {

struct KeyRow {
  int native;
  int code;
};

constexpr KeyRow kKeyRows[] = {
    {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},       {Qt::Key_Backtab, 9},  {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},    {Qt::Key_Control, 17}, {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},    {Qt::Key_CapsLock, 20}, {Qt::Key_Escape, 27},  {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},      {Qt::Key_Home, 36},    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},       {Qt::Key_Right, 39},    {Qt::Key_Down, 40},    {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},   {Qt::Key_Delete, 46},
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

int CodeOf(const QKeyEvent& event) {
  const int key = event.key();
  if (event.modifiers() & Qt::KeypadModifier) {
    if (const int code = KeypadCode(key)) return code;
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + key - Qt::Key_F1;
  for (const KeyRow& row : kKeyRows) {
    if (row.native == key) return row.code;
  }
  // A key that types a character has that character's number.
  return toolkit::KeyCodeOfCharacter(static_cast<char32_t>(key));
}

}  // namespace

toolkit::KeyStroke StrokeOf(const QKeyEvent& event) {
  const int back = event.key() == Qt::Key_Backtab ? toolkit::kShift : 0;
  return {CodeOf(event), ShiftOf(event.modifiers()) | back, event.text().toStdU32String()};
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

}  // namespace dossierkit::qt
