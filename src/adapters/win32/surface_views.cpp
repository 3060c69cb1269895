#include "adapters/win32/surface_views.h"

#include <algorithm>

#include "adapters/win32/painting.h"
#include "adapters/win32/window_view.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

constexpr double kCaptionIndent = 8;
constexpr double kCaptionPadding = 5;

}  // namespace

void FrameView::ShowText() {
  SetWindowTextW(Handle(), windows::Wide(static_cast<toolkit::Frame&>(GetControl()).Caption()).c_str());
  if (!ShowsAll()) ShowTip();
  Repaint();
}

void FrameView::ShowPlacement() {
  NativeView::ShowPlacement();
  ShowTip();
}

void FrameView::ShowStyle() {
  NativeView::ShowStyle();
  if (!ShowsAll()) ShowTip();
}

// At its left and its right.
int FrameView::BesideCaption() const {
  return static_cast<const toolkit::Frame&>(GetControl()).Border()
             ? GetMetrics().Scaled(kCaptionIndent) + GetMetrics().Scaled(kCaptionPadding)
             : 0;
}

// A caption that is cut off stands whole in the tip.
void FrameView::ShowTip() {
  const auto& frame = static_cast<const toolkit::Frame&>(GetControl());
  const std::wstring caption = windows::Wide(frame.Caption());
  RECT place;
  GetClientRect(Handle(), &place);
  const int room = WidthOf(place) - 2 * BesideCaption();
  const bool cut = GetLook().TextWidth(GetLook().FontOf(frame.GetFont()), caption) > room;
  SetTip(cut ? caption : windows::Wide(frame.ToolTipText()));
}

void FrameView::Paint(HDC device, const RECT& place) {
  NativeView::Paint(device, place);
  const auto& frame = static_cast<const toolkit::Frame&>(GetControl());
  const Palette& colors = GetLook().Colors();
  const std::wstring caption = windows::Wide(frame.Caption());
  const HFONT font = GetLook().FontOf(frame.GetFont());
  const int line = GetLook().LineHeight(font);
  const int padding = GetMetrics().Scaled(kCaptionPadding);
  const int indent = GetMetrics().Scaled(kCaptionIndent);
  RECT text = {0, 0, place.right, line * 3 / 2};
  if (frame.Border()) {
    RECT edge = place;
    if (!caption.empty()) edge.top = line / 2;
    PaintEdge(device, edge, {colors.edge, GetMetrics().Edge(), GetMetrics().Radius()});
    const int room = WidthOf(place) - 2 * BesideCaption();
    const int width = std::min(GetLook().TextWidth(font, caption) + 2, room);
    text = {indent, 0, indent + width + 2 * padding, line};
    if (!caption.empty()) Fill(device, text, Ground());
    text.left += padding;
    text.right -= padding;
  }
  // A bold caption heads the page; any other one only names what stands in the frame.
  const COLORREF ink = frame.GetFont().bold ? colors.ink : colors.heading;
  PaintLine(device, font, IsWindowEnabled(Handle()) ? ink : colors.faint_ink, text, caption);
}

void LineView::ShowPlacement() {
  NativeView::ShowPlacement();
  RECT place;
  GetClientRect(Handle(), &place);
  SetWindowPos(Handle(), nullptr, 0, 0, std::max(WidthOf(place), 1), std::max(HeightOf(place), 1),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void LineView::Paint(HDC device, const RECT& place) {
  NativeView::Paint(device, place);
  const int across = (HeightOf(place) - 1) / 2;
  const int down = (WidthOf(place) - 1) / 2;
  const RECT stroke = WidthOf(place) >= HeightOf(place) ? RECT{0, across, place.right, across + 1}
                                                        : RECT{down, 0, down + 1, place.bottom};
  Fill(device, stroke, GetLook().Colors().line);
}

PageView::PageView(ViewContext& context, toolkit::UserControl& page)
    : NativeView(context, page, NativeWindow()) {
  if (WindowView* window = Window()) window->ScrollToOrigin();
  context.application.Later(Life(), [this] { Arrive(); });
}

void PageView::Arrive() {
  arrived_ = true;
  Show(toolkit::Aspect::kPlacement);
  for (const auto& control : static_cast<const toolkit::UserControl&>(GetControl()).Controls()) {
    if (control->GetView()) control->GetView()->Settle();
  }
  Context().application.Spares().HideRest();
  // All of it is painted soon: nothing is to be erased for that at once.
  if (Handle() && Shown())
    SetWindowPos(Handle(), nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_DEFERERASE);
  Show(toolkit::Aspect::kState);
}

void PageView::ShowPlacement() {
  if (arrived_) NativeView::ShowPlacement();
}

void PageView::ShowState() {
  if (arrived_) NativeView::ShowState();
}

void CoolBarView::Paint(HDC device, const RECT& place) {
  NativeView::Paint(device, place);
  Fill(device, {place.left, place.bottom - 1, place.right, place.bottom}, GetLook().Colors().line);
}

}  // namespace dossierkit::win32
