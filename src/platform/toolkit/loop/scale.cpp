#include "platform/toolkit/loop/scale.h"

#include <cmath>

namespace dossierkit::toolkit {

int Scale::Pixels(double twips) const {
  return static_cast<int>(std::lround(twips * factor_ / kTwipsPerPixel));
}

int Scale::Twips(double pixels) const {
  return static_cast<int>(std::lround(pixels * kTwipsPerPixel / factor_));
}

Rect Scale::Pixels(const Rect& place) const {
  const int left = Pixels(place.left);
  const int top = Pixels(place.top);
  return {left, top, Pixels(place.left + place.width) - left, Pixels(place.top + place.height) - top};
}

}  // namespace dossierkit::toolkit
