// Message: what Windows tells a window.
#pragma once

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

struct Message {
  UINT id = 0;
  WPARAM wide = 0;
  LPARAM low = 0;
};

}  // namespace dossierkit::win32
