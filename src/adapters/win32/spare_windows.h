// SpareWindows: the windows of the page that went, for the page that comes in its place.
#pragma once

#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

// Most windows of a page are panes and boxes of one line, of each sort all alike until a view does something
// for them. One that moves over costs a fraction of what Windows takes to destroy one and to make another.
class SpareWindows {
 public:
  // The part of a page that goes no longer has a view. Those of the sorts above are kept; any other goes with
  // its page, or as soon as that is kept.
  void Leave(HWND part);
  // Hides the window of a page and keeps it, with its parts; the one that was kept before goes.
  void Keep(HWND page);

  // One that may serve as the window of a page, wherever that is to stand, or of what stands in `parent`:
  // where it stood, as visible and as enabled as it was, with the text that it had. nullptr where there is
  // none.
  HWND TakePage();
  HWND TakePart(HWND parent, const wchar_t* window_class, DWORD style);
  // Hides those parts that nobody took.
  void HideRest();
  // A window is gone.
  void Forget(HWND window);

 private:
  enum class Sort { kPane, kLine, kOther };
  static Sort SortOf(const wchar_t* window_class, DWORD style);

  HWND page_ = nullptr;
  // By parent and sort, in the order in which they were left.
  std::map<std::pair<HWND, Sort>, std::deque<HWND>> parts_;
  std::vector<HWND> others_;
};

}  // namespace dossierkit::win32
