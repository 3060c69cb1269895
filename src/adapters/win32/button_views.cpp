#include "adapters/win32/button_views.h"

#include "adapters/win32/painting.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {

CommandButtonView::CommandButtonView(ViewContext& context, toolkit::CommandButton& button)
    : NativeView(context, button, {L"BUTTON", BS_OWNERDRAW}), button_(button) {}

std::optional<LRESULT> CommandButtonView::Receive(HWND window, const Message& message) {
  switch (message.id) {
    case WM_ERASEBKGND: return 1;
    // A second click soon is a click like the first.
    case WM_LBUTTONDBLCLK: return Native(window, {WM_LBUTTONDOWN, message.wide, message.low});
    case WM_MOUSEMOVE:
      if (!hovered_) {
        hovered_ = true;
        TRACKMOUSEEVENT leave = {sizeof leave, TME_LEAVE, window, 0};
        TrackMouseEvent(&leave);
        Repaint();
      }
      break;
    case WM_MOUSELEAVE:
      hovered_ = false;
      Repaint();
      break;
    default: break;
  }
  return NativeView::Receive(window, message);
}

void CommandButtonView::Commanded(WORD code) {
  if (code == BN_CLICKED) Report([this] { button_.UserClick(); });
}

bool CommandButtonView::Draw(const DRAWITEMSTRUCT& item) {
  const Palette& colors = GetLook().Colors();
  const Metrics& metrics = GetMetrics();
  const bool enabled = !(item.itemState & ODS_DISABLED);
  const bool ring = enabled && (item.itemState & ODS_FOCUS);
  const bool leads = enabled && button_.Default();
  const COLORREF fill = (item.itemState & ODS_SELECTED) ? colors.selection
                        : enabled && hovered_           ? colors.hover
                        : enabled                       ? colors.button
                                                        : colors.surface;
  Fill(item.hDC, item.rcItem, colors.surface);
  PaintBox(item.hDC, item.rcItem, fill,
           {ring || leads ? colors.accent
            : enabled     ? colors.edge
                          : colors.line,
            ring ? metrics.Ring() : metrics.Edge(), metrics.Radius()});
  const Selected font(item.hDC, GetLook().FontOf(button_.GetFont()));
  SetTextColor(item.hDC, enabled ? colors.ink : colors.faint_ink);
  SetBkMode(item.hDC, TRANSPARENT);
  RECT place = Inset(item.rcItem, metrics.Ring());
  const std::wstring caption = windows::Wide(button_.Caption());
  DrawTextW(item.hDC, caption.data(), static_cast<int>(caption.size()), &place,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
  return true;
}

void CommandButtonView::ShowText() {
  SetWindowTextW(Handle(), windows::Wide(button_.Caption()).c_str());
  Repaint();
}

CheckBoxView::CheckBoxView(ViewContext& context, toolkit::CheckBox& box)
    : NativeView(context, box, {L"BUTTON", BS_CHECKBOX}),
      box_(box),
      ground_(CreateSolidBrush(GetLook().Colors().surface)) {
  // Where the keyboard is shows always.
  SendMessageW(Handle(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
}

CheckBoxView::~CheckBoxView() { DeleteObject(ground_); }

void CheckBoxView::Commanded(WORD code) {
  if (code == BN_CLICKED) Report([this] { box_.UserToggle(); });
}

HBRUSH CheckBoxView::Colours(HDC device) {
  SetTextColor(device, GetLook().Colors().ink);
  SetBkColor(device, GetLook().Colors().surface);
  return ground_;
}

void CheckBoxView::ShowText() {
  const std::wstring caption = windows::Wide(box_.Caption());
  SetWindowTextW(Handle(), caption.c_str());
  SendMessageW(Handle(), BM_SETCHECK, box_.Value() != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
}

}  // namespace dossierkit::win32
