// Keys: native key events in the terms of the model.
#pragma once

#include <QKeyEvent>

#include "platform/toolkit/controls/key_stroke.h"

namespace dossierkit::qt {

toolkit::KeyStroke StrokeOf(const QKeyEvent& event);

// Shift, Ctrl and Alt as the model's mask.
int ShiftOf(Qt::KeyboardModifiers modifiers);

// The mouse button by the model's numbers, or 0.
int ButtonOf(Qt::MouseButton button);

}  // namespace dossierkit::qt
