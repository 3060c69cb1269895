#include "adapters/qt/qt_application.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QElapsedTimer>
#include <QFocusEvent>
#include <QThread>
#include <QWindow>

#include "adapters/qt/guard.h"
#include "adapters/qt/window_view.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {
namespace {

constexpr int kActivationWait = 150;  // ms at most

// What has the keyboard, or has it no more, looks otherwise, and its frame as well.
void RepaintWithFrame(QWidget* widget) {
  widget->update();
  if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) area->viewport()->update();
}

}  // namespace

QtApplication::QtApplication(const Metrics& metrics) : looks_(metrics) {
  qApp->installEventFilter(this);
  QObject::connect(qApp, &QApplication::focusChanged, this,
                   [this](QWidget* before, QWidget* now) { FocusChanged(before, now); });
}

WidgetView* QtApplication::NearestView(const QWidget* widget) const {
  for (; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
    if (WidgetView* view = ViewOf(widget)) return view;
  }
  return nullptr;
}

QWidget* QtApplication::WidgetOf(const QWindow& native) const {
  for (const WindowView* window : windows_) {
    if (window->Widget() && window->Widget()->windowHandle() == &native) return window->Widget();
  }
  return nullptr;
}

bool QtApplication::eventFilter(QObject* receiver, QEvent* event) {
  if (receiver->isWidgetType()) return StopsAtWidget(static_cast<QWidget&>(*receiver), *event);
  return receiver->isWindowType() && input_.Stops(static_cast<QWindow&>(*receiver), *event);
}

bool QtApplication::StopsAtWidget(QWidget& widget, QEvent& event) {
  switch (event.type()) {
    case QEvent::Create:
    case QEvent::ParentChange: looks_.Made(widget); return false;
    case QEvent::Polish: looks_.Shows(widget); return false;
    case QEvent::FocusIn: focus_.Comes(static_cast<QFocusEvent&>(event).reason()); return false;
    default: return input_.Stops(widget, event);
  }
}

void QtApplication::FocusChanged(QWidget* before, QWidget* now) {
  for (QWidget* widget : {before, now}) {
    if (widget && looks_.Cover(*widget)) RepaintWithFrame(widget);
  }
  Guard([&] { focus_.Follow(now); });
}

void QtApplication::PutOverHost(QWidget& window) {
  QWidget* host = host_window_ ? host_window_->window() : QApplication::activeWindow();
  below_ = host && host->windowHandle() && !looks_.Cover(*host) ? host : nullptr;
  if (!below_) return;
  window.setScreen(below_->screen());
  window.winId();  // the native window is there from now on
  window.windowHandle()->setTransientParent(below_->windowHandle());
}

void QtApplication::ReactivateTop() {
  const WindowView* top = TopWindow();
  const QPointer<QWidget> window = top ? top->Widget() : below_.data();
  if (!window || !window->isVisible()) return;
  window->activateWindow();
  QElapsedTimer timer;
  timer.start();
  while (window && !window->isActiveWindow() && timer.elapsed() < kActivationWait) {
    loops_.Contain([] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 5); });
    if (window && !window->isActiveWindow()) QThread::msleep(1);
  }
  if (WidgetView* view = ViewOf(window)) SyncFocus(static_cast<toolkit::Form&>(view->GetControl()));
}

void QtApplication::Guard(const std::function<void()>& work) { RunGuarded(*this, work); }

}  // namespace dossierkit::qt
