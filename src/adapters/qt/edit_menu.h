// EditMenu: the context menu of a text box or a masked box.
#pragma once

#include "adapters/qt/widget_view.h"

class QContextMenuEvent;

namespace dossierkit::toolkit {
class EditBox;
}

namespace dossierkit::qt {

// Opens the menu that the box offers, at the pointer, or below the box where a key asked for it. The item
// that is chosen is reported to the box. The menu ends with `life`.
void OpenEditMenu(ViewContext& context, toolkit::EditBox& box, QWidget& widget, QObject& life,
                  const QContextMenuEvent& asked);

}  // namespace dossierkit::qt
