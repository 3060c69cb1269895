#include "adapters/qt/qt_application.h"

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QThread>
#include <utility>

#include "adapters/qt/keys.h"
#include "adapters/qt/window_view.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {
namespace {

constexpr auto kBusyAfter = std::chrono::milliseconds(300);
constexpr int kActivationWait = 150;  // ms at most

// What has the keyboard, or has it no more, looks otherwise, and its frame as well.
void RepaintWithFrame(QWidget* widget) {
  if (!widget) return;
  widget->update();
  if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) area->viewport()->update();
}

}  // namespace

QtApplication::QtApplication(int& argc, char** argv) : QApplication(argc, argv) {
  QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));  // dates of the file dialog
  QObject::connect(this, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
    RepaintWithFrame(before);
    RepaintWithFrame(now);
    Guard([&] { FollowFocus(now); });
  });
}

QtApplication::~QtApplication() {
  sendPostedEvents(nullptr, QEvent::DeferredDelete);
  if (!held_.empty())
    qCritical("What the host's own handlers threw during a visit reached no loop of the host");
}

// --- widgets and views ---------------------------------------------------------------------------

void QtApplication::Link(QWidget& widget, WidgetView& view) { views_.insert(&widget, &view); }

void QtApplication::Unlink(QWidget& widget) { views_.remove(&widget); }

WidgetView* QtApplication::ViewOf(const QWidget* widget) const { return views_.value(widget, nullptr); }

WidgetView* QtApplication::NearestView(const QWidget* widget) const {
  for (; widget; widget = widget->isWindow() ? nullptr : widget->parentWidget()) {
    if (WidgetView* view = ViewOf(widget)) return view;
  }
  return nullptr;
}

// --- events --------------------------------------------------------------------------------------

bool QtApplication::notify(QObject* receiver, QEvent* event) {
  struct Depth {
    QtApplication& application;
    explicit Depth(QtApplication& one) : application(one) {
      if (application.busy_.depth++ == 0) application.busy_.since = std::chrono::steady_clock::now();
    }
    ~Depth() {
      if (--application.busy_.depth == 0) application.EndBusy();
    }
  } depth(*this);
  try {
    return Notify(receiver, event);
  } catch (...) {
    // The views' own handlers are guarded, so this is the host's. Outside a visit, and where another handler
    // of the host's sent the event, nothing differs from any Qt program.
    if (loops_.empty() || (busy_.depth > 1 && busy_.guards == 0)) throw;
    held_.push_back(std::current_exception());
  }
  return true;
}

bool QtApplication::Notify(QObject* receiver, QEvent* event) {
  if (!receiver->isWidgetType()) return QApplication::notify(receiver, event);
  QPointer<QWidget> widget = static_cast<QWidget*>(receiver);
  bool nested = false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      auto& press = static_cast<QMouseEvent&>(*event);
      swallowed_ = Qt::NoButton;
      bool passed = false;
      Guard([&] { passed = PassPress(*widget, press, nested); });
      if (!passed) {
        swallowed_ = press.button();
        press.accept();
        return true;
      }
      break;
    }
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == swallowed_) {
        swallowed_ = Qt::NoButton;
        event->accept();
        return true;
      }
      break;
    case QEvent::MouseMove:
      Guard([&] { ReportMove(*widget, static_cast<QMouseEvent&>(*event)); });
      if (!widget) return true;
      break;
    case QEvent::KeyPress: {
      bool passed = false;
      Guard([&] { passed = PassKey(*widget, static_cast<QKeyEvent&>(*event)); });
      if (!passed || !widget) {
        event->accept();
        return true;
      }
      if (QWidget* behind = BehindTab(*widget)) receiver = behind;
      break;
    }
    case QEvent::FocusIn: focus_reason_ = static_cast<QFocusEvent*>(event)->reason(); break;
    default: break;
  }
  const bool result = QApplication::notify(receiver, event);
  if (nested && widget) {
    // The window that the check opened took this press's release.
    const auto& press = static_cast<QMouseEvent&>(*event);
    QMouseEvent release(QEvent::MouseButtonRelease, press.position(), press.globalPosition(), press.button(),
                        Qt::NoButton, press.modifiers());
    QApplication::notify(widget, &release);
  }
  return result;
}

bool QtApplication::PassPress(QWidget& widget, const QMouseEvent& event, bool& nested) {
  WidgetView* view = NearestView(&widget);
  if (!view) return true;
  const QPoint at = view->Widget()->mapFromGlobal(event.globalPosition().toPoint());
  const Metrics metrics(view->GetMetrics());
  const QPointer<QWidget> alive = &widget;
  const int loops_before = loops_run_;
  const bool passed = view->GetControl().UserMouseDown(ButtonOf(event.button()), ShiftOf(event.modifiers()),
                                                       metrics.Twips(at.x()), metrics.Twips(at.y()));
  nested = loops_run_ != loops_before;
  return passed && alive;
}

