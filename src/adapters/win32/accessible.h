// Accessible: what a screen reader is told of a view, by MSAA.
#pragma once

#include <memory>
#include <string>

#include "adapters/win32/message.h"
#include "platform/toolkit/controls/control.h"

namespace dossierkit::win32 {

// The answer to WM_GETOBJECT for the client area of a window: what the system itself tells of it, under the
// name that the model has for the control, and with the role of its kind where the window is a plain pane. 0
// where the system knows nothing.
LRESULT AccessibleOf(HWND window, const Message& message, const std::shared_ptr<toolkit::Control>& control);

// The same of a window that is a part of a control, under a name of its own: a list, or a button, which is
// clicked where a screen reader presses it.
LRESULT AccessiblePart(HWND window, const Message& message, std::wstring name, bool is_button);

}  // namespace dossierkit::win32
