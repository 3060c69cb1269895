#include "adapters/win32/modality.h"

namespace dossierkit::win32 {
namespace {

struct Search {
  HWND above;
  std::vector<HWND>* found;
};

bool IsOwnedBy(HWND window, HWND owner) {
  for (; window; window = GetWindow(window, GW_OWNER)) {
    if (window == owner) return true;
  }
  return false;
}

BOOL CALLBACK Look(HWND window, LPARAM search) noexcept {
  const auto& [above, found] = *reinterpret_cast<const Search*>(search);
  if (!IsWindowVisible(window) || !IsWindowEnabled(window) || IsOwnedBy(window, above)) return TRUE;
  try {
    found->push_back(window);
  } catch (...) {
    return FALSE;
  }
  return TRUE;
}

}  // namespace

OthersDisabled::OthersDisabled(HWND window) {
  Search search{window, &disabled_};
  EnumThreadWindows(GetCurrentThreadId(), Look, reinterpret_cast<LPARAM>(&search));
  for (const HWND other : disabled_) EnableWindow(other, FALSE);
}

OthersDisabled::~OthersDisabled() {
  for (const HWND other : disabled_) {
    if (IsWindow(other)) EnableWindow(other, TRUE);
  }
}

}  // namespace dossierkit::win32
