#include "adapters/qt/label_view.h"

#include <QPainter>
#include <algorithm>

#include "adapters/qt/elided.h"
#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

constexpr double kPadding = 8;  // of a coloured label

// A coloured text of several lines is a slab as tall as its text.
class SlabLabel : public ElidedLabel {
 public:
  SlabLabel(const Metrics& metrics, QWidget* parent) : ElidedLabel(parent), metrics_(metrics) {}
  void SetSlab(bool slab) { slab_ = slab; }

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (slab_ && !text().isEmpty()) {
      QPainter painter(this);
      const QColor color = palette().color(QPalette::Window);
      PaintBox(painter, QRect(0, 0, width(), std::min(height(), heightForWidth(width()))), color,
               {color, metrics_.Edge(), metrics_.Radius()});
    }
    ElidedLabel::paintEvent(event);
  }

 private:
  Metrics metrics_;
  bool slab_ = false;
};

// A plain caption recedes behind the bold ones, which announce what is required.
QColor InkOf(const toolkit::Label& label) {
  const bool plain = label.ForeColor() == toolkit::kButtonText && !label.FontBold();
  return plain ? SoftInkColor() : ColorOf(label.ForeColor());
}

}  // namespace

LabelView::LabelView(ViewContext& context, toolkit::Label& label)
    : WidgetView(context, label, new SlabLabel(context.metrics, ParentWidgetOf(label))),
      label_(label),
      native_(static_cast<ElidedLabel*>(Widget())) {}

void LabelView::ShowStyle() {
  WidgetView::ShowStyle();
  native_->setWordWrap(label_.WordWrap());
  const Qt::Alignment across = label_.AlignCenter() ? Qt::AlignHCenter : Qt::AlignLeft;
  native_->setAlignment(across | (label_.WordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
  const bool slab = label_.Opaque() && label_.WordWrap();
  static_cast<SlabLabel*>(native_)->SetSlab(slab);
  native_->setAutoFillBackground(label_.Opaque() && !slab);
  native_->setMargin(slab ? GetMetrics().Scaled(kPadding) : 0);
  QPalette palette = native_->palette();
  palette.setColor(QPalette::Active, QPalette::WindowText, InkOf(label_));
  palette.setColor(QPalette::Inactive, QPalette::WindowText, InkOf(label_));
  if (label_.Opaque()) palette.setColor(QPalette::Window, ColorOf(label_.BackColor()));
  // A help text stays readable while its page is disabled.
  if (label_.Opaque())
    palette.setColor(QPalette::Disabled, QPalette::WindowText, ColorOf(label_.ForeColor()));
  native_->setPalette(palette);
  native_->SetScrolls(label_.Opaque());
  native_->SetOwnTip(ToQString(label_.ToolTipText()));
  native_->Arrange();
}

void LabelView::ShowText() { native_->ShowFromTop(ToQString(label_.Caption())); }

}  // namespace dossierkit::qt
