#include "adapters/win32/toolbar_view.h"

#include <windowsx.h>

#include <algorithm>

#include "adapters/win32/accessible.h"
#include "adapters/win32/painting.h"
#include "adapters/win32/pictures.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

constexpr int kIconSize = 16;
constexpr int kLargeIconSize = 24;
constexpr int kTallBar = 44;  // from here on the icon stands over the text
constexpr int kButtonPadding = 20;
constexpr int kButtonGap = 2;
constexpr int kIconGap = 4;
constexpr int kSeparatorWidth = 13;

}  // namespace

ToolbarView::ToolbarView(ViewContext& context, toolkit::Toolbar& bar)
    : NativeView(context, bar, NativeWindow()), bar_(bar) {
  Build();
}

ToolbarView::~ToolbarView() {
  for (const Button& button : buttons_) {
    if (button.window) Context().application.Unlink(button.window);
  }
}

void ToolbarView::Lost() {
  NativeView::Lost();
  for (Button& button : buttons_) button.window = nullptr;
}

void ToolbarView::Build() {
  for (const toolkit::ToolbarButton& model : bar_.Buttons()) {
    Button button;
    if (!model.IsSeparator()) {
      button.window = CreateWindowExW(0, kPaneClass, windows::Wide(model.AccessibleName()).c_str(),
                                      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, Handle(), nullptr,
                                      OwnModule(), nullptr);
      if (button.window) Context().application.Link(button.window, *this);
      button.icon = ToolbarIcon(model.ImageIndex());
      button.pale_icon = Paled(button.icon);
    }
    buttons_.push_back(std::move(button));
  }
}

bool ToolbarView::Tall() const {
  RECT place = {};
  GetClientRect(Handle(), &place);
  return HeightOf(place) >= GetMetrics().Scaled(kTallBar);
}

void ToolbarView::Arrange() {
  const Metrics& metrics = GetMetrics();
  const HFONT font = GetLook().FontOf(bar_.GetFont());
  RECT place = {};
  GetClientRect(Handle(), &place);
  int left = 0;
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    Button& button = buttons_[i];
    if (!button.window) {
      const int width = metrics.Scaled(kSeparatorWidth);
      button.left = left + width / 2;
      left += width;
      continue;
    }
    // With the mark of its mnemonic, as the views in Qt measure it: the buttons stand in the same places.
    const std::wstring caption = windows::Wide(bar_.Buttons()[i].Caption());
    int width = GetLook().TextWidth(font, caption) + metrics.Scaled(kButtonPadding);
    if (!Tall() && !button.icon.Empty()) width += metrics.Scaled(kIconSize);
    SetWindowPos(button.window, nullptr, left, 0, width, HeightOf(place), SWP_NOZORDER | SWP_NOACTIVATE);
    left += width + metrics.Scaled(kButtonGap);
  }
}

int ToolbarView::FindButton(HWND window) const {
  const auto found = std::find_if(buttons_.begin(), buttons_.end(),
                                  [window](const Button& button) { return button.window == window; });
  return found == buttons_.end() || !window ? -1 : static_cast<int>(found - buttons_.begin());
}

void ToolbarView::ShowPlacement() {
  NativeView::ShowPlacement();
  Arrange();
}

void ToolbarView::ShowStyle() {
  NativeView::ShowStyle();
  Arrange();
}

void ToolbarView::ShowContent() {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const HWND window = buttons_[i].window;
    if (!window || (IsWindowEnabled(window) != FALSE) == bar_.Buttons()[i].Enabled()) continue;
    EnableWindow(window, bar_.Buttons()[i].Enabled());
    InvalidateRect(window, nullptr, FALSE);
  }
}

void ToolbarView::Paint(HDC device, const RECT& place) {
  Fill(device, place, GetLook().Colors().bar);
  const int inset = HeightOf(place) / 6;
  for (const Button& button : buttons_) {
    if (!button.window)
      Fill(device, {button.left, inset, button.left + 1, place.bottom - inset}, GetLook().Colors().edge);
  }
}

