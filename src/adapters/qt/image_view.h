// ImageView: a picture stretched to its place.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::qt {

class ImageView : public WidgetView {
 public:
  ImageView(ViewContext& context, toolkit::Image& image);

 protected:
  void ShowContent() override;
  void ShowStyle() override;

 private:
  toolkit::Image& image_;
};

}  // namespace dossierkit::qt
