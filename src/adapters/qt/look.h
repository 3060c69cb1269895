// Look: sizes, colours and fonts of the views.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRect>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::qt {

inline constexpr double kTwipsPerPixel = 15.0;  // at 96 dpi

// The palette of the whole program: calm, with enough contrast for a working day.
QPalette ProgramPalette();

// The family that texts without a font of their own get, and the size in points.
inline constexpr char kProgramFont[] = "WenQuanYi Zen Hei";
inline constexpr char kProgramFontElsewhere[] = "Noto Sans CJK SC";
inline constexpr double kProgramFontSize = 9;

// A colour of the model; a system colour is looked up in the program's palette.
QColor ColorOf(toolkit::Color color);

// Lines and surfaces that no palette has.
QColor EdgeColor();    // around frames, under bars
QColor AccentColor();  // headings, the marked item
QColor BarColor();     // tool bar, heads of lists and menu
QColor HoverColor();

// Turns twips into device-independent pixels, enlarged by `scale`.
class Metrics {
 public:
  explicit Metrics(double scale) : scale_(scale) {}
  int Pixels(double twips) const;
  int Twips(double pixels) const;
  // By edges, so that neighbours stay neighbours.
  QRect Pixels(const toolkit::Rect& place) const;
  // `pixels` of a design at 96 dpi.
  int Scaled(double pixels) const { return Pixels(pixels * kTwipsPerPixel); }
  QFont FontOf(const toolkit::Font& font) const;
  QFont ProgramFont() const;

 private:
  double scale_;
};

}  // namespace dossierkit::qt
