// Places: between Qt's rectangles and those of the toolkit, and what is known of a window's frame.
#pragma once

#include <QRect>
#include <optional>

#include "platform/toolkit/loop/placement.h"

class QWidget;

namespace dossierkit::qt {

toolkit::Rect FromQt(const QRect& rect);
toolkit::Size FromQt(const QSize& size);
QRect ToQt(const toolkit::Rect& rect);

// The frame that the desktop has put around the window; none before.
std::optional<toolkit::Margins> FrameOf(const QWidget& window);

}  // namespace dossierkit::qt
