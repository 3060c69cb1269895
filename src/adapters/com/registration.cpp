#include "adapters/com/registration.h"

#include <array>
#include <utility>

#include "adapters/com/failures.h"
#include "adapters/com/identifiers.h"
#include "adapters/com/pointers.h"

// Not in the headers, though in the library.
extern "C" {
HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* file, OLECHAR* help);
HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID library, WORD major, WORD minor, LCID locale, SYSKIND kind);
}

namespace dossierkit::com {
namespace {

constexpr wchar_t kTitle[] = L"DossierKit.IUserCtrl";
const HKEY kMachine = HKEY_LOCAL_MACHINE;
const HKEY kUser = HKEY_CURRENT_USER;
#ifdef _WIN64
constexpr SYSKIND kKind = SYS_WIN64;
constexpr REGSAM kOtherWidth = KEY_WOW64_32KEY;
#else
constexpr SYSKIND kKind = SYS_WIN32;
constexpr REGSAM kOtherWidth = KEY_WOW64_64KEY;
#endif

std::wstring Text(const GUID& guid) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring ClassKey() { return L"Software\\Classes\\CLSID\\" + Text(kClass); }
std::wstring ProgIdKey() { return std::wstring(L"Software\\Classes\\") + kTitle; }

void RequireResult(HRESULT result) {
  if (FAILED(result)) throw FailureOf(result, nullptr);
}

void Require(LSTATUS status) {
  if (status != ERROR_SUCCESS) RequireResult(HRESULT_FROM_WIN32(static_cast<unsigned long>(status)));
}

void Set(HKEY root, const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  Require(RegSetKeyValueW(root, key.c_str(), name, REG_SZ, value.c_str(),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))));
}

void WriteClass(HKEY root, const std::wstring& file) {
  const std::wstring key = ClassKey();
  Set(root, key, nullptr, kTitle);
  Set(root, key + L"\\InprocServer32", nullptr, file);
  Set(root, key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  Set(root, key + L"\\ProgID", nullptr, kTitle);
  Set(root, key + L"\\TypeLib", nullptr, Text(kLibrary));
  Set(root, key + L"\\Version", nullptr,
      std::to_wstring(kMajorVersion) + L"." + std::to_wstring(kMinorVersion));
  Set(root, ProgIdKey(), nullptr, kTitle);
  Set(root, ProgIdKey() + L"\\CLSID", nullptr, Text(kClass));
}

// True where a library of the other width is registered, once ours is not: where Windows has one width alone
// both names are of the same key.
bool HasOther(HKEY root) {
  HKEY key = nullptr;
  const std::wstring name = ClassKey() + L"\\InprocServer32";
  if (RegOpenKeyExW(root, name.c_str(), 0, KEY_READ | kOtherWidth, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

void Remove(HKEY root, const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(root, key.c_str());
  if (status != ERROR_FILE_NOT_FOUND) Require(status);
}

}  // namespace

std::wstring OwnFile() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&Text), &module);
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(module, name.data(), static_cast<DWORD>(name.size()));
    if (length == 0) Require(static_cast<LSTATUS>(GetLastError()));
    if (length < name.size()) return name.substr(0, length);
    name.resize(2 * name.size());
  }
}

void Register(const std::wstring& file) {
  Pointer<ITypeLib> library;
  RequireResult(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put()));
  std::wstring path = file;  // RegisterTypeLib does not promise to leave it
  const HRESULT result = RegisterTypeLib(library.Get(), path.data(), nullptr);
  HKEY key = nullptr;
  const LSTATUS status =
      RegCreateKeyExW(kMachine, ClassKey().c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) RegCloseKey(key);
  if (SUCCEEDED(result) && status == ERROR_SUCCESS) return WriteClass(kMachine, file);
  RequireResult(RegisterTypeLibForUser(library.Get(), path.data(), nullptr));
  WriteClass(kUser, file);
}

void Unregister() {
  for (HKEY root : {kUser, kMachine}) {
    Remove(root, ClassKey());
    if (!HasOther(root)) Remove(root, ProgIdKey());
  }
  UnRegisterTypeLib(kLibrary, kMajorVersion, kMinorVersion, LOCALE_NEUTRAL, kKind);
  UnRegisterTypeLibForUser(kLibrary, kMajorVersion, kMinorVersion, LOCALE_NEUTRAL, kKind);
}

}  // namespace dossierkit::com
