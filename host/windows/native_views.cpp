// The views of DossierKit.dll: the native ones.
#include "adapters/com/server.h"
#include "adapters/win32/win32_platform.h"

namespace dossierkit::com {

std::unique_ptr<toolkit::Platform> MakePlatform() { return std::make_unique<win32::Win32Platform>(); }

}  // namespace dossierkit::com
