#include "adapters/qt/label_view.h"

#include <QLabel>

#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

constexpr int kPadding = 8;  // of a coloured label

}  // namespace

LabelView::LabelView(ViewContext& context, toolkit::Label& label)
    : WidgetView(context, label, new QLabel(ParentWidgetOf(label))),
      label_(label),
      native_(static_cast<QLabel*>(Widget())) {
  native_->setTextFormat(Qt::PlainText);
}

void LabelView::ShowStyle() {
  WidgetView::ShowStyle();
  native_->setWordWrap(label_.WordWrap());
  const Qt::Alignment across = label_.AlignCenter() ? Qt::AlignHCenter : Qt::AlignLeft;
  native_->setAlignment(across | (label_.WordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
  native_->setAutoFillBackground(label_.Opaque());
  native_->setMargin(label_.Opaque() && label_.WordWrap() ? GetMetrics().Scaled(kPadding) : 0);
  QPalette palette = native_->palette();
  palette.setColor(QPalette::Active, QPalette::WindowText, ColorOf(label_.ForeColor()));
  palette.setColor(QPalette::Inactive, QPalette::WindowText, ColorOf(label_.ForeColor()));
  if (label_.Opaque()) palette.setColor(QPalette::Window, ColorOf(label_.BackColor()));
  // A help text stays readable while its page is disabled.
  if (label_.Opaque())
    palette.setColor(QPalette::Disabled, QPalette::WindowText, ColorOf(label_.ForeColor()));
  native_->setPalette(palette);
}

void LabelView::ShowText() {
  native_->setText(ToQString(label_.Caption()));
  native_->setAccessibleName(ToQString(label_.AccessibleName()));
}

}  // namespace dossierkit::qt
