// Look: sizes, colours and fonts of the views.
#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRect>
#include <algorithm>

#include "platform/toolkit/loop/scale.h"

class QPainter;

namespace dossierkit::qt {

// The palette of the whole program: calm, with enough contrast for a working day.
QPalette ProgramPalette();

// The families that stand in for one that is not installed.
inline constexpr char kProgramFont[] = "WenQuanYi Zen Hei";
inline constexpr char kProgramFontElsewhere[] = "Noto Sans CJK SC";

// A colour of the model; a system colour is looked up in the program's palette.
QColor ColorOf(toolkit::Color color);

// Lines and surfaces that no palette has.
QColor EdgeColor();    // around every box: fields, lists, buttons, pictures, frames
QColor LineColor();    // between things: under bars, between cells
QColor AccentColor();  // headings, the box that has the keyboard
QColor BarColor();     // tool bar, heads of lists
QColor HoverColor();
QColor SelectionColor();     // the chosen item of a list without the keyboard, and of the menu
QColor SelectedTextColor();  // on it
QColor SoftInkColor();       // captions that need not stand out

inline constexpr double kBarWidth = 3;  // at the left of a chosen item, in pixels at 96 dpi

// Turns twips into device-independent pixels, enlarged by `scale`.
class Metrics {
 public:
  explicit Metrics(double scale) : scale_(scale) {}
  const toolkit::Scale& GetScale() const { return scale_; }
  int Pixels(double twips) const { return scale_.Pixels(twips); }
  int Twips(double pixels) const { return scale_.Twips(pixels); }
  QRect Pixels(const toolkit::Rect& place) const;
  // `pixels` of a design at 96 dpi.
  int Scaled(double pixels) const { return Pixels(pixels * toolkit::kTwipsPerPixel); }
  // How wide the edge of a box is, how wide that of the one that has the keyboard, how round both are.
  int Edge() const { return std::max(1, static_cast<int>(scale_.Factor())); }
  int Ring() const { return Scaled(2); }
  double Radius() const { return 3 * scale_.Factor(); }
  QFont FontOf(const toolkit::Font& font) const;
  // Of texts that no control has: as the controls', so that it is loaded once.
  QFont ProgramFont() const { return FontOf({}); }

 private:
  toolkit::Scale scale_;
};

// Fills a box and draws its edge, inside `place`.
struct BoxEdge {
  QColor color;
  int width = 1;
  double radius = 0;
};
void PaintBox(QPainter& painter, const QRect& place, const QBrush& fill, const BoxEdge& edge);

}  // namespace dossierkit::qt
