// The view of a control, by its kind.
#pragma once

#include <memory>

#include "platform/toolkit/controls/view.h"

namespace dossierkit::toolkit {
class Control;
}

namespace dossierkit::win32 {

struct ViewContext;

// Shows everything; nullptr for kinds that show nothing.
std::unique_ptr<toolkit::View> MakeView(ViewContext& context, toolkit::Control& control);

}  // namespace dossierkit::win32
