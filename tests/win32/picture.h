// What native windows show, and what Windows tells a window that comes to a screen of another resolution.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::tests {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;  // row by row from above
};

// A window without its frame, with all that stands in it and without the caret, which blinks.
inline Picture PictureOf(HWND window) {
  HideCaret(nullptr);
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
  RECT place;
  GetClientRect(window, &place);
  Picture picture{static_cast<int>(place.right), static_cast<int>(place.bottom), {}};
  picture.pixels.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
  BITMAPINFO head = {};
  head.bmiHeader.biSize = sizeof head.bmiHeader;
  head.bmiHeader.biWidth = picture.width;
  head.bmiHeader.biHeight = -picture.height;
  head.bmiHeader.biPlanes = 1;
  head.bmiHeader.biBitCount = 32;
  // A window's own context would leave out what its children paint.
  const HDC shown = GetDCEx(window, nullptr, DCX_CACHE);
  const HDC memory = CreateCompatibleDC(shown);
  const HBITMAP bitmap = CreateCompatibleBitmap(shown, picture.width, picture.height);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, picture.width, picture.height, shown, 0, 0, SRCCOPY);
  SelectObject(memory, before);
  GetDIBits(memory, bitmap, 0, static_cast<UINT>(picture.height), picture.pixels.data(), &head,
            DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, shown);
  ShowCaret(nullptr);
  for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFFU;
  return picture;
}

// Nothing where they are equal.
inline std::string Difference(const Picture& one, const Picture& other) {
  const auto size = [](const Picture& of) {
    return std::to_string(of.width) + " x " + std::to_string(of.height);
  };
  if (one.width != other.width || one.height != other.height) return size(one) + " and " + size(other);
  if (one.pixels == other.pixels) return {};
  std::size_t count = 0;
  std::size_t first = 0;
  for (std::size_t i = one.pixels.size(); i-- > 0;) {
    if (one.pixels[i] == other.pixels[i]) continue;
    ++count;
    first = i;
  }
  const auto width = static_cast<std::size_t>(one.width);
  return std::to_string(count) + " of " + size(one) + " pixels, the first at " +
         std::to_string(first % width) + ", " + std::to_string(first / width);
}

// Gives a window a client area of a size, at a corner of the screen.
inline void GiveClient(HWND window, int width, int height, POINT corner = {0, 0}) {
  RECT place = {0, 0, width, height};
  AdjustWindowRectEx(&place, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)));
  SetWindowPos(window, nullptr, corner.x, corner.y, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// Windows moves a window to a screen of so many dots to the inch: asks how large it will be there, and tells
// it the place. Its frame stays as the one screen of the tests has it.
inline void ToScreen(HWND window, int dpi, POINT corner = {0, 0}) {
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
  const auto extended = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
  SIZE size = {};
  SendMessageW(window, WM_GETDPISCALEDSIZE, static_cast<WPARAM>(dpi), reinterpret_cast<LPARAM>(&size));
  RECT there = {};
  AdjustWindowRectExForDpi(&there, style, FALSE, extended, static_cast<UINT>(dpi));
  RECT here = {0, 0, size.cx - (there.right - there.left), size.cy - (there.bottom - there.top)};
  AdjustWindowRectEx(&here, style, FALSE, extended);
  RECT place = {corner.x, corner.y, corner.x + here.right - here.left, corner.y + here.bottom - here.top};
  SendMessageW(window, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
               reinterpret_cast<LPARAM>(&place));
}

}  // namespace dossierkit::tests
