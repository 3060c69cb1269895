// Surroundings: what the component's windows need of the thread, and what the thread must not keep of it.
#pragma once

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

// The common controls of version 6 for windows that are made while it is activated.
class CommonControls {
 public:
  CommonControls();
  ~CommonControls();
  CommonControls(const CommonControls&) = delete;
  CommonControls& operator=(const CommonControls&) = delete;

 private:
  friend class InSurroundings;
  HANDLE context_;
  mutable bool registered_ = false;  // their classes
};

// Windows that are made while it lives have those controls, and are drawn in the resolution of their screen.
class InSurroundings {
 public:
  explicit InSurroundings(const CommonControls& controls);
  ~InSurroundings();
  InSurroundings(const InSurroundings&) = delete;
  InSurroundings& operator=(const InSurroundings&) = delete;

 private:
  bool activated_ = false;
  ULONG_PTR cookie_ = 0;
  void* awareness_before_ = nullptr;
};

// The dots to the inch of the screen on which a window stands, whoever made it; of the first one for none. To
// be asked in these surroundings: a thread of the host's may hear of another number.
int DotsPerInch(HWND window);

// What Windows itself draws at so many dots to the inch, in pixels: a measure of GetSystemMetrics, and the
// frame around a client area, which is added to it.
int SystemMeasure(int measure, int dpi);
void AddFrame(RECT& client, DWORD style, DWORD extended_style, int dpi);

}  // namespace dossierkit::win32
