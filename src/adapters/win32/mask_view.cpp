#include "adapters/win32/mask_view.h"

#include "adapters/windows/texts.h"

namespace dossierkit::win32 {

MaskView::MaskView(ViewContext& context, toolkit::MaskEdBox& box)
    : EditView(context, box, false), box_(box) {}

std::optional<LRESULT> MaskView::Receive(HWND window, const Message& message) {
  switch (message.id) {
    case WM_CHAR: return 0;
    case WM_KEYDOWN:
      // Those that only move the caret are the native window's.
      if (message.wide != VK_LEFT && message.wide != VK_RIGHT && message.wide != VK_HOME &&
          message.wide != VK_END)
        return 0;
      break;
    case WM_SETFOCUS:
      gaining_focus_ = true;
      Context().application.Later(Life(), [this] { gaining_focus_ = false; });
      break;
    case WM_LBUTTONDOWN:
      // The click that gives the focus leaves the caret where the model put it, so that typing starts at
      // the first position of the mask.
      if (gaining_focus_) return 0;
      break;
    default: break;
  }
  return EditView::Receive(window, message);
}

void MaskView::Enter(const std::wstring& text) {
  Report([&] { box_.UserType(windows::Utf8(text)); });
}

void MaskView::NativeChanged() {
  const std::u16string now = NativeText();
  if (now != shown_.Shown()) {
    const std::wstring text(now.begin(), now.end());
    Report([&] { box_.UserReplaceAll(windows::Utf8(text)); });
    return;
  }
  const toolkit::Selection selected = NativeSelection();
  if (selected == shown_.ShownSelection(box_.GetSelection())) return;
  const auto chosen = shown_.ModelSelection(selected.start, selected.length);
  Report([&] { box_.UserSelect(chosen.start, chosen.length); });
}

void MaskView::ShowText() {
  shown_ = toolkit::ShownText(box_.Text(), false);
  if (NativeText() != shown_.Shown()) SetNativeText(shown_.Shown());
  ShowSelection();
}

void MaskView::ShowSelection() {
  const auto selected = shown_.ShownSelection(box_.GetSelection());
  if (NativeSelection() != selected) SetNativeSelection(selected);
}

}  // namespace dossierkit::win32
