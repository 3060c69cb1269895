// The fonts and boxes of the views.
#include "adapters/qt/look.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

namespace dossierkit::qt {
namespace {

// The families that the pages name are missing on most systems; what takes their place is not left to the
// system's own settings.
TEST(QtLook, AFamilyThatTheSystemLacksGivesTheProgramsFont) {
  const Metrics metrics(1.0);
  for (const char* family : {"宋体", "SimSun", "华文细黑", "STXihei"}) {
    EXPECT_EQ(QFontInfo(metrics.FontOf({family, 9, false})).family(), "WenQuanYi Zen Hei") << family;
  }
}

// One that is installed is taken as it is asked for.
TEST(QtLook, AFamilyThatTheSystemHasIsTaken) {
  EXPECT_EQ(QFontInfo(Metrics(1.0).FontOf({"DejaVu Sans", 9, false})).family(), "DejaVu Sans");
}

// A picture on which `paint` has painted.
template <typename Paint>
QImage Painted(double ratio, const Paint& paint) {
  QImage image(QSize(60, 40) * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(QColor(0xF2, 0xF4, 0xF7));
  QPainter painter(&image);
  painter.translate(2, 3);
  paint(painter);
  return image;
}

// The most by which a channel of a pixel differs.
int Difference(const QImage& one, const QImage& other) {
  int most = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const QRgb left = one.pixel(x, y);
      const QRgb right = other.pixel(x, y);
      most = std::max({most, std::abs(qRed(left) - qRed(right)), std::abs(qGreen(left) - qGreen(right)),
                       std::abs(qBlue(left) - qBlue(right))});
    }
  }
  return most;
}

// Whether it is put together of its corners, or too small for that, or a pixel is no whole one of the screen.
TEST(QtLook, ABoxIsARoundedRectangleInsideItsPlace) {
  const QColor blue(0x2B, 0x6C, 0xB0);
  for (const double ratio : {1.0, 1.5, 2.0}) {
    for (const QRect& place :
         {QRect(0, 0, 50, 30), QRect(5, 4, 11, 12), QRect(1, 1, 10, 10), QRect(2, 2, 9, 8)}) {
      for (const QBrush& fill : {QBrush(Qt::NoBrush), QBrush(Qt::white), QBrush(QColor(0xC9, 0xE0, 0xFC))}) {
        for (const BoxEdge& edge :
             {BoxEdge{blue, 1, 3.0}, BoxEdge{blue, 2, 3.0}, BoxEdge{Qt::black, 1, 4.5}}) {
          const QImage box = Painted(ratio, [&](QPainter& painter) { PaintBox(painter, place, fill, edge); });
          const QImage rounded = Painted(ratio, [&](QPainter& painter) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(edge.color, edge.width));
            painter.setBrush(fill);
            const double inset = edge.width / 2.0;
            painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), edge.radius,
                                    edge.radius);
          });
          EXPECT_LE(Difference(box, rounded), 2)  // what is rounded at the corners
              << ratio << ' ' << place.width() << ' ' << fill.color().name().toStdString() << ' '
              << edge.width;
        }
      }
    }
  }
}

}  // namespace
}  // namespace dossierkit::qt
