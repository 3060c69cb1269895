// WindowClasses: the classes of the windows that are ours alone.
#pragma once

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

// A window, and a part of one; both do nothing but what a view does for them.
inline constexpr wchar_t kWindowClass[] = L"DossierKit.Window";
inline constexpr wchar_t kPaneClass[] = L"DossierKit.Pane";
// Never on show: its messages wake loops.
inline constexpr wchar_t kQueueClass[] = L"DossierKit.Queue";

// The program or library that this code is a part of.
HINSTANCE OwnModule();

// Registered while one of these lives: before a library may go, its classes must have gone. Windows and parts
// of them come with the procedure, which costs less than to give it to each. Throws std::system_error.
class WindowClasses {
 public:
  explicit WindowClasses(WNDPROC procedure);
  ~WindowClasses();
  WindowClasses(const WindowClasses&) = delete;
  WindowClasses& operator=(const WindowClasses&) = delete;
};

}  // namespace dossierkit::win32