void QtApplication::ReportMove(QWidget& widget, const QMouseEvent& event) {
  WidgetView* view = NearestView(&widget);
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

bool QtApplication::PassKey(QWidget& widget, const QKeyEvent& event) {
  WidgetView* view = ViewOf(widget.window());
  if (!view) return true;
  const QPointer<QWidget> alive = &widget;
  const bool passed = static_cast<toolkit::Form&>(view->GetControl()).UserKey(StrokeOf(event));
  return passed && alive;
}

// A control on a hidden tab may have the model's focus but not the native one: its keys come to the
// window. Returns its widget then.
QWidget* QtApplication::BehindTab(const QWidget& widget) const {
  const WidgetView* window = widget.isWindow() ? ViewOf(&widget) : nullptr;
  if (!window) return nullptr;
  const auto focus = static_cast<toolkit::Form&>(window->GetControl()).ActiveControl();
  if (!focus || !focus->Reachable() || !toolkit::OnHiddenTab(*focus)) return nullptr;
  const auto* view = static_cast<const WidgetView*>(focus->GetView());
  return view ? view->FocusWidget() : nullptr;
}

// --- focus ---------------------------------------------------------------------------------------

void QtApplication::SyncFocus(toolkit::Form& form) {
  auto* window = static_cast<WidgetView*>(form.GetView());
  if (!window || !window->Widget()) return;
  const auto& focus = form.ActiveControl();
  auto* view = focus ? static_cast<WidgetView*>(focus->GetView()) : nullptr;
  QWidget* target = view ? view->FocusWidget() : nullptr;
  if (target && (!target->isEnabled() || !target->isVisibleTo(window->Widget()))) target = nullptr;
  QWidget* present = window->Widget()->focusWidget();
  if (present == target) return;
  ++own_focus_;
  if (target) {
    target->setFocus(Qt::OtherFocusReason);
    static_cast<WindowView*>(window)->BringIntoSight(*view);
  } else if (present) {
    present->clearFocus();
  }
  --own_focus_;
}

// The native focus went to a widget. Unless the program moved it there, the model is asked: soon, since
// its check may open a window, and whoever moved the focus (a screen reader) waits for an answer.
void QtApplication::FollowFocus(QWidget* now) {
  WidgetView* view = now && own_focus_ == 0 ? NearestView(now) : nullptr;
  if (!view) return;
  toolkit::Control& control = view->GetControl();
  toolkit::Form* form = toolkit::FormOf(control);
  if (!form || control.HasFocus()) return;
  const bool from_window =
      focus_reason_ == Qt::ActiveWindowFocusReason || focus_reason_ == Qt::PopupFocusReason;
  const std::weak_ptr<toolkit::Control> wanted =
      from_window ? std::shared_ptr<toolkit::Control>() : control.shared_from_this();
  const std::weak_ptr<toolkit::Control> later = form->shared_from_this();
  QMetaObject::invokeMethod(
      this,
      [this, wanted, later] {
        Guard([&] {
          if (const auto asked = wanted.lock()) asked->UserFocus();
          // Where the model did not follow, the native focus goes back.
          if (const auto window = later.lock()) SyncFocus(static_cast<toolkit::Form&>(*window));
        });
      },
      Qt::QueuedConnection);
}

// --- loops ---------------------------------------------------------------------------------------

void QtApplication::RunUntil(const std::function<bool()>& done) {
  const Busy outer = std::exchange(busy_, {});
  if (outer.shown) restoreOverrideCursor();
  ++loops_run_;
  QEventLoop loop;
  loops_.push_back(&loop);
  while (!done()) {
    loop.exec();
    // An application that is being quit lets no loop run: its events are run here.
    if (!done()) loop.processEvents(QEventLoop::WaitForMoreEvents);
  }
  loops_.pop_back();
  ++loops_run_;
  busy_ = outer;
  busy_.shown = false;
  busy_.since = std::chrono::steady_clock::now();
  if (loops_.empty()) HandBack();
}

void QtApplication::WakeLoops() {
  for (QEventLoop* loop : loops_) loop->quit();
}

void QtApplication::ReactivateTop() {
  WindowView* top = TopWindow();
  if (!top || !top->Widget() || !top->Widget()->isVisible()) return;
  const QPointer<QWidget> window = top->Widget();
  window->activateWindow();
  QElapsedTimer timer;
  timer.start();
  while (window && !window->isActiveWindow() && timer.elapsed() < kActivationWait) {
    processEvents(QEventLoop::ExcludeUserInputEvents, 5);
    if (window && !window->isActiveWindow()) QThread::msleep(1);
  }
  if (WidgetView* view = ViewOf(window)) SyncFocus(static_cast<toolkit::Form&>(view->GetControl()));
}

// --- busy pointer, failures ----------------------------------------------------------------------

void QtApplication::Tick() {
  if (busy_.depth == 0 || busy_.shown || std::chrono::steady_clock::now() - busy_.since < kBusyAfter) return;
  busy_.shown = true;
  setOverrideCursor(Qt::WaitCursor);
}

void QtApplication::EndBusy() {
  if (std::exchange(busy_.shown, false)) restoreOverrideCursor();
}

void QtApplication::Guard(const std::function<void()>& work) {
  ++busy_.guards;
  try {
    work();
  } catch (...) {
    ReportFailure(std::current_exception());
  }
  --busy_.guards;
}

// Each leaves the next loop of the host's that runs, as an event of its own.
void QtApplication::HandBack() {
  for (std::size_t i = 0; i < held_.size(); ++i) {
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (held_.empty()) return;
          const std::exception_ptr failure = held_.front();
          held_.pop_front();
          std::rethrow_exception(failure);
        },
        Qt::QueuedConnection);
  }
}

// Not at once: this may run in the middle of the painting. A window that went meanwhile hears nothing.
void QtApplication::ReportFailure(std::exception_ptr failure) {
  WindowView* top = TopWindow();
  if (!top) return;
  const std::weak_ptr<toolkit::Control> window = top->GetControl().weak_from_this();
  QMetaObject::invokeMethod(
      this,
      [window, failure] {
        const auto form = window.lock();
        if (form) static_cast<toolkit::Form&>(*form).Deliver([&] { std::rethrow_exception(failure); });
      },
      Qt::QueuedConnection);
}

}  // namespace dossierkit::qt
