#include "adapters/win32/surroundings.h"

#include <commctrl.h>

#include "adapters/win32/window_classes.h"

namespace dossierkit::win32 {
namespace {

// Windows 10 and later have them.
using SetAwareness = void*(WINAPI*)(void* context);
using DotsOfWindow = UINT(WINAPI*)(HWND);
using DotsOfSystem = UINT(WINAPI*)();

template <typename Function>
Function Find(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

void* PerMonitor() { return reinterpret_cast<void*>(static_cast<INT_PTR>(-4)); }  // version 2

constexpr WORD kManifest = 2;  // the manifest of a library

}  // namespace

CommonControls::CommonControls() {
  ACTCTXW wanted = {};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  wanted.hModule = OwnModule();
  wanted.lpResourceName = MAKEINTRESOURCEW(kManifest);
  context_ = CreateActCtxW(&wanted);
}

CommonControls::~CommonControls() {
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

InSurroundings::InSurroundings(const CommonControls& controls) {
  activated_ = controls.context_ != INVALID_HANDLE_VALUE && ActivateActCtx(controls.context_, &cookie_);
  const INITCOMMONCONTROLSEX wanted = {sizeof wanted,
                                       ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES};
  InitCommonControlsEx(&wanted);
  if (const auto set = Find<SetAwareness>("SetThreadDpiAwarenessContext"))
    awareness_before_ = set(PerMonitor());
}

InSurroundings::~InSurroundings() {
  if (awareness_before_) {
    if (const auto set = Find<SetAwareness>("SetThreadDpiAwarenessContext")) set(awareness_before_);
  }
  if (activated_) DeactivateActCtx(0, cookie_);
}

int DotsPerInch(HWND window) {
  if (const auto of_window = Find<DotsOfWindow>("GetDpiForWindow"); of_window && window) {
    if (const UINT dots = of_window(window)) return static_cast<int>(dots);
  }
  if (const auto of_system = Find<DotsOfSystem>("GetDpiForSystem")) return static_cast<int>(of_system());
  const HDC screen = GetDC(nullptr);
  const int dots = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dots;
}

}  // namespace dossierkit::win32
