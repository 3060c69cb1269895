// QtApplication: the component's part in the program's QApplication, whoever made that.
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "adapters/qt/focus_sync.h"
#include "adapters/qt/input_filter.h"
#include "adapters/qt/looks.h"
#include "adapters/qt/loops.h"
#include "adapters/qt/widget_view.h"

class QWindow;

namespace dossierkit::qt {

// One for each platform. It knows which widgets and windows are the component's, sees the program's events
// as a filter, and acts on those of these widgets alone; what the rest of the program does stays as it is.
class QtApplication : public QObject {
 public:
  explicit QtApplication(const Metrics& metrics);

  // --- widgets and views -----------------------------------------------------------------------
  void Link(QWidget& widget, WidgetView& view) { views_.insert(&widget, &view); }
  void Unlink(QWidget& widget) { views_.remove(&widget); }
  // The view of the widget itself; nullptr once it is gone.
  WidgetView* ViewOf(const QWidget* widget) const { return views_.value(widget, nullptr); }
  // The view of the nearest widget with one, up to the window.
  WidgetView* NearestView(const QWidget* widget) const;
  void AddWindow(WindowView& window) { windows_.push_back(&window); }
  void RemoveWindow(WindowView& window) { std::erase(windows_, &window); }
  // The window that was made last; nullptr if none is left.
  WindowView* TopWindow() const { return windows_.empty() ? nullptr : windows_.back(); }
  // The widget of the window of the component's that stands in that window of the screen; nullptr for others.
  QWidget* WidgetOf(const QWindow& native) const;
  // A top-level window that looks like the component from now on.
  void Adopt(QWidget& window) { looks_.Adopt(window); }

  // --- the host's window -----------------------------------------------------------------------
  // The window over which visits stand from now on; nullptr: whichever is active then.
  void SetHostWindow(QWidget* window) { host_window_ = window; }
  // Puts a native window over that one. For the window manager alone: no widget gets an owner.
  void PutOverHost(QWidget& window);

  // --- focus -----------------------------------------------------------------------------------
  // Gives the native focus to the control that has the model's focus.
  void SyncFocus(toolkit::Form& form) { focus_.Show(form); }
  bool MouseHeld() const { return input_.MouseHeld(); }

  // --- loops -----------------------------------------------------------------------------------
  // Runs events until `done`; asked again whenever the loops are woken.
  void RunUntil(const std::function<bool()>& done) { loops_.RunUntil(done); }
  void WakeLoops() { loops_.Wake(); }
  Loops& GetLoops() { return loops_; }
  // After a modal window or message box: makes the window below the active one again, at the end of a visit
  // the host's.
  void ReactivateTop();
  // Runs what a handler of a view does on its own; its failure ends the topmost window's loop.
  void Guard(const std::function<void()>& work);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool StopsAtWidget(QWidget& widget, QEvent& event);
  void FocusChanged(QWidget* before, QWidget* now);

  QHash<const QWidget*, WidgetView*> views_;
  std::vector<WindowView*> windows_;
  QPointer<QWidget> host_window_;
  QPointer<QWidget> below_;  // the host's window under the visit
  Looks looks_;
  Loops loops_;
  FocusSync focus_{*this};
  InputFilter input_{*this};
};

}  // namespace dossierkit::qt
