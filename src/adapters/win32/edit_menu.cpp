#include "adapters/win32/edit_menu.h"

#include <memory>
#include <vector>

#include "adapters/windows/texts.h"
#include "platform/toolkit/controls/edit_box.h"

namespace dossierkit::win32 {

void OpenEditMenu(toolkit::EditBox& box, HWND window, const POINT& at) {
  const auto keep = box.shared_from_this();
  const std::vector<toolkit::EditMenuItem> items = box.ContextMenu();
  if (items.empty()) return;
  const std::unique_ptr<HMENU__, decltype(&DestroyMenu)> menu(CreatePopupMenu(), DestroyMenu);
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].line_above) AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu.get(), MF_STRING | (items[i].enabled ? MF_ENABLED : MF_GRAYED), i + 1,
                windows::Wide(items[i].caption).c_str());
  }
  const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, at.x, at.y, 0,
                                    window, nullptr);
  if (chosen > 0) box.UserCommand(items[static_cast<std::size_t>(chosen) - 1].command);
}

}  // namespace dossierkit::win32
