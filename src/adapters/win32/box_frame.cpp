#include "adapters/win32/box_frame.h"

#include "adapters/win32/application.h"
#include "adapters/win32/painting.h"

namespace dossierkit::win32 {

bool BoxFrame::SetPadding(const RECT& padding) {
  if (EqualRect(&padding_, &padding)) return false;
  padding_ = padding;
  return true;
}

void BoxFrame::Refresh(HWND window) {
  SetWindowPos(window, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

std::optional<LRESULT> BoxFrame::Receive(HWND window, const Message& message) const {
  switch (message.id) {
    case WM_NCCALCSIZE: {
      // The first rectangle, either way.
      auto& place = *reinterpret_cast<RECT*>(message.low);
      const int edge = look_.GetMetrics().Ring();
      place.left += edge + padding_.left;
      place.top += edge + padding_.top;
      place.right -= edge + padding_.right;
      place.bottom -= edge + padding_.bottom;
      return Application::PassOn(window, message);  // scroll bars
    }
    case WM_NCPAINT: {
      if (HasScrollBar(window)) Application::PassOn(window, message);
      Paint(window);
      return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: RedrawWindow(window, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE); return std::nullopt;
    default: return std::nullopt;
  }
}

void BoxFrame::Paint(HWND window) const {
  RECT outer;
  GetWindowRect(window, &outer);
  RECT inner;
  GetClientRect(window, &inner);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inner), 2);
  const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
  if (style & WS_VSCROLL) inner.right += GetSystemMetrics(SM_CXVSCROLL);
  if (style & WS_HSCROLL) inner.bottom += GetSystemMetrics(SM_CYHSCROLL);
  OffsetRect(&inner, -outer.left, -outer.top);
  OffsetRect(&outer, -outer.left, -outer.top);

  const HDC device = GetWindowDC(window);
  ExcludeClipRect(device, inner.left, inner.top, inner.right, inner.bottom);
  const bool enabled = IsWindowEnabled(window);
  const HWND focus = GetFocus();
  const bool ring = enabled && focus && (focus == window || IsChild(window, focus));
  const Palette& colors = look_.Colors();
  const Metrics& metrics = look_.GetMetrics();
  Fill(device, outer, colors.surface);
  PaintBox(device, outer, fill_,
           {ring      ? colors.accent
            : enabled ? colors.edge
                      : colors.line,
            ring ? metrics.Ring() : metrics.Edge(), metrics.Radius()});
  ReleaseDC(window, device);
}

}  // namespace dossierkit::win32
