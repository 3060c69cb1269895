#include "adapters/win32/painting.h"

namespace dossierkit::win32 {

Canvas::Canvas(HWND window, const Look& look) : window_(window) {
  BeginPaint(window, &paint_);
  GetClientRect(window, &area_);
  memory_ = look.GetBacking().Of(paint_.hdc, WidthOf(area_), HeightOf(area_));
}

Canvas::~Canvas() {
  const RECT& part = paint_.rcPaint;
  BitBlt(paint_.hdc, part.left, part.top, WidthOf(part), HeightOf(part), memory_, part.left, part.top,
         SRCCOPY);
  EndPaint(window_, &paint_);
}

bool HasScrollBar(HWND window) {
  return (GetWindowLongPtrW(window, GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL)) != 0;
}

void Fill(HDC context, const RECT& place, COLORREF color) {
  const Owned brush(CreateSolidBrush(color));
  FillRect(context, &place, brush.Get());
}

void PaintBox(HDC context, const RECT& place, COLORREF fill, const BoxEdge& edge) {
  const Owned brush(CreateSolidBrush(fill));
  const Owned pen(CreatePen(PS_INSIDEFRAME, edge.width, edge.color));
  const Selected filled(context, brush.Get());
  const Selected edged(context, pen.Get());
  RoundRect(context, place.left, place.top, place.right, place.bottom, 2 * edge.radius, 2 * edge.radius);
}

void PaintEdge(HDC context, const RECT& place, const BoxEdge& edge) {
  const Owned pen(CreatePen(PS_INSIDEFRAME, edge.width, edge.color));
  const Selected filled(context, GetStockObject(NULL_BRUSH));
  const Selected edged(context, pen.Get());
  RoundRect(context, place.left, place.top, place.right, place.bottom, 2 * edge.radius, 2 * edge.radius);
}

void PaintLine(HDC context, HFONT font, COLORREF ink, const RECT& place, const std::wstring& text,
               UINT align) {
  const Selected selected(context, font);
  SetTextColor(context, ink);
  SetBkMode(context, TRANSPARENT);
  RECT room = place;
  DrawTextW(context, text.data(), static_cast<int>(text.size()), &room,
            align | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

}  // namespace dossierkit::win32
