#include "adapters/qt/surface_views.h"

#include <QPainter>
#include <algorithm>

#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

constexpr double kCornerRadius = 4;
constexpr int kCaptionIndent = 10;
constexpr int kCaptionPadding = 5;

class FrameWidget : public QWidget {
 public:
  explicit FrameWidget(QWidget* parent) : QWidget(parent) {}
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
    if (!border_) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics(font());
    const int top = caption_.isEmpty() ? 0 : metrics.height() / 2;
    const QRectF edge = QRectF(rect()).adjusted(0.5, top + 0.5, -0.5, -0.5);
    const int text_width = metrics.horizontalAdvance(caption_);
    if (!caption_.isEmpty()) {
      const QRect gap(kCaptionIndent, 0, text_width + 2 * kCaptionPadding, metrics.height());
      painter.setClipRegion(QRegion(rect()).subtracted(QRegion(gap)));
    }
    painter.setPen(QPen(EdgeColor(), 1));
    painter.drawRoundedRect(edge, kCornerRadius, kCornerRadius);
    if (caption_.isEmpty()) return;
    painter.setClipping(false);
    painter.setPen(isEnabled() ? AccentColor().darker(120)
                               : palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(QRect(kCaptionIndent + kCaptionPadding, 0, text_width + 2, metrics.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, caption_);
  }

 private:
  QString caption_;
  bool border_ = true;
};

class LineWidget : public QWidget {
 public:
  explicit LineWidget(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const bool across = width() >= height();
    const QRect stroke =
        across ? QRect(0, (height() - 1) / 2, width(), 1) : QRect((width() - 1) / 2, 0, 1, height());
    painter.fillRect(stroke, EdgeColor().darker(112));
  }
};

class CoolBarWidget : public QWidget {
 public:
  explicit CoolBarWidget(QWidget* parent) : QWidget(parent) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), BarColor());
    painter.fillRect(QRect(0, height() - 1, width(), 1), EdgeColor());
  }
};

}  // namespace

FrameView::FrameView(ViewContext& context, toolkit::Frame& frame)
    : WidgetView(context, frame, new FrameWidget(ParentWidgetOf(frame))) {
  Widget()->lower();
}

void FrameView::ShowText() {
  static_cast<FrameWidget*>(Widget())->SetCaption(ToQString(GetControl().AccessibleName()));
  Widget()->setAccessibleName(ToQString(GetControl().AccessibleName()));
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
    : WidgetView(context, control, new QWidget(ParentWidgetOf(control))) {}

CoolBarView::CoolBarView(ViewContext& context, toolkit::Control& bar)
    : WidgetView(context, bar, new CoolBarWidget(ParentWidgetOf(bar))) {}

}  // namespace dossierkit::qt
