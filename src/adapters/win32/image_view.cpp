#include "adapters/win32/image_view.h"

#include "adapters/win32/painting.h"
#include "adapters/win32/pictures.h"

namespace dossierkit::win32 {

void ImageView::Rescale(const Look& look) {
  NativeView::Rescale(look);
  const toolkit::Picture& picture = image_.GetPicture();
  const RECT place = GetMetrics().Pixels(image_.Place());
  if (picture.bytes) rescaled_ = DecodePicture(*picture.bytes, {WidthOf(place), HeightOf(place)});
}

void ImageView::ShowContent() {
  rescaled_ = {};
  Repaint();
}

void ImageView::Paint(HDC device, const RECT& place) {
  NativeView::Paint(device, place);
  RECT inner = place;
  if (image_.Border()) {
    const Palette& colors = GetLook().Colors();
    PaintBox(device, place, colors.base, {colors.edge, GetMetrics().Edge(), GetMetrics().Radius()});
    inner = Inset(place, GetMetrics().Ring());
  }
  const Bitmap& bitmap = rescaled_.Empty() ? BitmapOf(image_.GetPicture()) : rescaled_;
  if (!bitmap.Empty()) PaintStretched(device, inner, bitmap);
}

}  // namespace dossierkit::win32
