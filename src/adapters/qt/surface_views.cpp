#include "adapters/qt/surface_views.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

#include "adapters/qt/elided.h"
#include "adapters/qt/texts.h"
#include "adapters/qt/window_view.h"

namespace dossierkit::qt {
namespace {

constexpr double kCaptionIndent = 8;
constexpr double kCaptionPadding = 5;

class FrameWidget : public QWidget {
 public:
  FrameWidget(const Metrics& metrics, QWidget* parent) : QWidget(parent), metrics_(metrics) {}
  void SetCaption(const QString& caption) {
    caption_ = caption;
    update();
  }
  void SetBorder(bool border) {
    border_ = border;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QFontMetrics text(font());
    const int padding = metrics_.Scaled(kCaptionPadding);
    const QString caption = Elided(caption_, text, CaptionRoom());
    QRect place(0, 0, text.horizontalAdvance(caption) + 2, text.height() * 3 / 2);
    if (border_) {
      place = QRect(metrics_.Scaled(kCaptionIndent), 0, place.width() + 2 * padding, text.height());
      if (!caption_.isEmpty()) painter.setClipRegion(QRegion(rect()).subtracted(QRegion(place)));
      PaintBox(painter, rect().adjusted(0, caption_.isEmpty() ? 0 : text.height() / 2, 0, 0), Qt::NoBrush,
               {EdgeColor(), metrics_.Edge(), metrics_.Radius()});
      painter.setClipping(false);
      place.adjust(padding, 0, 0, 0);
    }
    // A bold caption heads the page; any other one only names what stands in the frame.
    const QColor ink = font().bold() ? palette().color(QPalette::WindowText) : AccentColor().darker(120);
    painter.setPen(isEnabled() ? ink : palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, caption);
  }
  // Of the caption alone: what stands in the frame would show the frame's tool tip as its own.
  bool event(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto& help = static_cast<QHelpEvent&>(*event);
    const QFontMetrics metrics(font());
    const bool cut = metrics.horizontalAdvance(caption_) > CaptionRoom();
    if (!cut || !rect().contains(help.pos()) || help.pos().y() >= metrics.height())
      return QWidget::event(event);
    QToolTip::showText(help.globalPos(), TipOf(caption_), this);
    return true;
  }

 private:
  int CaptionRoom() const {
    return border_ ? width() - 2 * metrics_.Scaled(kCaptionIndent + kCaptionPadding) : width();
  }

  Metrics metrics_;
  QString caption_;
  bool border_ = true;
};

class LineWidget : public QWidget {
 public:
  explicit LineWidget(QWidget* parent) : QWidget(parent) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const bool across = width() >= height();
    const QRect stroke =
        across ? QRect(0, (height() - 1) / 2, width(), 1) : QRect((width() - 1) / 2, 0, 1, height());
    painter.fillRect(stroke, LineColor());
  }
};

class CoolBarWidget : public QWidget {
 public:
  explicit CoolBarWidget(QWidget* parent) : QWidget(parent) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), BarColor());
    painter.fillRect(QRect(0, height() - 1, width(), 1), LineColor());
  }
};

}  // namespace

FrameView::FrameView(ViewContext& context, toolkit::Frame& frame)
    : WidgetView(context, frame, new FrameWidget(context.metrics, ParentWidgetOf(frame))) {
  Widget()->lower();
}

void FrameView::ShowText() {
  static_cast<FrameWidget*>(Widget())->SetCaption(
      ToQString(static_cast<toolkit::Frame&>(GetControl()).Caption()));
}

void FrameView::ShowStyle() {
  WidgetView::ShowStyle();
  static_cast<FrameWidget*>(Widget())->SetBorder(static_cast<toolkit::Frame&>(GetControl()).Border());
}

LineView::LineView(ViewContext& context, toolkit::Control& line)
    : WidgetView(context, line, new LineWidget(ParentWidgetOf(line))) {}

void LineView::ShowPlacement() {
  WidgetView::ShowPlacement();
  Widget()->resize(std::max(Widget()->width(), 1), std::max(Widget()->height(), 1));
}

SurfaceView::SurfaceView(ViewContext& context, toolkit::Control& control)
    : WidgetView(context, control, new QWidget(ParentWidgetOf(control))) {
  if (WindowView* window = Window(); window && control.GetKind() == toolkit::Kind::kUserControl)
    window->ScrollToOrigin();
}

CoolBarView::CoolBarView(ViewContext& context, toolkit::Control& bar)
    : WidgetView(context, bar, new CoolBarWidget(ParentWidgetOf(bar))) {}

}  // namespace dossierkit::qt
