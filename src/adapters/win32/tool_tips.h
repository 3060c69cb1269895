// ToolTips: the texts that show beside the mouse, of all views of one window.
#pragma once

#include <map>
#include <string>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

class ToolTips {
 public:
  ToolTips(HWND owner, HFONT font, int most_width);
  void SetLook(HFONT font, int most_width);

  // Shows the text as it is, in lines, where the mouse rests on a window; an empty one shows nothing.
  void Set(HWND window, const std::wstring& text);
  // To be told before a window goes.
  void Forget(HWND window);

 private:
  HWND tips_;  // goes with its owner
  std::map<HWND, std::wstring> texts_;
};

}  // namespace dossierkit::win32
