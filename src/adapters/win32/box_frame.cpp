#include "adapters/win32/box_frame.h"

#include <algorithm>

#include "adapters/win32/native_view.h"
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
      place = Inside(place);
      if (HasScrollBar(window)) return Application::PassOn(window, message);
      place.right = std::max(place.left, place.right);
      place.bottom = std::max(place.top, place.bottom);
      return 0;
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

// For the client area and the scroll bars.
RECT BoxFrame::Inside(const RECT& outer) const {
  const int edge = view_.GetMetrics().Ring();
  return {outer.left + edge + padding_.left, outer.top + edge + padding_.top,
          outer.right - edge - padding_.right, outer.bottom - edge - padding_.bottom};
}

void BoxFrame::Paint(HWND window) const {
  RECT outer;
  GetWindowRect(window, &outer);
  RECT client;
  GetClientRect(window, &client);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
  OffsetRect(&client, -outer.left, -outer.top);
  OffsetRect(&outer, -outer.left, -outer.top);
  const RECT inner = Inside(outer);

  const HDC device = GetWindowDC(window);
  // All but the corner between two scroll bars, which nobody else paints to its edges.
  ExcludeClipRect(device, inner.left, inner.top, inner.right, client.bottom);
  ExcludeClipRect(device, inner.left, inner.top, client.right, inner.bottom);
  const bool enabled = IsWindowEnabled(window);
  const HWND focus = GetFocus();
  const bool ring = enabled && focus && (focus == window || IsChild(window, focus));
  const Palette& colors = view_.GetLook().Colors();
  const Metrics& metrics = view_.GetMetrics();
  Fill(device, outer, colors.surface);
  PaintBox(device, outer, fill_,
           {ring      ? colors.accent
            : enabled ? colors.edge
                      : colors.line,
            ring ? metrics.Ring() : metrics.Edge(), metrics.Radius()});
  ReleaseDC(window, device);
}

}  // namespace dossierkit::win32
