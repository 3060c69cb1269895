#include "adapters/win32/spare_windows.h"

#include <iterator>

#include "adapters/win32/window_classes.h"

namespace dossierkit::win32 {
namespace {

DWORD StyleOf(HWND window) { return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)); }

}  // namespace

SpareWindows::Sort SpareWindows::SortOf(const wchar_t* window_class, DWORD style) {
  const auto is = [window_class](const wchar_t* name) { return lstrcmpiW(window_class, name) == 0; };
  if (is(kPaneClass) && !(style & (WS_HSCROLL | WS_VSCROLL))) return Sort::kPane;
  return is(L"EDIT") && !(style & ES_MULTILINE) ? Sort::kLine : Sort::kOther;
}

void SpareWindows::Leave(HWND part) {
  wchar_t window_class[64] = {};
  GetClassNameW(part, window_class, static_cast<int>(std::size(window_class)));
  const Sort sort = SortOf(window_class, StyleOf(part));
  if (sort == Sort::kOther) {
    others_.push_back(part);
  } else {
    parts_[{GetParent(part), sort}].push_back(part);
  }
}

void SpareWindows::Keep(HWND page) {
  if (page_) DestroyWindow(page_);
  ShowWindow(page, SW_HIDE);
  page_ = page;
  // Those of a page that is not kept may still be in the middle of a message.
  for (const HWND other : std::vector<HWND>(others_)) {
    if (IsChild(page, other)) DestroyWindow(other);
  }
}

HWND SpareWindows::TakePage() { return std::exchange(page_, nullptr); }

HWND SpareWindows::TakePart(HWND parent, const wchar_t* window_class, DWORD style) {
  const Sort sort = SortOf(window_class, style);
  const auto found = parts_.find({parent, sort});
  if (found == parts_.end()) return nullptr;
  const HWND part = found->second.front();
  found->second.pop_front();
  if (found->second.empty()) parts_.erase(found);
  if (sort == Sort::kLine) SendMessageW(part, EM_EMPTYUNDOBUFFER, 0, 0);
  return part;
}

void SpareWindows::HideRest() {
  for (const auto& [place, windows] : parts_) {
    for (const HWND window : windows) {
      if (StyleOf(window) & WS_VISIBLE)
        SetWindowPos(window, nullptr, 0, 0, 0, 0,
                     SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW |
                         SWP_DEFERERASE);
    }
  }
}

void SpareWindows::Forget(HWND window) {
  if (window == page_) page_ = nullptr;
  std::erase(others_, window);
  for (auto entry = parts_.begin(); entry != parts_.end();) {
    std::erase(entry->second, window);
    entry = entry->second.empty() ? parts_.erase(entry) : std::next(entry);
  }
}

}  // namespace dossierkit::win32
