#include "adapters/win32/text_lines.h"

#include <algorithm>

#include "adapters/win32/painting.h"

namespace dossierkit::win32 {
namespace {

bool IsLowHalf(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// A word of letters stays whole; between Chinese characters a line may break anywhere.
bool JoinsWord(wchar_t unit) { return unit != L' ' && unit < 0x2E80; }

// How many of the characters make the first line, of which `fits` have room.
std::size_t BreakAt(std::wstring_view text, std::size_t fits) {
  if (fits >= text.size()) return text.size();
  std::size_t at = fits;
  while (at > 0 && JoinsWord(text[at - 1]) && JoinsWord(text[at])) --at;
  if (at == 0) at = fits;  // one word alone
  if (at > 0 && IsLowHalf(text[at])) --at;
  return std::max<std::size_t>(at, 1);
}

void BreakParagraph(HDC device, std::wstring_view text, int width, std::vector<std::wstring>& lines) {
  do {
    int fits = 0;
    SIZE size;
    GetTextExtentExPointW(device, text.data(), static_cast<int>(text.size()), width, &fits, nullptr, &size);
    const std::size_t length = BreakAt(text, static_cast<std::size_t>(std::max(fits, 1)));
    lines.emplace_back(text.substr(0, length));
    text.remove_prefix(length);
    // The blank at which a line broke is seen nowhere.
    while (!text.empty() && text.front() == L' ') text.remove_prefix(1);
  } while (!text.empty());
}

}  // namespace

std::vector<std::wstring> LinesOf(const Look& look, const std::wstring& text, HFONT font, int width) {
  std::vector<std::wstring> lines;
  const Selected selected(look.Measuring(), font);
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find_first_of(L"\r\n", start), text.size());
    BreakParagraph(look.Measuring(), std::wstring_view(text).substr(start, end - start), width, lines);
    start = end + (text.compare(end, 2, L"\r\n") == 0 ? 2 : 1);
  }
  return lines;
}

FirstLineKept::FirstLineKept(HWND edit) : edit_(edit) {
  const LRESULT line = SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0);
  first_ = SendMessageW(edit_, EM_LINEINDEX, static_cast<WPARAM>(line), 0);
}

FirstLineKept::~FirstLineKept() {
  const LRESULT line = SendMessageW(edit_, EM_LINEFROMCHAR, static_cast<WPARAM>(first_), 0);
  SendMessageW(edit_, EM_LINESCROLL, 0, line - SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0));
}

std::wstring Ended(const Look& look, std::wstring line, HFONT font, int width) {
  while (!line.empty() && look.TextWidth(font, line + L"…") > width) {
    const bool half = IsLowHalf(line.back());
    line.pop_back();
    if (half && !line.empty()) line.pop_back();
  }
  return line + L"…";
}

}  // namespace dossierkit::win32
