#include "adapters/qt/input_filter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

#include "adapters/qt/keys.h"
#include "adapters/qt/qt_application.h"
#include "adapters/qt/window_view.h"
#include "platform/environment/during.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {
namespace {

toolkit::Form& FormOf(const WidgetView& window) { return static_cast<toolkit::Form&>(window.GetControl()); }

// A key goes to the widget of a window that has the keyboard, else to the window, and from there up to its
// parents as long as nobody takes it.
bool IsTargetOfKeys(const QWidget& widget) {
  const QWidget* focus = widget.window()->focusWidget();
  return focus ? focus == &widget : widget.isWindow();
}

}  // namespace

bool InputFilter::Stops(QWindow& native, QEvent& event) {
  const auto type = event.type();
  const bool press = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
  if (sending_ || (!press && type != QEvent::MouseButtonRelease && type != QEvent::MouseMove)) return false;
  // A menu that is open takes the mouse, wherever it is.
  QWidget* window = QApplication::activePopupWidget() ? nullptr : application_.WidgetOf(native);
  if (!window) return false;
  auto& mouse = static_cast<QMouseEvent&>(event);
  if (press) return StopsPress(native, *window, mouse);
  return type == QEvent::MouseMove ? StopsMove(*window, mouse) : StopsRelease(*window, mouse);
}

bool InputFilter::Stops(QWidget& widget, QEvent& event) {
  if (event.type() != QEvent::KeyPress || sending_ || !IsTargetOfKeys(widget)) return false;
  return StopsKey(widget, static_cast<QKeyEvent&>(event));
}

// --- mouse ---------------------------------------------------------------------------------------

QWidget& InputFilter::Receiver(QWidget& window, const QMouseEvent& event) const {
  if (pressed_ && pressed_->window() == &window) return *pressed_;
  QWidget* under = window.childAt(event.position().toPoint());
  return under ? *under : window;
}

bool InputFilter::StopsPress(QWindow& native, QWidget& window, QMouseEvent& event) {
  swallowed_ = Qt::NoButton;
  if (event.buttons() == event.button()) pressed_ = nullptr;
  const QPointer<QWidget> receiver = &Receiver(window, event);
  const QPointer<QWindow> alive = &native;
  const QPointer<QWidget> held_window = &window;
  const int loops_before = application_.GetLoops().Begun();
  // The place in the event itself is that of the mouse, which goes on meanwhile.
  const QPointF at = event.position();
  const QPointF on_screen = event.globalPosition();
  held_ = true;
  bool passed = false;
  application_.Guard([&] { passed = PassPress(*receiver, event); });
  if (!passed || !receiver || !alive) {
    held_ = false;
    swallowed_ = event.button();
    return true;
  }
  if (application_.GetLoops().Begun() == loops_before) {
    pressed_ = receiver;
    return false;
  }
  // The window that the check opened took this press's release.
  for (const auto type : {event.type(), QEvent::MouseButtonRelease}) {
    const environment::During sending(sending_);
    const Qt::MouseButtons down =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(event.button());
    QMouseEvent sent(type, at, on_screen, event.button(), down, event.modifiers());
    if (alive) QCoreApplication::sendEvent(alive, &sent);
  }
  held_ = false;
  if (held_window) EndHold(*held_window);
  return true;
}

// What got the focus scrolls into sight now, behind the release.
void InputFilter::EndHold(QWidget& window) {
  held_ = false;
  QMetaObject::invokeMethod(
      &window,
      [this, &window] {
        if (auto* view = static_cast<WindowView*>(application_.ViewOf(&window))) view->BringFocusIntoSight();
      },
      Qt::QueuedConnection);
}

bool InputFilter::StopsRelease(QWidget& window, const QMouseEvent& event) {
  if (event.buttons() == Qt::NoButton) {
    pressed_ = nullptr;
    if (held_) EndHold(window);
  }
  if (event.button() != swallowed_) return false;
  swallowed_ = Qt::NoButton;
  return true;
}

bool InputFilter::StopsMove(QWidget& window, const QMouseEvent& event) {
  const QPointer<QWidget> receiver = &Receiver(window, event);
  application_.Guard([&] { ReportMove(*receiver, event); });
  return !receiver;
}

bool InputFilter::PassPress(QWidget& widget, const QMouseEvent& event) const {
  WidgetView* view = application_.NearestView(&widget);
  if (!view) return true;
  const QPoint at = view->Widget()->mapFromGlobal(event.globalPosition().toPoint());
  const Metrics metrics(view->GetMetrics());
  return view->GetControl().UserMouseDown(ButtonOf(event.button()), ShiftOf(event.modifiers()),
                                          metrics.Twips(at.x()), metrics.Twips(at.y()));
}

void InputFilter::ReportMove(QWidget& widget, const QMouseEvent& event) const {
  WidgetView* view = application_.NearestView(&widget);
  if (!view) return;
  const QPoint at = view->Widget()->mapFromGlobal(event.globalPosition().toPoint());
  const Metrics metrics(view->GetMetrics());
  int buttons = 0;
  for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    if (event.buttons() & button) buttons |= ButtonOf(button);
  }
  view->GetControl().UserMouseMove(buttons, ShiftOf(event.modifiers()), metrics.Twips(at.x()),
                                   metrics.Twips(at.y()));
}

// --- keys ----------------------------------------------------------------------------------------

bool InputFilter::StopsKey(QWidget& widget, QKeyEvent& event) {
  const QPointer<QWidget> alive = &widget;
  bool passed = false;
  application_.Guard([&] { passed = PassKey(widget, event); });
  // A handler may have ended the window, and a loop of its own what was put off.
  if (!passed || !alive) {
    event.accept();
    return true;
  }
  QWidget* behind = BehindTab(widget);
  if (!behind) return false;
  const environment::During sending(sending_);
  QCoreApplication::sendEvent(behind, &event);
  return true;
}

bool InputFilter::PassKey(QWidget& widget, const QKeyEvent& event) const {
  WidgetView* view = application_.ViewOf(widget.window());
  if (!view) return true;
  return FormOf(*view).UserKey(StrokeOf(event));
}

// A control on a hidden tab may have the model's focus but not the native one: its keys come to the
// window. Returns its widget then.
QWidget* InputFilter::BehindTab(const QWidget& widget) const {
  const WidgetView* window = widget.isWindow() ? application_.ViewOf(&widget) : nullptr;
  if (!window) return nullptr;
  const auto focus = FormOf(*window).ActiveControl();
  if (!focus || !focus->Reachable() || !toolkit::OnHiddenTab(*focus)) return nullptr;
  const auto* view = static_cast<const WidgetView*>(focus->GetView());
  return view ? view->FocusWidget() : nullptr;
}

}  // namespace dossierkit::qt
