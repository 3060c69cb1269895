// Painting: what the views draw with.
#pragma once

#include <string>

#include "adapters/win32/look.h"

namespace dossierkit::win32 {

// An object of GDI that is deleted with its scope.
template <typename Handle>
class Owned {
 public:
  explicit Owned(Handle handle) : handle_(handle) {}
  ~Owned() { DeleteObject(handle_); }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  Handle Get() const { return handle_; }

 private:
  Handle handle_;
};

// An object that a context draws with for the length of a scope.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object) : context_(context), before_(SelectObject(context, object)) {}
  ~Selected() { SelectObject(context_, before_); }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

// Draws a window without flicker: into a bitmap that goes to the window at the end of the scope. One at a
// time.
class Canvas {
 public:
  // For WM_PAINT: between BeginPaint and EndPaint, over all of the client area.
  Canvas(HWND window, const Look& look);
  ~Canvas();
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  HDC Get() const { return memory_; }
  const RECT& Area() const { return area_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_ = {};
  RECT area_ = {};
  HDC memory_;
};

inline int WidthOf(const RECT& place) { return static_cast<int>(place.right - place.left); }
inline int HeightOf(const RECT& place) { return static_cast<int>(place.bottom - place.top); }
inline RECT Inset(const RECT& place, int by) {
  return {place.left + by, place.top + by, place.right - by, place.bottom - by};
}

// Whether Windows itself paints something at the edges of a window of ours: a scroll bar.
bool HasScrollBar(HWND window);

void Fill(HDC context, const RECT& place, COLORREF color);

// The edge of a box inside `place`, with round corners.
struct BoxEdge {
  COLORREF color;
  int width = 1;
  int radius = 0;
};
void PaintBox(HDC context, const RECT& place, COLORREF fill, const BoxEdge& edge);
// The edge alone.
void PaintEdge(HDC context, const RECT& place, const BoxEdge& edge);

// A text in one line, in the middle of the height, that ends in "…" where it does not fit. `align` is
// DT_LEFT, DT_CENTER or DT_RIGHT.
void PaintLine(HDC context, HFONT font, COLORREF ink, const RECT& place, const std::wstring& text,
               UINT align = DT_LEFT);

}  // namespace dossierkit::win32
