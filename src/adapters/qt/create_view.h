// MakeView: the view for a control, by its kind.
#pragma once

#include <memory>

#include "adapters/qt/widget_view.h"

namespace dossierkit::qt {

// nullptr for kinds that show nothing.
std::unique_ptr<toolkit::View> MakeView(ViewContext& context, toolkit::Control& control);

}  // namespace dossierkit::qt
