#include "adapters/qt/places.h"

#include <QWidget>
#include <QWindow>

namespace dossierkit::qt {

toolkit::Rect FromQt(const QRect& rect) { return {rect.left(), rect.top(), rect.width(), rect.height()}; }

toolkit::Size FromQt(const QSize& size) { return {size.width(), size.height()}; }

QRect ToQt(const toolkit::Rect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }

std::optional<toolkit::Margins> FrameOf(const QWidget& window) {
  const QMargins frame = window.windowHandle() ? window.windowHandle()->frameMargins() : QMargins();
  if (frame.isNull()) return std::nullopt;
  return toolkit::Margins{frame.left(), frame.top(), frame.right(), frame.bottom()};
}

}  // namespace dossierkit::qt
