// The fixture of tests of what the native windows do besides what every view set must.
#pragma once

#include "adapters/win32/native_view.h"
#include "adapters/windows/texts.h"
#include "tests/adapters/views/view_test.h"
#include "tests/support/win32_user.h"

// It stands on windows.h.
#include <oleacc.h>

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
  // What a screen reader is told of a window, or of a row of it, from 1: its name and role.
  static std::string Spoken(HWND window, long row = CHILDID_SELF, long* role = nullptr) {
    IAccessible* said = nullptr;
    if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&said))))
      return "nothing";
    VARIANT child;
    V_VT(&child) = VT_I4;
    V_I4(&child) = row;
    BSTR text = nullptr;
    said->get_accName(child, &text);
    std::string name = text ? windows::Utf8(text) : std::string();
    SysFreeString(text);
    VARIANT told;
    VariantInit(&told);
    if (role && SUCCEEDED(said->get_accRole(child, &told))) *role = V_I4(&told);
    said->Release();
    return name;
  }
  // As a screen reader presses it.
  static void PressByName(HWND window) {
    IAccessible* said = nullptr;
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               reinterpret_cast<void**>(&said));
    VARIANT self;
    V_VT(&self) = VT_I4;
    V_I4(&self) = CHILDID_SELF;
    said->accDoDefaultAction(self);
    said->Release();
    tests::RunMessages();
  }
  // What shows where the mouse rests on a window; empty where nothing does.
  static std::wstring TipOf(HWND window) {
    TipSearch search{window, {}};
    EnumThreadWindows(GetCurrentThreadId(), FindTip, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }
  // From now on the window answers first as `procedure` does, which hands on to Before().
  static void AnswerBefore(HWND window, WNDPROC procedure) {
    Before() = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
  }
  static WNDPROC& Before() {
    static WNDPROC before = nullptr;
    return before;
  }
  // The button goes down at one place of a window and comes up at another.
  static void Drag(HWND window, POINT from, POINT to) {
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
    tests::RunMessages();
  }

 private:
  struct TipSearch {
    HWND window;
    std::wstring found;
  };
  static BOOL CALLBACK FindTip(HWND tips, LPARAM low) {
    wchar_t name[64] = {};
    GetClassNameW(tips, static_cast<wchar_t*>(name), 63);
    if (lstrcmpW(static_cast<wchar_t*>(name), TOOLTIPS_CLASSW) != 0) return TRUE;
    auto& sought = *reinterpret_cast<TipSearch*>(low);
    wchar_t text[200] = {};
    TTTOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = GetWindow(tips, GW_OWNER);
    tool.uId = reinterpret_cast<UINT_PTR>(sought.window);
    tool.lpszText = static_cast<wchar_t*>(text);
    SendMessageW(tips, TTM_GETTEXTW, 200, reinterpret_cast<LPARAM>(&tool));
    sought.found += static_cast<wchar_t*>(text);
    return TRUE;
  }
};

}  // namespace dossierkit::views
