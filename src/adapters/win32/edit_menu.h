// EditMenu: the context menu of a text box or a masked box.
#pragma once

#include "adapters/windows/windows_headers.h"

namespace dossierkit::toolkit {
class EditBox;
}

namespace dossierkit::win32 {

// Opens the menu that the box offers, at a place of the screen, over its window. The item that is chosen is
// reported to the box. Returns when the menu is closed; whoever opened it may have ended then.
void OpenEditMenu(toolkit::EditBox& box, HWND window, const POINT& at);

}  // namespace dossierkit::win32
