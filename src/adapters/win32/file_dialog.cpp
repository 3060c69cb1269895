#include "adapters/win32/file_dialog.h"

#include <commdlg.h>

#include "adapters/windows/texts.h"
#include "platform/toolkit/loop/file_filter.h"

namespace dossierkit::win32 {
namespace {

using windows::Utf8;
using windows::Wide;

constexpr std::size_t kLongestPath = 32768;  // with the end of the text

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

std::wstring NativeFiltersOf(const std::string& filter) {
  std::wstring filters;
  for (const auto& read : toolkit::FileFiltersOf(filter)) {
    std::wstring patterns;
    for (const auto& pattern : read.patterns) patterns += (patterns.empty() ? L"" : L";") + Wide(pattern);
    filters += Wide(read.name) + L" (" + patterns + L")";
    filters += L'\0';
    filters += patterns;
    filters += L'\0';
  }
  return filters;
}

std::wstring StartFolderOf(const std::string& init_dir) {
  std::wstring folder = Wide(init_dir);
  for (wchar_t& unit : folder) {
    if (unit == L'/') unit = L'\\';
  }
  while (!folder.empty() && !IsFolder(folder)) {
    const std::size_t cut = folder.rfind(L'\\');
    folder.erase(cut == std::wstring::npos ? 0 : cut);
  }
  // A drive alone means the folder that is the present one there.
  if (!folder.empty() && folder.back() == L':') folder += L'\\';
  return folder;
}

std::string ChooseFile(const std::string& filter, const std::string& init_dir, HWND owner) {
  const std::wstring filters = NativeFiltersOf(filter);
  const std::wstring folder = StartFolderOf(init_dir);
  std::wstring chosen(kLongestPath, L'\0');
  OPENFILENAMEW request = {};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner;
  if (!filters.empty()) request.lpstrFilter = filters.c_str();
  request.nFilterIndex = 1;
  request.lpstrFile = chosen.data();
  request.nMaxFile = static_cast<DWORD>(chosen.size());
  if (!folder.empty()) request.lpstrInitialDir = folder.c_str();
  request.lpstrTitle = L"打开";
  request.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
  if (!GetOpenFileNameW(&request)) return {};
  return Utf8(chosen.c_str());
}

}  // namespace dossierkit::win32
