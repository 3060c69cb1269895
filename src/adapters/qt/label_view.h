// LabelView: a text that the user cannot edit.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::qt {

class ElidedLabel;

class LabelView : public WidgetView {
 public:
  LabelView(ViewContext& context, toolkit::Label& label);

 protected:
  void ShowStyle() override;
  void ShowText() override;

 private:
  toolkit::Label& label_;
  ElidedLabel* native_;
};

}  // namespace dossierkit::qt
