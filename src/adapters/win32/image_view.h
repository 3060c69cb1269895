// ImageView: a picture stretched to its place.
#pragma once

#include "adapters/win32/bitmap.h"
#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::win32 {

class ImageView : public NativeView {
 public:
  ImageView(ViewContext& context, toolkit::Image& image)
      : NativeView(context, image, NativeWindow()), image_(image) {}

  void Rescale(const Look& look) override;

 protected:
  void ShowContent() override;
  void Paint(HDC device, const RECT& place) override;

 private:
  toolkit::Image& image_;
  Bitmap rescaled_;  // the picture for another resolution than the one that it came in
};

}  // namespace dossierkit::win32
