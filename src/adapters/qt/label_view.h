// LabelView: a text that the user cannot edit.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/basic_controls.h"

class QLabel;

namespace dossierkit::qt {

class LabelView : public WidgetView {
 public:
  LabelView(ViewContext& context, toolkit::Label& label);

 protected:
  void ShowStyle() override;
  void ShowText() override;

 private:
  toolkit::Label& label_;
  QLabel* native_;
};

}  // namespace dossierkit::qt
