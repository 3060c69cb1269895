#include "adapters/win32/label_view.h"

#include <algorithm>

#include "adapters/win32/painting.h"
#include "adapters/win32/surroundings.h"
#include "adapters/win32/text_lines.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

constexpr double kPadding = 8;  // of a slab

}  // namespace

LabelView::LabelView(ViewContext& context, toolkit::Label& label)
    : NativeView(context, label, NativeWindow()), label_(label) {}

int LabelView::Margin() const { return IsSlab() ? GetMetrics().Scaled(kPadding) : 0; }

std::optional<LRESULT> LabelView::Receive(HWND window, const Message& message) {
  switch (message.id) {
    case WM_VSCROLL: Scroll(LOWORD(message.wide)); return 0;
    case WM_MOUSEWHEEL:
      if (!scrolls_) break;
      // A touch pad turns it by less than a line at a time.
      turned_ += 3 * static_cast<short>(HIWORD(message.wide));
      ScrollTo(first_ - turned_ / WHEEL_DELTA);
      turned_ %= WHEEL_DELTA;
      return 0;
    default: break;
  }
  return NativeView::Receive(window, message);
}

void LabelView::Arrange() {
  const HFONT font = GetLook().FontOf(label_.GetFont());
  const std::wstring text = windows::Wide(label_.Caption());
  const toolkit::Rect place = GetMetrics().GetScale().Pixels(label_.Place());
  const int width = std::max(1, place.width - 2 * Margin());
  const int height = place.height - 2 * Margin();
  bool cut = false;
  scrolls_ = false;
  if (!label_.WordWrap()) {
    lines_ = {text};
    most_ = 1;
    cut = GetLook().TextWidth(font, text) > width;
  } else {
    lines_ = LinesOf(GetLook(), text, font, width);
    most_ = std::max(1, height / std::max(1, GetLook().LineHeight(font)));
    cut = static_cast<int>(lines_.size()) > most_;
    scrolls_ = cut && label_.Opaque();
    if (scrolls_)
      lines_ = LinesOf(GetLook(), text, font,
                       std::max(1, width - SystemMeasure(SM_CXVSCROLL, GetMetrics().Dpi())));
  }
  if (HasScrollBar(Handle()) != scrolls_) ShowScrollBar(Handle(), SB_VERT, scrolls_);
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE;
  info.nMax = std::max(0, static_cast<int>(lines_.size()) - 1);
  info.nPage = static_cast<UINT>(most_);
  if (scrolls_) SetScrollInfo(Handle(), SB_VERT, &info, TRUE);
  ScrollTo(first_);
  SetTip(cut ? text : windows::Wide(label_.ToolTipText()));
}

void LabelView::ScrollTo(int line) {
  first_ = std::clamp(line, 0, scrolls_ ? std::max(0, static_cast<int>(lines_.size()) - most_) : 0);
  if (scrolls_) SetScrollPos(Handle(), SB_VERT, first_, TRUE);
  Repaint();
}

void LabelView::Scroll(int code) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  switch (code) {
    case SB_LINEUP: ScrollTo(first_ - 1); break;
    case SB_LINEDOWN: ScrollTo(first_ + 1); break;
    case SB_PAGEUP: ScrollTo(first_ - most_); break;
    case SB_PAGEDOWN: ScrollTo(first_ + most_); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      if (GetScrollInfo(Handle(), SB_VERT, &info)) ScrollTo(info.nTrackPos);
      break;
    default: break;
  }
}

void LabelView::ShowPlacement() {
  NativeView::ShowPlacement();
  Arrange();
}

void LabelView::ShowStyle() {
  NativeView::ShowStyle();
  if (!ShowsAll()) Arrange();
}

void LabelView::ShowText() {
  SetWindowTextW(Handle(), windows::Wide(label_.Caption()).c_str());
  first_ = 0;
  if (!ShowsAll()) Arrange();
}

void LabelView::Paint(HDC device, const RECT& place) {
  const Palette& colors = GetLook().Colors();
  const HFONT font = GetLook().FontOf(label_.GetFont());
  const int spacing = GetLook().LineHeight(font);
  const int shown = std::min(most_, static_cast<int>(lines_.size()) - first_);
  const COLORREF ground = GetLook().ColorOf(label_.BackColor());
  NativeView::Paint(device, place);
  if (label_.Opaque() && !IsSlab()) Fill(device, place, ground);
  if (IsSlab() && !label_.Caption().empty()) {
    RECT slab = place;
    slab.bottom = std::min(place.bottom, static_cast<LONG>(shown * spacing + 2 * Margin()));
    PaintBox(device, slab, ground, {ground, GetMetrics().Edge(), GetMetrics().Radius()});
  }
  // A plain caption recedes behind the bold ones, which announce what is required. A help text stays readable
  // while its page is disabled.
  const bool plain = label_.ForeColor() == toolkit::kButtonText && !label_.FontBold();
  const COLORREF own = GetLook().InkOn(label_.Opaque() ? ground : Ground(),
                                       plain ? colors.soft_ink : GetLook().ColorOf(label_.ForeColor()));
  const COLORREF ink = IsWindowEnabled(Handle()) || label_.Opaque() ? own : colors.faint_ink;
  const RECT room = Inset(place, Margin());
  // A single line stands in the middle, beside the first line of its box.
  const bool middle = !label_.WordWrap() || HeightOf(room) < 2 * spacing;
  int top = static_cast<int>(room.top) + (middle ? (HeightOf(room) - shown * spacing) / 2 : 0);
  for (int i = 0; i < shown; ++i, top += spacing) {
    std::wstring line = lines_[static_cast<std::size_t>(first_ + i)];
    // More of it follows.
    if (i == shown - 1 && first_ + shown < static_cast<int>(lines_.size()))
      line = Ended(GetLook(), std::move(line), font, WidthOf(room));
    PaintLine(device, font, ink, {room.left, top, room.right, top + spacing}, line,
              label_.AlignCenter() ? DT_CENTER : DT_LEFT);
  }
}

}  // namespace dossierkit::win32
