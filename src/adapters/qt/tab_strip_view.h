// TabStripView: a row of tabs over a panel with the controls of the one in front.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/tab_strip.h"

class QTabBar;

namespace dossierkit::qt {

class TabStripView : public WidgetView {
 public:
  TabStripView(ViewContext& context, toolkit::TabStrip& strip);

  QWidget* FocusWidget() const override;

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowContent() override;
  void ShowSelection() override;

 private:
  void Arrange();
  void TabWanted(int tab);

  toolkit::TabStrip& strip_;
  QTabBar* bar_;
};

}  // namespace dossierkit::qt
