#include "adapters/qt/places.h"

#include <QWidget>
#include <QWindow>

namespace dossierkit::qt {
namespace {

const QMargins kUsualFrame(4, 28, 4, 4);

QMargins Frame(const QWidget& window) {
  return window.windowHandle() ? window.windowHandle()->frameMargins() : QMargins();
}

}  // namespace

toolkit::Rect FromQt(const QRect& rect) { return {rect.left(), rect.top(), rect.width(), rect.height()}; }

toolkit::Size FromQt(const QSize& size) { return {size.width(), size.height()}; }

toolkit::Margins FromQt(const QMargins& margins) {
  return {margins.left(), margins.top(), margins.right(), margins.bottom()};
}

QRect ToQt(const toolkit::Rect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }

bool HasFrame(const QWidget& window) { return !Frame(window).isNull(); }

QMargins FrameOf(const QWidget& window) {
  const QMargins frame = Frame(window);
  return frame.isNull() ? kUsualFrame : frame;
}

}  // namespace dossierkit::qt
