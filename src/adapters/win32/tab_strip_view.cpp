#include "adapters/win32/tab_strip_view.h"

#include <commctrl.h>
#include <windowsx.h>

#include "adapters/win32/accessible.h"
#include "adapters/win32/painting.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

constexpr int kTabPadding = 12;
constexpr int kTabHeight = 12;  // besides the text

}  // namespace

TabStripView::TabStripView(ViewContext& context, toolkit::TabStrip& strip)
    : NativeView(context, strip, NativeWindow()), strip_(strip) {
  tabs_ =
      CreateWindowExW(0, L"SysTabControl32", L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TCS_FOCUSNEVER, 0,
                      0, 0, 0, Handle(), nullptr, OwnModule(), nullptr);
  if (tabs_) context.application.Link(tabs_, *this);
}

TabStripView::~TabStripView() {
  if (tabs_) Context().application.Unlink(tabs_);
}

void TabStripView::Lost() {
  NativeView::Lost();
  tabs_ = nullptr;
}

int TabStripView::Height() const {
  return GetLook().LineHeight(GetLook().FontOf(strip_.GetFont())) + GetMetrics().Scaled(kTabHeight);
}

void TabStripView::Arrange() {
  RECT place = {};
  GetClientRect(Handle(), &place);
  Ask(TCM_SETITEMSIZE, 0, MAKELPARAM(0, Height() - 2));
  // Below what is made later: the controls on the tabs.
  SetWindowPos(tabs_, HWND_BOTTOM, 0, 0, WidthOf(place), Height(), SWP_NOACTIVATE);
}

void TabStripView::ShowPlacement() {
  NativeView::ShowPlacement();
  Arrange();
}

// Windows keeps the width of a tab until its text is set.
void TabStripView::Rescale(const Look& look) {
  NativeView::Rescale(look);
  ShowContent();
}

void TabStripView::ShowStyle() {
  Ask(WM_SETFONT, reinterpret_cast<WPARAM>(GetLook().FontOf(strip_.GetFont())), FALSE);
  Ask(TCM_SETPADDING, 0, MAKELPARAM(GetMetrics().Scaled(kTabPadding), 3));
  Arrange();
  NativeView::ShowStyle();
}

void TabStripView::ShowContent() {
  const auto showing = Showing();
  for (int tab = 0; tab < strip_.TabCount(); ++tab) {
    std::wstring caption = windows::Wide(strip_.TabCaption(tab));
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    const bool there = tab < static_cast<int>(Ask(TCM_GETITEMCOUNT));
    Ask(there ? TCM_SETITEMW : TCM_INSERTITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
  }
  Arrange();
  ShowSelection();
}

void TabStripView::ShowSelection() {
  const auto showing = Showing();
  Ask(TCM_SETCURSEL, static_cast<WPARAM>(strip_.Tab()));
  InvalidateRect(tabs_, nullptr, TRUE);
}

// A choice from outside, by accessibility: the model shows which tab is in front after all.
std::optional<LRESULT> TabStripView::Notified(NMHDR& notice) {
  if (notice.code == static_cast<UINT>(TCN_SELCHANGE) && !IsShowing()) {
    const int tab = static_cast<int>(Ask(TCM_GETCURSEL));
    Report([this, tab] { strip_.UserSelectTab(tab); });
  }
  return std::nullopt;
}

void TabStripView::Paint(HDC device, const RECT& place) {
  NativeView::Paint(device, place);
  RECT panel = place;
  panel.top = Height() - 1;  // which the tabs paint
  PaintEdge(device, panel, {GetLook().Colors().edge, 1, 0});
}

void TabStripView::PaintTabs() const {
  const Canvas canvas(tabs_, GetLook());
  const HDC device = canvas.Get();
  const Palette& colors = GetLook().Colors();
  const Metrics& metrics = GetMetrics();
  const bool enabled = IsWindowEnabled(Handle());
  const LONG end = canvas.Area().bottom;
  Fill(device, canvas.Area(), colors.surface);
  Fill(device, {0, end - 1, canvas.Area().right, end}, colors.edge);
  for (int tab = 0; tab < strip_.TabCount(); ++tab) {
    RECT place = {};
    if (!Ask(TCM_GETITEMRECT, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&place))) continue;
    const bool front = tab == strip_.Tab();
    place.top = front ? 0 : metrics.Ring();
    place.bottom = end;
    PaintBox(device, {place.left, place.top, place.right, end + metrics.Radius()},
             front ? colors.surface : colors.bar, {colors.edge, 1, metrics.Radius()});
    // The one in front goes over into the panel.
    if (front) {
      Fill(device, {place.left + 1, place.top, place.right - 1, place.top + metrics.Ring()}, colors.accent);
    } else {
      Fill(device, {place.left, end - 1, place.right, end}, colors.edge);
    }
    if (front && GetFocus() == tabs_)
      PaintEdge(device, Inset(place, metrics.Ring() + metrics.Edge()),
                {colors.accent, metrics.Ring(), metrics.Radius()});
    // Mnemonics are the model's.
    PaintLine(device, GetLook().FontOf(strip_.GetFont()), enabled ? colors.ink : colors.faint_ink, place,
              windows::Wide(strip_.TabCaption(tab)), DT_CENTER);
  }
}

std::optional<LRESULT> TabStripView::Receive(HWND window, const Message& message) {
  if (window != tabs_) return NativeView::Receive(window, message);
  switch (message.id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
      TCHITTESTINFO hit = {{GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)}, 0};
      const int tab = static_cast<int>(Ask(TCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
      if (tab >= 0) Report([this, tab] { strip_.UserSelectTab(tab); });
      return 0;
    }
    case WM_GETOBJECT:
      if (static_cast<LONG>(message.low) == OBJID_CLIENT) {
        if (const LRESULT answer =
                AccessiblePart(window, message, windows::Wide(strip_.AccessibleName()), false))
          return answer;
      }
      return std::nullopt;
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: PaintTabs(); return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: InvalidateRect(tabs_, nullptr, TRUE); return std::nullopt;
    // The model turns by keys.
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_CONTEXTMENU:
    case WM_KEYDOWN:
    case WM_CHAR: return 0;
    default: return std::nullopt;
  }
}

}  // namespace dossierkit::win32
