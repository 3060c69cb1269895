#ifdef _WIN32

#include <windows.h>
// shellapi.h and shlobj.h stand on windows.h.
#include <io.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstdio>
#include <memory>
#include <system_error>

#include "host/system.h"

namespace dossierkit::host {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

std::string Utf8(const fs::path& text) {
  const std::u8string utf8 = text.u8string();
  return {utf8.begin(), utf8.end()};
}

}  // namespace

// Those of main() have lost what the code page of the system cannot say.
std::vector<std::string> ArgumentsOf(int, char**) {
  SetConsoleOutputCP(CP_UTF8);
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                            &LocalFree);
  if (!words) Fail("CommandLineToArgvW");
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Utf8(words.get()[i]));
  return arguments;
}

fs::path ShareFolder() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length == 0) Fail("GetModuleFileNameW");
    if (length < name.size()) return fs::path(name.substr(0, length)).parent_path();
    name.resize(2 * name.size());
  }
}

bool IsErrorATerminal() { return _isatty(_fileno(stderr)) != 0; }

fs::path DataHome() {
  PWSTR folder = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder);
  const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owner(folder, &CoTaskMemFree);
  if (FAILED(result)) throw std::system_error(result, std::system_category(), "SHGetKnownFolderPath");
  return folder;
}

}  // namespace dossierkit::host

#endif
