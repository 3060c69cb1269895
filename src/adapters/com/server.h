// Server: what the library keeps from the first visit until it is unloaded: the component with its views.
// One, on the heap, so that nothing is left for the end of the process, in which no other library can be
// relied on.
#pragma once

#include <memory>

#include "adapters/windows/windows_headers.h"
#include "platform/toolkit/loop/platform.h"

namespace dossierkit::com {

// The views of this library: its program gives them, src/adapters/win32 or what a test has in their place.
std::unique_ptr<toolkit::Platform> MakePlatform();

// Counts what keeps the library loaded: objects, class factories, locks of hosts.
void Hold();
void LetGo();

// Makes the server where there is none yet, or none whose thread still runs, on the calling thread. False
// where it is of another thread, also of one that asks at the same moment. Throws.
bool RequireServer();

// Ends the server where nothing keeps the library loaded: S_OK, and S_FALSE where something does or the
// thread is not the server's own.
HRESULT EndServer() noexcept;

}  // namespace dossierkit::com
