// Modality: while a window of ours is on show, the other windows of its thread take no input.
#pragma once

#include <vector>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

// Disables the windows of this thread that are enabled and in sight, but for `window` and those that it owns,
// and enables the same again at its end: to be ended before `window` hides, so that the one below becomes the
// active one.
class OthersDisabled {
 public:
  explicit OthersDisabled(HWND window);
  ~OthersDisabled();
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;

 private:
  std::vector<HWND> disabled_;
};

}  // namespace dossierkit::win32
