// TextLines: texts that may have less room than they need.
#pragma once

#include <string>
#include <vector>

#include "adapters/win32/look.h"

namespace dossierkit::win32 {

// The lines of a text of at most that width, in pixels: it breaks where it says so, and where it has no more
// room, between words if it can.
std::vector<std::wstring> LinesOf(const Look& look, const std::wstring& text, HFONT font, int width);

// What an edit control of several lines shows first stays there, whatever is done to its font and size
// meanwhile.
class FirstLineKept {
 public:
  explicit FirstLineKept(HWND edit);
  ~FirstLineKept();
  FirstLineKept(const FirstLineKept&) = delete;
  FirstLineKept& operator=(const FirstLineKept&) = delete;

 private:
  HWND edit_;
  LRESULT first_;  // character of the line
};

// A line that ends in "…" within that width, since more of its text follows.
std::wstring Ended(const Look& look, std::wstring line, HFONT font, int width);

}  // namespace dossierkit::win32
