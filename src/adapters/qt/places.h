// Places: between Qt's rectangles and those of the toolkit, and what is known of a window's frame.
#pragma once

#include <QMargins>
#include <QRect>

#include "platform/toolkit/loop/placement.h"

class QWidget;

namespace dossierkit::qt {

toolkit::Rect FromQt(const QRect& rect);
toolkit::Size FromQt(const QSize& size);
toolkit::Margins FromQt(const QMargins& margins);
QRect ToQt(const toolkit::Rect& rect);

// Whether the desktop has put a frame around the window yet.
bool HasFrame(const QWidget& window);
// That frame; before it is there, one of the size that desktops have.
QMargins FrameOf(const QWidget& window);

}  // namespace dossierkit::qt
