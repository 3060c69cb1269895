// WindowView: a modal window. What has no room on a smaller screen scrolls: all of it, or the one pane that
// its form names.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/loop/window_layout.h"
#include "platform/toolkit/loop/window_place.h"

class QScrollArea;

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::qt {

class WindowView : public WidgetView {
 public:
  WindowView(ViewContext& context, toolkit::Form& form);
  ~WindowView() override;

  // The scrolling part, or the window itself for what always stays in sight.
  QWidget* ContentFor(const toolkit::Control& child) const override;
  QWidget* FocusWidget() const override { return nullptr; }
  // Where a control of this window shows: bar and side reach the window's edges.
  QRect ShownPlace(const toolkit::Control& control) const;

  // Shows the window, at first where its form wants it, and makes it the active one.
  void Present();
  void Withdraw();
  // Scrolls to a control and its label; to `part` of its widget where that is given.
  void BringIntoSight(const WidgetView& view, const QRect& part = {});
  void BringFocusIntoSight();
  // Another page came: it shows from its upper left corner.
  void ScrollToOrigin();

  // The native window was closed by the user, or changed its size.
  void Closed();
  void Resized();
  // The window has its frame now: where that leaves the screen it is placed once more.
  void Framed();

 protected:
  void ShowPlacement() override;
  void ShowState() override {}
  void ShowText() override;

 private:
  toolkit::Form& GetForm() const;
  toolkit::Surroundings Around() const;
  void Place(const toolkit::Rect& client);
  void Arrange();

  QScrollArea* area_ = nullptr;
  QWidget* content_ = nullptr;
  toolkit::WindowLayout layout_;
  toolkit::WindowPlace place_;
  bool presented_ = false;
};

}  // namespace dossierkit::qt
