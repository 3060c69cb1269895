// The views that only carry others or decorate: frame, line, and the plain surfaces of pages, picture
// boxes and cool bars.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::qt {

// A rounded border with its caption set into it; without a border the caption heads what stands in the
// frame. A frame lies below its neighbours.
class FrameView : public WidgetView {
 public:
  FrameView(ViewContext& context, toolkit::Frame& frame);

 protected:
  void ShowText() override;
  void ShowStyle() override;
};

class LineView : public WidgetView {
 public:
  LineView(ViewContext& context, toolkit::Control& line);

 protected:
  void ShowPlacement() override;
};

// A page or a picture box.
class SurfaceView : public WidgetView {
 public:
  SurfaceView(ViewContext& context, toolkit::Control& control);
};

// The bar along the top of a window.
class CoolBarView : public WidgetView {
 public:
  CoolBarView(ViewContext& context, toolkit::Control& bar);
};

}  // namespace dossierkit::qt
