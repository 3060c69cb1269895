#include "bench/painted.h"
#include "tests/support/win32_user.h"

// It stands on windows.h.
#include <psapi.h>

namespace dossierkit::bench {

void Paint() { tests::RunMessages(); }

double PrivateMebibytes() {
  PROCESS_MEMORY_COUNTERS_EX memory = {};
  GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                       sizeof memory);
  return static_cast<double>(memory.PrivateUsage) / 1024 / 1024;
}

}  // namespace dossierkit::bench
