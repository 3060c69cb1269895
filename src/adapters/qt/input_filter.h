// InputFilter: asks the model about each press and each key before a widget acts on it.
#pragma once

#include <QPointer>
#include <QWidget>

class QEvent;
class QKeyEvent;
class QMouseEvent;
class QWindow;

namespace dossierkit::qt {

class QtApplication;

// A press comes to the window of the screen first, and only from there to the widget under it, which Qt gives
// the focus before any filter sees that. So it is caught at the window: the model moves its focus, and where
// that is refused no widget ever hears of the press. A key is caught at the widget that has the keyboard,
// since input methods hand keys to it directly.
class InputFilter {
 public:
  explicit InputFilter(QtApplication& application) : application_(application) {}

  // Whether the event must go no further.
  bool Stops(QWindow& native, QEvent& event);
  bool Stops(QWidget& widget, QEvent& event);

  // Between a press that goes on and its release nothing may move below the pointer: the release would miss
  // what was pressed.
  bool MouseHeld() const { return held_; }

 private:
  bool StopsPress(QWindow& native, QWidget& window, QMouseEvent& event);
  bool StopsRelease(QWidget& window, const QMouseEvent& event);
  bool StopsMove(QWidget& window, const QMouseEvent& event);
  bool StopsKey(QWidget& widget, QKeyEvent& event);
  void EndHold(QWidget& window);
  QWidget& Receiver(QWidget& window, const QMouseEvent& event) const;
  bool PassPress(QWidget& widget, const QMouseEvent& event) const;
  void ReportMove(QWidget& widget, const QMouseEvent& event) const;
  bool PassKey(QWidget& widget, const QKeyEvent& event) const;
  QWidget* BehindTab(const QWidget& widget) const;

  QtApplication& application_;
  QPointer<QWidget> pressed_;  // gets the moves until no button is down
  Qt::MouseButton swallowed_ = Qt::NoButton;
  bool held_ = false;
  bool sending_ = false;  // an event that was seen here already is sent on
};

}  // namespace dossierkit::qt
