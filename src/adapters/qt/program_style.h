// ProgramStyle: how boxes, buttons, lists and their heads are drawn.
#pragma once

#include <QProxyStyle>

#include "adapters/qt/look.h"

class QStyleOptionViewItem;

namespace dossierkit::qt {

// Fusion with one edge and one radius for every box, and a ring around the one that has the keyboard,
// however it came there. The chosen row of a list is dark while the list has the keyboard, else pale
// with a bar at its left.
class ProgramStyle : public QProxyStyle {
 public:
  explicit ProgramStyle(const Metrics& metrics);

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;

 private:
  void DrawBox(QPainter& painter, const QStyleOption& option) const;
  void DrawButton(QPainter& painter, const QStyleOption& option) const;
  void DrawItem(QPainter& painter, const QStyleOptionViewItem& option, const QWidget* widget) const;
  void DrawBar(QPainter& painter, const QRect& row) const;

  Metrics metrics_;
};

}  // namespace dossierkit::qt
