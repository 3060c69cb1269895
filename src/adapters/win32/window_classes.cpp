#include "adapters/win32/window_classes.h"

#include <system_error>

namespace dossierkit::win32 {
namespace {

int users = 0;  // all on the one thread that has windows

constexpr const wchar_t* kClasses[] = {kWindowClass, kPaneClass, kQueueClass};

}  // namespace

HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&OwnModule), &module);
  return module;
}

WindowClasses::WindowClasses(WNDPROC procedure) {
  if (users++ > 0) return;
  for (const wchar_t* name : kClasses) {
    WNDCLASSEXW wanted = {};
    wanted.cbSize = sizeof wanted;
    wanted.style = CS_DBLCLKS;
    wanted.lpfnWndProc = name == kQueueClass ? DefWindowProcW : procedure;
    wanted.hInstance = OwnModule();
    wanted.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    wanted.lpszClassName = name;
    if (!RegisterClassExW(&wanted) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
      --users;
      throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "RegisterClassEx");
    }
  }
}

WindowClasses::~WindowClasses() {
  if (--users > 0) return;
  for (const wchar_t* name : kClasses) UnregisterClassW(name, OwnModule());
}

}  // namespace dossierkit::win32
