#include "adapters/qt/widget_view.h"

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"
#include "adapters/qt/window_view.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {

using toolkit::Aspect;

QWidget* ParentWidgetOf(const toolkit::Control& control) {
  const toolkit::Control* container = control.Container();
  const auto* view = container ? static_cast<const WidgetView*>(container->GetView()) : nullptr;
  return view ? view->ContentFor(control) : nullptr;
}

WidgetView::WidgetView(ViewContext& context, toolkit::Control& control, QWidget* widget)
    : context_(context),
      control_(control),
      widget_(widget),
      hub_(std::make_unique<QObject>()),
      life_(std::make_shared<int>(0)) {
  widget->setObjectName(ToQString(control.Name()));
  widget->setFocusPolicy(control.TakesFocus() ? Qt::StrongFocus : Qt::NoFocus);
  context_.application.Link(*widget, *this);
}

WidgetView::~WidgetView() {
  hub_.reset();
  if (!widget_) return;
  context_.application.Unlink(*widget_);
  widget_->setObjectName({});
  widget_->hide();
  widget_->clearFocus();
  widget_->deleteLater();
}

void WidgetView::ShowAll() {
  ShowStyle();
  ShowText();
  ShowContent();
  ShowSelection();
  ShowPlacement();
  ShowState();
}

void WidgetView::Show(Aspect aspect) {
  if (!widget_) return;
  context_.application.GetLoops().Contain([&] { ShowNow(aspect); });
}

void WidgetView::ShowNow(Aspect aspect) {
  switch (aspect) {
    case Aspect::kPlacement: ShowPlacement(); break;
    case Aspect::kState: ShowState(); break;
    case Aspect::kStyle: ShowStyle(); break;
    case Aspect::kText: ShowText(); break;
    case Aspect::kContent: ShowContent(); break;
    case Aspect::kSelection: ShowSelection(); break;
    case Aspect::kFocus: break;
  }
  if (aspect == Aspect::kFocus || aspect == Aspect::kState) {
    if (toolkit::Form* window = toolkit::FormOf(control_)) context_.application.SyncFocus(*window);
  }
}

WindowView* WidgetView::Window() const {
  const toolkit::Form* window = toolkit::FormOf(control_);
  return window ? static_cast<WindowView*>(window->GetView()) : nullptr;
}

bool WidgetView::Shown() const { return control_.Visible() && !toolkit::OnHiddenTab(control_); }

void WidgetView::ShowPlacement() {
  if (QWidget* parent = ParentWidgetOf(control_); parent && widget_->parentWidget() != parent) {
    widget_->setParent(parent);
    if (Shown()) widget_->show();
  }
  const WindowView* window = Window();
  widget_->setGeometry(window ? window->ShownPlace(control_) : GetMetrics().Pixels(control_.Place()));
}

void WidgetView::ShowState() {
  widget_->setEnabled(control_.Enabled());
  widget_->setVisible(Shown());
}

void WidgetView::ShowStyle() {
  const QFont font = GetMetrics().FontOf(control_.GetFont());
  if (widget_->font() != font) widget_->setFont(font);
  widget_->setToolTip(ToQString(control_.ToolTipText()));
  const QString name = ToQString(control_.AccessibleName());
  if (widget_->accessibleName() != name) widget_->setAccessibleName(name);
}

}  // namespace dossierkit::qt
