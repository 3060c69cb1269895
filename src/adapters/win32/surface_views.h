// The views that only carry others or decorate: frame, line, and the plain surfaces of pages, picture
// boxes and cool bars.
#pragma once

#include <string>

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit::win32 {

// A rounded border with its caption set into it; without a border the caption heads what stands in the
// frame. A frame lies below its neighbours.
class FrameView : public NativeView {
 public:
  FrameView(ViewContext& context, toolkit::Frame& frame) : NativeView(context, frame, NativeWindow()) {}

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowText() override;
  void Paint(HDC device, const RECT& place) override;

 private:
  int BesideCaption() const;
  void ShowTip();
};

class LineView : public NativeView {
 public:
  LineView(ViewContext& context, toolkit::Control& line) : NativeView(context, line, NativeWindow()) {}

 protected:
  void ShowPlacement() override;
  void Paint(HDC device, const RECT& place) override;
};

class SurfaceView : public NativeView {
 public:
  SurfaceView(ViewContext& context, toolkit::Control& control)
      : NativeView(context, control, NativeWindow()) {}
};

// A page. It shows once the event that made it has ended: what does not show yet costs Windows much less to
// fill.
class PageView : public NativeView {
 public:
  PageView(ViewContext& context, toolkit::UserControl& page);

  void ShowState() override;
  bool Arrived() const { return arrived_; }

 protected:
  // It may stand elsewhere until then.
  void ShowPlacement() override;

 private:
  void Arrive();

  bool arrived_ = false;
};

// The bar along the top of a window.
class CoolBarView : public NativeView {
 public:
  CoolBarView(ViewContext& context, toolkit::Control& bar) : NativeView(context, bar, NativeWindow()) {}

  COLORREF Ground() const override { return GetLook().Colors().bar; }

 protected:
  void Paint(HDC device, const RECT& place) override;
};

}  // namespace dossierkit::win32
