// The views of a library of the tests: none on a screen.
#include "adapters/com/server.h"
#include "adapters/headless/headless_platform.h"

namespace dossierkit::com {

std::unique_ptr<toolkit::Platform> MakePlatform() { return std::make_unique<headless::HeadlessPlatform>(); }

}  // namespace dossierkit::com
