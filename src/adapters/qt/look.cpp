#include "adapters/qt/look.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

const QColor kSurface(0xF2, 0xF4, 0xF7);
const QColor kInk(0x1D, 0x26, 0x33);
const QColor kFaintInk(0x8B, 0x95, 0xA3);
const QColor kShadow(0x6F, 0x79, 0x87);
const QColor kWorkspace(0x4A, 0x63, 0x80);
const QColor kAccent(0x2B, 0x6C, 0xB0);

// Says each of its colours itself, so that none comes from the program's.
QPalette Complete(QPalette palette) {
  for (const auto group : {QPalette::Active, QPalette::Disabled, QPalette::Inactive}) {
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
      const auto known = static_cast<QPalette::ColorRole>(role);
      palette.setBrush(group, known, palette.brush(group, known));
    }
  }
  return palette;
}

}  // namespace

QPalette ProgramPalette() {
  QPalette palette(kSurface);
  palette.setColor(QPalette::Window, kSurface);
  palette.setColor(QPalette::WindowText, kInk);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xF7, 0xF9, 0xFC));
  palette.setColor(QPalette::Text, kInk);
  palette.setColor(QPalette::Button, QColor(0xFA, 0xFB, 0xFC));
  palette.setColor(QPalette::ButtonText, kInk);
  palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFD, 0xEE));
  palette.setColor(QPalette::ToolTipText, kInk);
  palette.setColor(QPalette::PlaceholderText, kFaintInk);
  palette.setColor(QPalette::Highlight, kAccent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, kAccent);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, kFaintInk);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xF7, 0xF8, 0xFA));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xC4, 0xCE, 0xDA));
  return Complete(palette);
}

QColor ColorOf(toolkit::Color color) {
  if (color & 0x80000000U) {
    switch (color) {
      case toolkit::kWindowBackground: return Qt::white;
      case toolkit::kWindowText:
      case toolkit::kButtonText: return kInk;
      case toolkit::kAppWorkspace: return kWorkspace;
      case toolkit::kButtonShadow: return kShadow;
      case toolkit::kButtonFace:
      default: return kSurface;
    }
  }
  return QColor(static_cast<int>(color & 0xFFU), static_cast<int>((color >> 8U) & 0xFFU),
                static_cast<int>((color >> 16U) & 0xFFU));
}

QColor EdgeColor() { return QColor(0xA6, 0xB2, 0xC1); }
QColor LineColor() { return QColor(0xC6, 0xCF, 0xDA); }
QColor AccentColor() { return kAccent; }
QColor BarColor() { return QColor(0xE6, 0xEB, 0xF1); }
QColor HoverColor() { return QColor(0xE3, 0xED, 0xF8); }
QColor SelectionColor() { return QColor(0xD3, 0xE4, 0xF7); }
QColor SelectedTextColor() { return kAccent.darker(135); }
QColor SoftInkColor() { return QColor(0x57, 0x63, 0x73); }

QRect Metrics::Pixels(const toolkit::Rect& place) const {
  const toolkit::Rect pixels = scale_.Pixels(place);
  return {pixels.left, pixels.top, pixels.width, pixels.height};
}

QFont Metrics::FontOf(const toolkit::Font& font) const {
  QFont native(QStringList{ToQString(font.name), QString::fromLatin1(kProgramFont),
                           QString::fromLatin1(kProgramFontElsewhere)});
  native.setPixelSize(std::max(1, Pixels(font.size * 20)));  // 20 twips to the point
  native.setBold(font.bold);
  // Nothing of it comes from the program's font.
  native.setResolveMask(QFont::AllPropertiesResolved);
  return native;
}

void PaintBox(QPainter& painter, const QRect& place, const QBrush& fill, const BoxEdge& edge) {
  const double inset = edge.width / 2.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(edge.color, edge.width));
  painter.setBrush(fill);
  painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), edge.radius, edge.radius);
  painter.restore();
}

}  // namespace dossierkit::qt