void ToolbarView::PaintButton(const Button& button, std::size_t index) const {
  const Canvas canvas(button.window, GetLook());
  const Palette& colors = GetLook().Colors();
  const Metrics& metrics = GetMetrics();
  const HDC device = canvas.Get();
  const RECT& area = canvas.Area();
  const bool enabled = IsWindowEnabled(button.window) && IsWindowEnabled(Handle());
  const bool pressed = enabled && pressed_ == button.window && hovered_ == button.window;
  Fill(device, area, colors.bar);
  if (enabled && hovered_ == button.window) {
    PaintBox(device, Inset(area, 1), pressed ? colors.selection : colors.hover,
             {colors.edge, metrics.Edge(), metrics.Radius()});
  }
  const HFONT font = GetLook().FontOf(bar_.GetFont());
  const int line = GetLook().LineHeight(font);
  const bool tall = Tall();
  RECT text = area;
  if (!button.icon.Empty()) {
    const int side = metrics.Scaled(tall ? kLargeIconSize : kIconSize);
    const int gap = metrics.Scaled(kIconGap);
    const int both = side + gap + line;
    const int left = tall ? (WidthOf(area) - side) / 2 : metrics.Scaled(kButtonPadding) / 4;
    const int top = tall ? (HeightOf(area) - both) / 2 : (HeightOf(area) - side) / 2;
    PaintOver(device, {left, top, left + side, top + side}, enabled ? button.icon : button.pale_icon);
    if (tall) {
      text.top = top + side + gap;
      text.bottom = text.top + line;
    } else {
      text.left = left + side;
    }
  }
  const Selected selected(device, font);
  SetTextColor(device, enabled ? colors.ink : colors.faint_ink);
  SetBkMode(device, TRANSPARENT);
  const std::wstring caption = windows::Wide(bar_.Buttons()[index].Caption());
  DrawTextW(device, caption.data(), static_cast<int>(caption.size()), &text,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void ToolbarView::Hover(HWND window) {
  if (hovered_ == window) return;
  if (hovered_) InvalidateRect(hovered_, nullptr, FALSE);
  hovered_ = window;
  if (!window) return;
  InvalidateRect(window, nullptr, FALSE);
  TRACKMOUSEEVENT leave = {sizeof leave, TME_LEAVE, window, 0};
  TrackMouseEvent(&leave);
}

void ToolbarView::Release(HWND window, POINT at) {
  const bool clicked = pressed_ == window;
  pressed_ = nullptr;
  if (GetCapture() == window) ReleaseCapture();
  InvalidateRect(window, nullptr, FALSE);
  RECT place = {};
  GetClientRect(window, &place);
  const int index = FindButton(window);
  if (clicked && index >= 0 && PtInRect(&place, at))
    Report([this, index] { bar_.UserClick(static_cast<std::size_t>(index)); });
}

std::optional<LRESULT> ToolbarView::Receive(HWND window, const Message& message) {
  const int index = FindButton(window);
  if (index < 0) return NativeView::Receive(window, message);
  const POINT at = {GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)};
  switch (message.id) {
    case WM_GETOBJECT:
      if (static_cast<LONG>(message.low) == OBJID_CLIENT) {
        if (const LRESULT answer = AccessiblePart(
                window, message,
                windows::Wide(bar_.Buttons()[static_cast<std::size_t>(index)].AccessibleName()), true))
          return answer;
      }
      return std::nullopt;
    case WM_ERASEBKGND: return 1;
    case WM_PAINT:
      PaintButton(buttons_[static_cast<std::size_t>(index)], static_cast<std::size_t>(index));
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      pressed_ = hovered_ = window;
      SetCapture(window);
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case WM_LBUTTONUP: Release(window, at); return 0;
    case WM_CAPTURECHANGED:
      pressed_ = nullptr;
      InvalidateRect(window, nullptr, FALSE);
      return 0;
    case WM_MOUSEMOVE: {
      RECT place = {};
      GetClientRect(window, &place);
      Hover(PtInRect(&place, at) ? window : nullptr);
      return 0;
    }
    case WM_MOUSELEAVE: Hover(nullptr); return 0;
    default: return std::nullopt;
  }
}

}  // namespace dossierkit::win32
