#include "adapters/qt/window_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QWindow>
#include <utility>

#include "adapters/qt/places.h"
#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {
namespace {

constexpr int kSightMargin = 8;  // around what is brought into sight

class Window : public QWidget {
 public:
  Window(QtApplication& application, QWidget* parent)
      : QWidget(parent, Qt::Window), application_(application) {
    setAttribute(Qt::WA_QuitOnClose, false);  // the program's own windows decide that
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();  // the model closes it
    if (auto* view = View()) view->Closed();
  }
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    if (auto* view = View()) view->Resized();
  }
  bool event(QEvent* event) override {
    const bool handled = QWidget::event(event);
    // A window manager has put its frame around what it makes the active window.
    if (event->type() == QEvent::WindowActivate) {
      if (auto* view = View()) view->Framed();
    }
    return handled;
  }
  // Tab is the model's. Qt asks here also where to put the focus of a widget that was disabled.
  bool focusNextPrevChild(bool) override { return false; }

 private:
  WindowView* View() { return static_cast<WindowView*>(application_.ViewOf(this)); }
  QtApplication& application_;
};

QWidget* MakeWindow(ViewContext& context) {
  WindowView* below = context.application.TopWindow();
  QWidget* parent = below && below->Widget()->isVisible() ? below->Widget() : nullptr;
  auto* window = new Window(context.application, parent);
  if (!parent) context.application.Adopt(*window);
  return window;
}

}  // namespace

WindowView::WindowView(ViewContext& context, toolkit::Form& form)
    : WidgetView(context, form, MakeWindow(context)),
      layout_(form, context.metrics.GetScale()),
      place_(form) {
  area_ = new QScrollArea(Widget());
  area_->setFrameShape(QFrame::NoFrame);
  area_->setFocusPolicy(Qt::NoFocus);
  content_ = new QWidget(area_);
  const toolkit::Size scrolled = layout_.ScrolledSize();
  if (layout_.HasPanes()) {
    content_->resize(scrolled.width, scrolled.height);
  } else {
    area_->setWidgetResizable(true);
    content_->setMinimumSize(scrolled.width, scrolled.height);
  }
  area_->setWidget(content_);
  // Scroll bars that come or go change what is in sight, a little after the window's size.
  for (const QScrollBar* bar : {area_->horizontalScrollBar(), area_->verticalScrollBar()}) {
    QObject::connect(
        bar, &QScrollBar::rangeChanged, Hub(), [this] { BringFocusIntoSight(); }, Qt::QueuedConnection);
  }
  Widget()->setWindowModality(Qt::ApplicationModal);
  context.application.AddWindow(*this);
}

WindowView::~WindowView() { Context().application.RemoveWindow(*this); }

toolkit::Form& WindowView::GetForm() const { return static_cast<toolkit::Form&>(GetControl()); }

QWidget* WindowView::ContentFor(const toolkit::Control& child) const {
  return layout_.Scrolls(child) ? content_ : Widget();
}

QRect WindowView::ShownPlace(const toolkit::Control& control) const {
  return ToQt(layout_.ShownPlace(control, FromQt(Widget()->size())));
}

toolkit::Surroundings WindowView::Around() const {
  const QWidget& window = *Widget();
  toolkit::Surroundings around;
  around.work_area = FromQt(window.screen()->availableGeometry());
  if (const QWidget* below = window.parentWidget()) around.below = FromQt(below->frameGeometry());
  around.frame = FrameOf(window);
  around.scroll_bar = area_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  around.fills_screen = window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
  return around;
}

void WindowView::Place(const toolkit::Rect& client) {
  QWidget& window = *Widget();
  const QRect place = ToQt(client);
  if (!GetForm().Sizable()) window.setFixedSize(place.size());
  if (FrameOf(window)) {
    window.setGeometry(place);
  } else {
    window.resize(place.size());
    window.move(place.topLeft() - QPoint(toolkit::kUsualFrame.left, toolkit::kUsualFrame.top));
  }
}

void WindowView::Present() {
  QWidget& window = *Widget();
  const bool first = !std::exchange(presented_, true);
  if (first && !window.parentWidget()) Context().application.PutOverHost(window);
  if (first) Place(place_.Open(layout_, Around()));
  window.show();
  window.raise();
  window.activateWindow();
  Context().application.SyncFocus(GetForm());
  if (!first) return;
  ScrollToOrigin();  // from where the layout of the window has moved it
  BringFocusIntoSight();
}

void WindowView::Framed() {
  if (const auto client = place_.Framed(layout_, Around(), FromQt(Widget()->size()))) Place(*client);
}

void WindowView::Withdraw() { Widget()->hide(); }

void WindowView::Arrange() {
  area_->setGeometry(ToQt(layout_.Viewport(FromQt(Widget()->size()))));
  for (const auto& control : layout_.Stretched()) {
    if (auto* view = static_cast<WidgetView*>(control->GetView())) view->Show(toolkit::Aspect::kPlacement);
  }
}

void WindowView::BringIntoSight(const WidgetView& view, const QRect& part) {
  const QWidget& widget = *view.Widget();
  // Before the window shows nothing has been laid out.
  if (!presented_ || !Widget()->isVisible() || !content_->isAncestorOf(&widget)) return;
  const auto in_content = [this](const QWidget& shown, const QRect& rect) {
    return FromQt(QRect(shown.mapTo(content_, rect.topLeft()), rect.size()));
  };
  const toolkit::Rect target = in_content(widget, part.isNull() ? widget.rect() : part);
  toolkit::Rect label = target;
  const auto labelled_by = view.GetControl().LabelledBy();
  if (const auto* shown = labelled_by ? static_cast<const WidgetView*>(labelled_by->GetView()) : nullptr;
      shown && part.isNull() && content_->isAncestorOf(shown->Widget()))
    label = in_content(*shown->Widget(), shown->Widget()->rect());
  QScrollBar& across = *area_->horizontalScrollBar();
  QScrollBar& down = *area_->verticalScrollBar();
  const toolkit::Point offset = toolkit::ScrollIntoSight(
      {{across.value(), down.value()}, FromQt(area_->viewport()->size()), FromQt(content_->size())}, target,
      label, kSightMargin);
  across.setValue(offset.left);
  down.setValue(offset.top);
}

void WindowView::BringFocusIntoSight() {
  const auto& focus = GetForm().ActiveControl();
  if (const auto* view = focus ? static_cast<const WidgetView*>(focus->GetView()) : nullptr;
      view && view->Widget())
    BringIntoSight(*view);
}

void WindowView::ScrollToOrigin() {
  area_->horizontalScrollBar()->setValue(0);
  area_->verticalScrollBar()->setValue(0);
}

void WindowView::Closed() {
  Context().application.Guard([this] { GetForm().UserClose(); });
}

void WindowView::Resized() {
  if (!presented_) return;
  Arrange();
  BringFocusIntoSight();
  const auto keep = GetForm().shared_from_this();
  const toolkit::Size size = layout_.ModelSize(FromQt(Widget()->size()));
  Context().application.Guard([&] { GetForm().UserResize(size.width, size.height); });
}

void WindowView::ShowPlacement() {
  if (const auto corner = place_.Moved(GetMetrics().GetScale())) Widget()->move(corner->left, corner->top);
}

void WindowView::ShowText() {
  Widget()->setWindowTitle(ToQString(GetForm().Caption()));
  Widget()->setAccessibleName(ToQString(GetForm().Caption()));
}

}  // namespace dossierkit::qt
