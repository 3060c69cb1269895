// BoxFrame: the edge around a box, a list or a grid, outside of what its native window paints itself.
#pragma once

#include <optional>

#include "adapters/win32/message.h"

namespace dossierkit::win32 {

class NativeView;

// Rounded; the box that has the keyboard has a ring.
class BoxFrame {
 public:
  // As the view looks at the time.
  explicit BoxFrame(const NativeView& view) : view_(view) {}

  // The colour between the edge and the client area.
  void SetFill(COLORREF fill) { fill_ = fill; }
  // How wide that is, besides the edge. True where it was another.
  bool SetPadding(const RECT& padding);
  // To be asked first about each message of the box's window; the answer where the frame has given it.
  std::optional<LRESULT> Receive(HWND window, const Message& message) const;
  // The edge changed its width, or its colours.
  static void Refresh(HWND window);

 private:
  void Paint(HWND window) const;

  RECT Inside(const RECT& outer) const;

  const NativeView& view_;
  COLORREF fill_ = RGB(0xFF, 0xFF, 0xFF);
  RECT padding_ = {};
};

}  // namespace dossierkit::win32
