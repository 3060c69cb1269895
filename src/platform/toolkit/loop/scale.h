// Scale: between the model's twips and a view's whole pixels.
#pragma once

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

inline constexpr double kTwipsPerPixel = 15.0;  // at 96 dpi

class Scale {
 public:
  // `factor` enlarges, besides what the screen asks for.
  explicit Scale(double factor = 1) : factor_(factor) {}

  double Factor() const { return factor_; }
  int Pixels(double twips) const;
  int Twips(double pixels) const;
  // By edges, so that neighbours stay neighbours.
  Rect Pixels(const Rect& place) const;

 private:
  double factor_;
};

}  // namespace dossierkit::toolkit
