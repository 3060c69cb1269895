// Command button and check box.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/basic_controls.h"

class QCheckBox;
class QPushButton;

namespace dossierkit::qt {

class CommandButtonView : public WidgetView {
 public:
  CommandButtonView(ViewContext& context, toolkit::CommandButton& button);

 protected:
  void ShowStyle() override;
  void ShowText() override;

 private:
  toolkit::CommandButton& button_;
  QPushButton* native_;
};

class CheckBoxView : public WidgetView {
 public:
  CheckBoxView(ViewContext& context, toolkit::CheckBox& box);

 protected:
  void ShowText() override;

 private:
  toolkit::CheckBox& box_;
  QCheckBox* native_;
};

}  // namespace dossierkit::qt
