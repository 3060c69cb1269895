#include "adapters/win32/window_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "adapters/win32/painting.h"
#include "adapters/win32/surroundings.h"
#include "adapters/windows/texts.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {
namespace {

constexpr int kTipWidth = 480;   // at most
constexpr int kSightMargin = 8;  // around what is brought into sight
constexpr int kLine = 20;        // that a turn of the wheel scrolls by, thrice

DWORD StyleOf(const toolkit::Form& form) {
  const DWORD fixed = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  return form.Sizable() ? fixed | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX : fixed;
}

HWND MakeWindow(const Application& application, const toolkit::Form& form) {
  return CreateWindowExW(WS_EX_CONTROLPARENT, kWindowClass, L"", StyleOf(form), 0, 0, 0, 0,
                         application.OwnerOfNext(), nullptr, OwnModule(), nullptr);
}

HWND MakePane(HWND parent, DWORD style) {
  return CreateWindowExW(0, kPaneClass, L"",
                         WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | style, 0, 0, 0, 0,
                         parent, nullptr, OwnModule(), nullptr);
}

toolkit::Rect FromNative(const RECT& place) {
  return {static_cast<int>(place.left), static_cast<int>(place.top),
          static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)};
}

toolkit::Size SizeOf(HWND window) {
  RECT place;
  GetClientRect(window, &place);
  return {static_cast<int>(place.right), static_cast<int>(place.bottom)};
}

// With what stands on pages.
void RescaleAll(const toolkit::Controls& controls, const Look& look) {
  for (const auto& control : controls) {
    if (auto* view = static_cast<NativeView*>(control->GetView())) view->Rescale(look);
    if (control->GetKind() == toolkit::Kind::kUserControl)
      RescaleAll(static_cast<const toolkit::UserControl&>(*control).Controls(), look);
  }
}

// Where a window stands in another.
toolkit::Rect PlaceIn(HWND outer, HWND window, const RECT* part) {
  RECT place;
  if (part) {
    place = *part;
  } else {
    GetClientRect(window, &place);
  }
  MapWindowPoints(window, outer, reinterpret_cast<POINT*>(&place), 2);
  return FromNative(place);
}

}  // namespace

WindowView::WindowView(ViewContext& context, toolkit::Form& form)
    : NativeView(context, form, MakeWindow(context.application, form)),
      tips_(Handle(), GetLook().ProgramFont(), GetMetrics().Scaled(kTipWidth)),
      layout_(form, GetMetrics().GetScale()),
      place_(form) {
  area_ = MakePane(Handle(), 0);
  content_ = MakePane(area_, 0);
  context.application.Link(area_, *this);
  context.application.Link(content_, *this);
  const toolkit::Size scrolled = layout_.ScrolledSize();
  SetWindowPos(content_, nullptr, 0, 0, scrolled.width, scrolled.height, SWP_NOZORDER | SWP_NOACTIVATE);
  context.application.AddWindow(*this);
}

WindowView::~WindowView() {
  Context().application.RemoveWindow(*this);
  others_.reset();
  Context().application.Unlink(area_);
  Context().application.Unlink(content_);
}

toolkit::Form& WindowView::GetForm() const { return static_cast<toolkit::Form&>(GetControl()); }

toolkit::Size WindowView::ClientSize() const { return SizeOf(Handle()); }

HWND WindowView::ContentFor(const toolkit::Control& child) const {
  return layout_.Scrolls(child) ? content_ : Handle();
}

toolkit::Rect WindowView::ShownPlace(const toolkit::Control& control) const {
  return layout_.ShownPlace(control, ClientSize());
}

// --- on the screen -------------------------------------------------------------------------------

toolkit::Surroundings WindowView::Around() const {
  toolkit::Surroundings around;
  const HWND owner = GetWindow(Handle(), GW_OWNER);
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner ? owner : Handle(), MONITOR_DEFAULTTOPRIMARY), &monitor);
  around.work_area = FromNative(monitor.rcWork);
  RECT below;
  if (owner && GetWindowRect(owner, &below) && Context().application.ViewOf(owner))
    around.below = FromNative(below);
  RECT frame = {0, 0, 0, 0};
  AddFrame(frame, StyleOf(GetForm()), WS_EX_CONTROLPARENT, GetMetrics().Dpi());
  around.frame = {static_cast<int>(-frame.left), static_cast<int>(-frame.top), static_cast<int>(frame.right),
                  static_cast<int>(frame.bottom)};
  around.scroll_bar = SystemMeasure(SM_CXVSCROLL, GetMetrics().Dpi());
  around.fills_screen = IsZoomed(Handle());
  return around;
}

