#include "adapters/win32/surroundings.h"

#include <commctrl.h>
#include <shellscalingapi.h>

#include <utility>

#include "adapters/win32/window_classes.h"

namespace dossierkit::win32 {
namespace {

// Windows 10 and later have them.
using SetAwareness = void*(WINAPI*)(void* context);
using MeasureAt = int(WINAPI*)(int measure, UINT dpi);
using AddFrameAt = BOOL(WINAPI*)(RECT*, DWORD style, BOOL menu, DWORD extended_style, UINT dpi);

template <typename Function>
Function Find(const char* name, HMODULE library = GetModuleHandleW(L"user32.dll")) {
  const FARPROC found = library ? GetProcAddress(library, name) : nullptr;
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

// 0 before Windows 8.1.
int DotsOf(HMONITOR monitor) {
  const HMODULE library = LoadLibraryExW(L"shcore.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  UINT across = 0;
  UINT down = 0;
  const auto ask = Find<decltype(&GetDpiForMonitor)>("GetDpiForMonitor", library);
  const bool told = ask && SUCCEEDED(ask(monitor, MDT_EFFECTIVE_DPI, &across, &down));
  if (library) FreeLibrary(library);
  return told ? static_cast<int>(across) : 0;
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
  if (!std::exchange(controls.registered_, true)) {
    const INITCOMMONCONTROLSEX wanted = {sizeof wanted,
                                         ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&wanted);
  }
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
  // A window that is not scaled by its program says 96 of itself on any screen.
  if (const int dots = DotsOf(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY))) return dots;
  const HDC screen = GetDC(nullptr);
  const int dots = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dots;
}

int SystemMeasure(int measure, int dpi) {
  const auto at = Find<MeasureAt>("GetSystemMetricsForDpi");
  return at ? at(measure, static_cast<UINT>(dpi)) : GetSystemMetrics(measure);
}

void AddFrame(RECT& client, DWORD style, DWORD extended_style, int dpi) {
  if (const auto at = Find<AddFrameAt>("AdjustWindowRectExForDpi")) {
    at(&client, style, FALSE, extended_style, static_cast<UINT>(dpi));
  } else {
    AdjustWindowRectEx(&client, style, FALSE, extended_style);
  }
}

}  // namespace dossierkit::win32
