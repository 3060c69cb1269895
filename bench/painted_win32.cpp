#include "bench/painted.h"
#include "tests/support/win32_user.h"

namespace dossierkit::bench {

void Paint() { tests::RunMessages(); }

}  // namespace dossierkit::bench