void WindowView::Place(const toolkit::Rect& client) {
  RECT place = {client.left, client.top, client.left + client.width, client.top + client.height};
  AddFrame(place, StyleOf(GetForm()), WS_EX_CONTROLPARENT, GetMetrics().Dpi());
  SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void WindowView::Present() {
  const bool first = !std::exchange(presented_, true);
  if (first) {
    Place(place_.Open(layout_, Around()));
    Arrange();
  }
  if (!others_) others_ = std::make_unique<OthersDisabled>(Handle());
  ShowWindow(Handle(), SW_SHOW);
  SetForegroundWindow(Handle());
  Context().application.SyncFocus(GetForm());
  if (!first) return;
  ScrollToOrigin();
  BringFocusIntoSight();
}

void WindowView::Withdraw() {
  others_.reset();
  if (Handle()) ShowWindow(Handle(), SW_HIDE);
}

bool WindowView::TakesInput() const {
  return Context().application.TopWindow() == this && IsWindowVisible(Handle()) && IsWindowEnabled(Handle());
}

void WindowView::Lost() {
  NativeView::Lost();
  area_ = content_ = nullptr;
  Context().application.WakeLoops();
}

void WindowView::ShowPlacement() {
  const auto corner = place_.Moved(GetMetrics().GetScale());
  if (corner)
    SetWindowPos(Handle(), nullptr, corner->left, corner->top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void WindowView::ShowText() { SetWindowTextW(Handle(), windows::Wide(GetForm().Caption()).c_str()); }

// --- what scrolls --------------------------------------------------------------------------------

void WindowView::Arrange() {
  if (arranging_) return;
  const environment::During arranging(arranging_);
  const toolkit::Rect view = layout_.Viewport(ClientSize());
  SetWindowPos(area_, nullptr, view.left, view.top, view.width, view.height, SWP_NOZORDER | SWP_NOACTIVATE);
  ShowScrollBars();
  for (const auto& control : layout_.Stretched()) {
    if (auto* shown = static_cast<NativeView*>(control->GetView())) shown->Show(toolkit::Aspect::kPlacement);
  }
}

void WindowView::ShowScrollBars() {
  const toolkit::Rect view = layout_.Viewport(ClientSize());
  const toolkit::Size scrolled = layout_.ScrolledSize();
  const int thick = SystemMeasure(SM_CXVSCROLL, GetMetrics().Dpi());
  // One bar takes room that the other direction may need.
  bool down = scrolled.height > view.height;
  const bool across = scrolled.width > view.width - (down ? thick : 0);
  down = scrolled.height > view.height - (across ? thick : 0);
  const toolkit::Size viewport = {view.width - (down ? thick : 0), view.height - (across ? thick : 0)};
  const auto show = [this](int bar, int content, int page, bool shown) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = shown ? content - 1 : 0;
    info.nPage = static_cast<UINT>(std::max(0, page));
    SetScrollInfo(area_, bar, &info, TRUE);
    ShowScrollBar(area_, bar, shown);
  };
  show(SB_HORZ, scrolled.width, viewport.width, across);
  show(SB_VERT, scrolled.height, viewport.height, down);
  const toolkit::Size content = layout_.HasPanes()
                                    ? scrolled
                                    : toolkit::Size{std::max(scrolled.width, viewport.width),
                                                    std::max(scrolled.height, viewport.height)};
  SetWindowPos(content_, nullptr, 0, 0, content.width, content.height,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  ScrollTo(offset_);
}

void WindowView::ScrollTo(const toolkit::Point& offset) {
  const toolkit::Size view = SizeOf(area_);
  const toolkit::Size content = SizeOf(content_);
  offset_ = {std::clamp(offset.left, 0, std::max(0, content.width - view.width)),
             std::clamp(offset.top, 0, std::max(0, content.height - view.height))};
  const toolkit::Rect now = PlaceIn(area_, content_, nullptr);
  if (now.left != -offset_.left || now.top != -offset_.top)
    SetWindowPos(content_, nullptr, -offset_.left, -offset_.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  SetScrollPos(area_, SB_HORZ, offset_.left, TRUE);
  SetScrollPos(area_, SB_VERT, offset_.top, TRUE);
}

void WindowView::Scroll(int bar, int code) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  if (!GetScrollInfo(area_, bar, &info)) return;
  int place = info.nPos;
  const int page = static_cast<int>(info.nPage);
  switch (code) {
    case SB_LINEUP: place -= GetMetrics().Scaled(kLine); break;
    case SB_LINEDOWN: place += GetMetrics().Scaled(kLine); break;
    case SB_PAGEUP: place -= page; break;
    case SB_PAGEDOWN: place += page; break;
    case SB_TOP: place = 0; break;
    case SB_BOTTOM: place = info.nMax; break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: place = info.nTrackPos; break;
    default: return;
  }
  ScrollTo(bar == SB_HORZ ? toolkit::Point{place, offset_.top} : toolkit::Point{offset_.left, place});
}

void WindowView::Turn(int bar, int delta) {
  const int by = -delta * 3 * GetMetrics().Scaled(kLine) / WHEEL_DELTA;
  ScrollTo(bar == SB_HORZ ? toolkit::Point{offset_.left - by, offset_.top}
                          : toolkit::Point{offset_.left, offset_.top + by});
}

void WindowView::BringIntoSight(const NativeView& view, const RECT* part) {
  const HWND shown = view.Handle();
  // Before the window shows nothing has been laid out.
  if (!presented_ || !shown || !IsWindowVisible(Handle()) || !IsChild(content_, shown)) return;
  const toolkit::Rect target = PlaceIn(content_, shown, part);
  toolkit::Rect label = target;
  const auto labelled_by = view.GetControl().LabelledBy();
  const auto* labelling = labelled_by ? static_cast<const NativeView*>(labelled_by->GetView()) : nullptr;
  if (labelling && !part && IsChild(content_, labelling->Handle()))
    label = PlaceIn(content_, labelling->Handle(), nullptr);
  ScrollTo(toolkit::ScrollIntoSight({offset_, SizeOf(area_), SizeOf(content_)}, target, label, kSightMargin));
}

void WindowView::BringFocusIntoSight() {
  const auto& focus = GetForm().ActiveControl();
  if (const auto* view = focus ? static_cast<const NativeView*>(focus->GetView()) : nullptr)
    BringIntoSight(*view);
}

void WindowView::ScrollToOrigin() { ScrollTo({0, 0}); }

// --- messages ------------------------------------------------------------------------------------

void WindowView::Resized() {
  if (!presented_ || rescaling_ || IsIconic(Handle())) return;
  Arrange();
  BringFocusIntoSight();
  TellSize();
}

void WindowView::TellSize() {
  const auto keep = GetForm().shared_from_this();
  const toolkit::Size size = layout_.ModelSize(ClientSize());
  GetForm().UserResize(size.width, size.height);
}

// --- on another screen ---------------------------------------------------------------------------

void WindowView::Rescale(const Look& look) {
  const double by = look.GetMetrics().GetScale().Factor() / GetMetrics().GetScale().Factor();
  const toolkit::Point offset = {static_cast<int>(std::lround(offset_.left * by)),
                                 static_cast<int>(std::lround(offset_.top * by))};
  NativeView::Rescale(look);
  layout_.SetScale(look.GetMetrics().GetScale());
  tips_.SetLook(look.ProgramFont(), GetMetrics().Scaled(kTipWidth));
  Arrange();
  if (const toolkit::Controls* controls = GetForm().LoadedControls()) RescaleAll(*controls, look);
  ScrollTo(offset);
  RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
}

void WindowView::ScreenChanged(int dpi, const RECT& place) {
  // It came to the screen for which it was made.
  if (dpi == GetMetrics().Dpi()) return;
  {
    const environment::During rescaling(rescaling_);
    SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Rescale(Context().looks.Of(dpi));
  }
  if (presented_ && !IsIconic(Handle())) TellSize();
}

SIZE WindowView::SizeAt(int dpi) const {
  const double by = static_cast<double>(dpi) / GetMetrics().Dpi();
  const toolkit::Size client = ClientSize();
  RECT place = {0, 0, std::lround(client.width * by), std::lround(client.height * by)};
  AddFrame(place, StyleOf(GetForm()), WS_EX_CONTROLPARENT, dpi);
  return {place.right - place.left, place.bottom - place.top};
}

// The window got the native focus for the control that has the model's; not in the middle of the activation.
void WindowView::Activated() {
  const auto form = GetForm().weak_from_this();
  Application& application = Context().application;
  application.Later(Life(), [form, &application] {
    if (const auto kept = form.lock()) application.SyncFocus(static_cast<toolkit::Form&>(*kept));
  });
}

std::optional<LRESULT> WindowView::Receive(HWND window, const Message& message) {
  if (window != Handle()) {
    // Area and content.
    switch (message.id) {
      case WM_ERASEBKGND: return 1;
      case WM_PAINT: {
        const Canvas canvas(window, GetLook());
        Paint(canvas.Get(), canvas.Area());
        return 0;
      }
      case WM_HSCROLL:
      case WM_VSCROLL:
        if (window == area_ && !message.low)
          Scroll(message.id == WM_HSCROLL ? SB_HORZ : SB_VERT, LOWORD(message.wide));
        return 0;
      case WM_MOUSEWHEEL:
      case WM_MOUSEHWHEEL:
        Turn(message.id == WM_MOUSEHWHEEL ? SB_HORZ : SB_VERT, static_cast<short>(HIWORD(message.wide)));
        return 0;
      default: return std::nullopt;
    }
  }
  switch (message.id) {
    case WM_CLOSE: GetForm().UserClose(); return 0;
    case WM_SIZE: Resized(); return std::nullopt;
    case WM_DPICHANGED:
      ScreenChanged(LOWORD(message.wide), *reinterpret_cast<const RECT*>(message.low));
      return 0;
    case WM_GETDPISCALEDSIZE:
      if (IsZoomed(Handle()) || IsIconic(Handle())) return std::nullopt;
      *reinterpret_cast<SIZE*>(message.low) = SizeAt(static_cast<int>(message.wide));
      return TRUE;
    case WM_ACTIVATE:
      if (LOWORD(message.wide) != WA_INACTIVE) Activated();
      return std::nullopt;
    // Alt alone, or F10, would put the keyboard into the window's menu.
    case WM_SYSCOMMAND:
      if ((message.wide & 0xFFF0) == SC_KEYMENU && message.low != VK_SPACE) return 0;
      return std::nullopt;
    default: return NativeView::Receive(window, message);
  }
}

}  // namespace dossierkit::win32
