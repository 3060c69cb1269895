// QtApplication: sees every native event first and asks the model before a widget acts on it.
#pragma once

#include <QApplication>
#include <QEventLoop>
#include <QHash>
#include <QPointer>
#include <chrono>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

#include "adapters/qt/widget_view.h"

class QKeyEvent;
class QMouseEvent;

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::qt {

class WindowView;

// One for a process. A mouse press moves the model's focus first and is swallowed where that was
// refused; keys pass the model's KeyDown and KeyPress first; the native focus follows the model's.
// What a slot, timer or event handler of the host's own throws is the host's: it leaves the host's loop as
// in any Qt program, but never one of the loops here; during a visit it waits for the visit's end.
class QtApplication : public QApplication {
 public:
  QtApplication(int& argc, char** argv);
  ~QtApplication() override;

  bool notify(QObject* receiver, QEvent* event) override;

  // --- widgets and views -----------------------------------------------------------------------
  void Link(QWidget& widget, WidgetView& view);
  void Unlink(QWidget& widget);
  // The view of the widget itself; nullptr once it is gone.
  WidgetView* ViewOf(const QWidget* widget) const;
  // The view of the nearest widget with one, up to the window.
  WidgetView* NearestView(const QWidget* widget) const;
  void AddWindow(WindowView& window) { windows_.push_back(&window); }
  void RemoveWindow(WindowView& window) { std::erase(windows_, &window); }
  // The window that was made last; nullptr if none is left.
  WindowView* TopWindow() const { return windows_.empty() ? nullptr : windows_.back(); }

  // --- focus -----------------------------------------------------------------------------------
  // Gives the native focus to the control that has the model's focus.
  void SyncFocus(toolkit::Form& form);

  // --- loops -----------------------------------------------------------------------------------
  // Runs events until `done`; asked again whenever the loops are woken.
  void RunUntil(const std::function<bool()>& done);
  void WakeLoops();
  // After a modal window or message box: makes the window below the active one again.
  void ReactivateTop();

  // --- busy pointer, failures ------------------------------------------------------------------
  // Called now and then in the course of one event: a busy pointer shows after 300 ms of it.
  void Tick();
  // Runs what a handler of a view does on its own; its failure ends the topmost window's loop.
  void Guard(const std::function<void()>& work);

 private:
  struct Busy {
    int depth = 0;   // of native events inside one another
    int guards = 0;  // handlers of views among them
    bool shown = false;
    std::chrono::steady_clock::time_point since;
  };

  bool PassPress(QWidget& widget, const QMouseEvent& event, bool& nested);
  void ReportMove(QWidget& widget, const QMouseEvent& event);
  bool PassKey(QWidget& widget, const QKeyEvent& event);
  QWidget* BehindTab(const QWidget& widget) const;
  void FollowFocus(QWidget* now);
  bool Notify(QObject* receiver, QEvent* event);
  void EndBusy();
  void ReportFailure(std::exception_ptr failure);
  void HandBack();

  QHash<const QWidget*, WidgetView*> views_;
  std::vector<WindowView*> windows_;
  std::vector<QEventLoop*> loops_;
  std::deque<std::exception_ptr> held_;  // what the host's own handlers threw during the visit
  Busy busy_;
  int loops_run_ = 0;
  int own_focus_ = 0;  // the native focus is being set by the program
  Qt::FocusReason focus_reason_ = Qt::OtherFocusReason;
  Qt::MouseButton swallowed_ = Qt::NoButton;
};

}  // namespace dossierkit::qt
