// WidgetView: a view with a native widget behind it.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <string>

#include "adapters/qt/look.h"
#include "platform/environment/during.h"
#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/controls/view.h"

namespace dossierkit::qt {

class QtApplication;
class WindowView;

// What all views of one platform share.
struct ViewContext {
  QtApplication& application;
  Metrics metrics;
};

// Owns its widget. At its end the widget is hidden and unlinked at once and deleted later, since
// that end may come inside one of the widget's own events.
class WidgetView : public toolkit::View {
 public:
  ~WidgetView() override;

  void Show(toolkit::Aspect aspect) override;
  // Everything, after creation.
  void ShowAll();

  toolkit::Control& GetControl() const { return control_; }
  QWidget* Widget() const { return widget_; }
  const Metrics& GetMetrics() const { return context_.metrics; }
  // The parent of the widget of a control that stands in this one.
  virtual QWidget* ContentFor(const toolkit::Control& /*child*/) const { return widget_; }
  // The widget that takes the native focus for this control.
  virtual QWidget* FocusWidget() const { return widget_; }

 protected:
  WidgetView(ViewContext& context, toolkit::Control& control, QWidget* widget);

  virtual void ShowPlacement();
  virtual void ShowState();
  virtual void ShowStyle();
  virtual void ShowText() {}
  virtual void ShowContent() {}
  virtual void ShowSelection() {}

  ViewContext& Context() const { return context_; }
  // The view of the window in which the control stands; nullptr once it is gone.
  WindowView* Window() const;

  // Connections that name it as their context end with the view.
  QObject* Hub() { return hub_.get(); }
  // Expires with the view: a report may end it.
  std::weak_ptr<void> Life() const { return life_; }

  // While it lives, what the native widget says is what the view itself does, and is not reported.
  [[nodiscard]] environment::During Showing() { return environment::During(showing_); }
  bool IsShowing() const { return showing_; }

 private:
  void ShowNow(toolkit::Aspect aspect);
  // Visible, and its tab is in front.
  bool Shown() const;

  ViewContext& context_;
  toolkit::Control& control_;
  QPointer<QWidget> widget_;
  std::unique_ptr<QObject> hub_;
  std::shared_ptr<void> life_;
  bool showing_ = false;
};

// The widget into which the widget of a control goes; nullptr for a window.
QWidget* ParentWidgetOf(const toolkit::Control& control);

}  // namespace dossierkit::qt
