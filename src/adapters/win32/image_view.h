// ImageView: a picture stretched to its place.
#pragma once

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::win32 {

class ImageView : public NativeView {
 public:
  ImageView(ViewContext& context, toolkit::Image& image)
      : NativeView(context, image, NativeWindow()), image_(image) {}

 protected:
  void ShowContent() override { Repaint(); }
  void Paint(HDC device, const RECT& place) override;

 private:
  toolkit::Image& image_;
};

}  // namespace dossierkit::win32
