#include "adapters/win32/tool_tips.h"

#include <commctrl.h>

#include "adapters/win32/window_classes.h"

namespace dossierkit::win32 {
namespace {

TTTOOLINFOW ToolOf(HWND tips, HWND window) {
  TTTOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = GetParent(tips) ? GetParent(tips) : GetWindow(tips, GW_OWNER);
  tool.uId = reinterpret_cast<UINT_PTR>(window);
  return tool;
}

}  // namespace

ToolTips::ToolTips(HWND owner, HFONT font, int most_width)
    : tips_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, L"", WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                            0, 0, 0, owner, nullptr, OwnModule(), nullptr)) {
  // A long text takes longer to read than the five seconds of Windows: as long as there can be.
  SendMessageW(tips_, TTM_SETDELAYTIME, TTDT_AUTOPOP, SHRT_MAX);
  SetLook(font, most_width);
}

void ToolTips::SetLook(HFONT font, int most_width) {
  SendMessageW(tips_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, most_width);
}

void ToolTips::Set(HWND window, const std::wstring& text) {
  const auto known = texts_.find(window);
  if (text.empty()) {
    if (known != texts_.end()) Forget(window);
    return;
  }
  if (known != texts_.end() && known->second == text) return;
  const bool added = known == texts_.end();
  std::wstring& kept = texts_[window];
  kept = text;
  TTTOOLINFOW tool = ToolOf(tips_, window);
  tool.lpszText = kept.data();
  SendMessageW(tips_, added ? TTM_ADDTOOLW : TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::Forget(HWND window) {
  if (texts_.erase(window) == 0) return;
  TTTOOLINFOW tool = ToolOf(tips_, window);
  SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace dossierkit::win32
