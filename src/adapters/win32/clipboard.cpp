#include "adapters/win32/clipboard.h"

#include <cstring>

#include "adapters/windows/texts.h"
#include "platform/toolkit/controls/shown_text.h"

namespace dossierkit::win32 {
namespace {

constexpr int kTries = 10;
constexpr DWORD kBetween = 10;  // ms

class Opened {
 public:
  Opened() {
    for (int i = 0; i < kTries && !open_; ++i) {
      if (i > 0) Sleep(kBetween);
      // Who writes is to own it, and nobody does without a window.
      open_ = OpenClipboard(GetActiveWindow());
    }
  }
  ~Opened() {
    if (open_) CloseClipboard();
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  explicit operator bool() const { return open_; }

 private:
  bool open_ = false;
};

}  // namespace

std::string ReadClipboard() {
  const Opened opened;
  if (!opened) return {};
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  const auto* text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
  if (!text) return {};
  // Whoever put it there need not have ended it.
  const std::size_t most = GlobalSize(data) / sizeof(wchar_t);
  std::string read = windows::Utf8(std::wstring_view(text, wcsnlen(text, most)));
  GlobalUnlock(data);
  return read;
}

void WriteClipboard(const std::string& text) {
  const std::wstring wide = windows::Wide(toolkit::WithLineBreaks(text));
  const std::size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
  const Opened opened;
  if (!opened || !EmptyClipboard()) return;
  const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (!data) return;
  std::memcpy(GlobalLock(data), wide.c_str(), bytes);
  GlobalUnlock(data);
  if (!SetClipboardData(CF_UNICODETEXT, data)) GlobalFree(data);
}

}  // namespace dossierkit::win32
