#include "adapters/qt/look.h"

#include <QFontDatabase>
#include <QPainter>
#include <QPixmapCache>
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

// Whether the program has the family; the list is made once, as it is dear.
bool IsInstalled(const QString& family) {
  static const QStringList installed = QFontDatabase::families();
  return installed.contains(family);
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
  const QString name = ToQString(font.name);
  QStringList families{QString::fromLatin1(kProgramFont), QString::fromLatin1(kProgramFontElsewhere)};
  // A family that is not there stands last: Qt looks up the substitutes of the first one, anew for each.
  families.insert(IsInstalled(name) ? 0 : families.size(), name);
  QFont native(families);
  native.setPixelSize(std::max(1, Pixels(font.size * 20)));  // 20 twips to the point
  native.setBold(font.bold);
  // Nothing of it comes from the program's font.
  native.setResolveMask(QFont::AllPropertiesResolved);
  return native;
}

namespace {

void DrawRounded(QPainter& painter, const QRect& place, const QBrush& fill, const BoxEdge& edge) {
  const double inset = edge.width / 2.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(edge.color, edge.width));
  painter.setBrush(fill);
  painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), edge.radius, edge.radius);
  painter.restore();
}

// The smallest box of that look, of two corners by two.
QPixmap Corners(int corner, double ratio, const QBrush& fill, const BoxEdge& edge) {
  const QString key = QStringLiteral("dossierkit-box-%1-%2-%3-%4-%5-%6")
                          .arg(corner)
                          .arg(ratio)
                          .arg(fill.style() == Qt::NoBrush ? 0U : fill.color().rgba())
                          .arg(edge.color.rgba())
                          .arg(edge.width)
                          .arg(edge.radius);
  QPixmap corners;
  if (QPixmapCache::find(key, &corners)) return corners;
  const QSize size(2 * corner, 2 * corner);
  corners = QPixmap(size * ratio);
  corners.setDevicePixelRatio(ratio);
  corners.fill(Qt::transparent);
  QPainter painter(&corners);
  DrawRounded(painter, QRect(QPoint(0, 0), size), fill, edge);
  QPixmapCache::insert(key, corners);
  return corners;
}

}  // namespace

// A rounded path is dear and a page has fifty: only the corners are one, painted once for each look.
void PaintBox(QPainter& painter, const QRect& place, const QBrush& fill, const BoxEdge& edge) {
  const double ratio = painter.device()->devicePixelRatio();
  const int corner = static_cast<int>(std::ceil(std::max<double>(edge.radius, edge.width))) + 1;
  const bool plain = fill.style() == Qt::NoBrush || (fill.style() == Qt::SolidPattern && fill.isOpaque());
  if (!plain || ratio != std::floor(ratio) || std::min(place.width(), place.height()) < 2 * corner) {
    DrawRounded(painter, place, fill, edge);
    return;
  }
  const QPixmap corners = Corners(corner, ratio, fill, edge);
  const int right = place.right() + 1;
  const int bottom = place.bottom() + 1;
  const double side = corner * ratio;
  const auto draw = [&](int left, int top, double from_left, double from_top) {
    painter.drawPixmap(QRectF(left, top, corner, corner), corners, QRectF(from_left, from_top, side, side));
  };
  draw(place.left(), place.top(), 0, 0);
  draw(right - corner, place.top(), side, 0);
  draw(place.left(), bottom - corner, 0, side);
  draw(right - corner, bottom - corner, side, side);
  const int width = place.width() - 2 * corner;
  const int height = place.height() - 2 * corner;
  const int left = place.left() + corner;
  const int top = place.top() + corner;
  if (fill.style() != Qt::NoBrush) {
    painter.fillRect(left, place.top() + edge.width, width, place.height() - 2 * edge.width, fill);
    painter.fillRect(place.left() + edge.width, top, corner - edge.width, height, fill);
    painter.fillRect(right - corner, top, corner - edge.width, height, fill);
  }
  painter.fillRect(left, place.top(), width, edge.width, edge.color);
  painter.fillRect(left, bottom - edge.width, width, edge.width, edge.color);
  painter.fillRect(place.left(), top, edge.width, height, edge.color);
  painter.fillRect(right - edge.width, top, edge.width, height, edge.color);
}

}  // namespace dossierkit::qt
