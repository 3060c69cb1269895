// The fixture of tests of what the native windows do besides what every view set must.
#pragma once

#include "adapters/win32/native_view.h"
#include "tests/adapters/views/view_test.h"
#include "tests/support/win32_user.h"

namespace dossierkit::views {

class NativeTest : public ViewTest {
 protected:
  tests::Win32User& Mouse() { return static_cast<tests::Win32User&>(user); }
  HWND Native(const std::string& name) { return Mouse().ViewOf(name).Handle(); }
  HWND Part(const std::string& name, const wchar_t* window_class) {
    return Mouse().PartOf(name, window_class);
  }

  template <typename T = LPARAM>
  static LRESULT Ask(HWND window, UINT id, WPARAM wide = 0, T low = T()) {
    const LRESULT answer = SendMessageW(window, id, wide, (LPARAM)low);
    tests::RunMessages();
    return answer;
  }
  // What shows at a place of a window.
  static COLORREF ColorAt(HWND window, int x, int y) {
    tests::RunMessages();
    UpdateWindow(window);
    const HDC device = GetDC(window);
    const COLORREF color = GetPixel(device, x, y);
    ReleaseDC(window, device);
    return color;
  }
  // The button goes down at one place of a window and comes up at another.
  static void Drag(HWND window, POINT from, POINT to) {
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
    tests::RunMessages();
  }
};

}  // namespace dossierkit::views
