// ToolbarView: a row of buttons that take no focus.
#pragma once

#include <vector>

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/toolbar.h"

class QToolButton;

namespace dossierkit::qt {

class ToolbarView : public WidgetView {
 public:
  ToolbarView(ViewContext& context, toolkit::Toolbar& bar);

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowContent() override;

 private:
  void Build();
  void Arrange();

  toolkit::Toolbar& bar_;
  std::vector<QToolButton*> buttons_;  // nullptr for a separator
  std::vector<QWidget*> separators_;
};

}  // namespace dossierkit::qt
