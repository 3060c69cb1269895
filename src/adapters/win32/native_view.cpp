#include "adapters/win32/native_view.h"

#include <system_error>

#include "adapters/win32/accessible.h"
#include "adapters/win32/box_frame.h"
#include "adapters/win32/painting.h"
#include "adapters/win32/surface_views.h"
#include "adapters/win32/surroundings.h"
#include "adapters/win32/window_view.h"
#include "adapters/windows/texts.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {

using toolkit::Aspect;

namespace {

// nullptr where it is being made.
WindowView* WindowOf(toolkit::Control& control) {
  const toolkit::Form* window = toolkit::FormOf(control);
  return window ? static_cast<WindowView*>(window->GetView()) : nullptr;
}

const Look& LookOf(const ViewContext& context, toolkit::Control& control) {
  const WindowView* window = WindowOf(control);
  return window ? window->GetLook() : context.LookOfNext();
}

// One that was left, which is put in its place with all others; or a new one, where it is to stand.
HWND MakeWindow(ViewContext& context, const toolkit::Control& control, const NativeWindow& native,
                const toolkit::Rect& place) {
  SpareWindows& spares = context.application.Spares();
  const HWND parent = ParentOf(control);
  const HWND spare = control.GetKind() == toolkit::Kind::kUserControl
                         ? spares.TakePage()
                         : spares.TakePart(parent, native.window_class, native.style);
  if (spare) return spare;
  return CreateWindowExW(native.extended_style, native.window_class, L"",
                         WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | native.style, place.left, place.top,
                         place.width, place.height, parent, nullptr, OwnModule(), nullptr);
}

toolkit::Rect PlaceOf(toolkit::Control& control, const Look& look) {
  const WindowView* window = WindowOf(control);
  return window ? window->ShownPlace(control) : look.GetMetrics().GetScale().Pixels(control.Place());
}

// Itself, with all that it stands in.
bool EnabledThroughout(const toolkit::Control& control) {
  for (const toolkit::Control* outer = &control; outer && outer->GetKind() != toolkit::Kind::kForm;
       outer = outer->Container()) {
    if (!outer->Enabled()) return false;
  }
  return true;
}

BOOL CALLBACK EnableChild(HWND child, LPARAM application) noexcept {
  if (const NativeView* view = reinterpret_cast<Application*>(application)->ViewOf(child);
      view && view->Handle() == child)
    EnableWindow(child, EnabledThroughout(view->GetControl()));
  return TRUE;
}

// Something around its client area: a frame, or a scroll bar.
bool HasEdge(HWND window) {
  return !(GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) || HasScrollBar(window);
}

// The page is removed: its window takes along what stands in it.
bool GoesWithItsPage(const toolkit::Control& control) {
  const toolkit::Control* page = control.Owner();
  const auto* view = page ? static_cast<const NativeView*>(page->GetView()) : nullptr;
  return view && page->GetKind() == toolkit::Kind::kUserControl && page->Removed() && view->Handle();
}

}  // namespace

const Look& ViewContext::LookOfNext() const {
  if (const WindowView* below = application.TopWindow()) return below->GetLook();
  return looks.Of(DotsPerInch(application.OwnerOfNext()));
}

HWND ParentOf(const toolkit::Control& control) {
  const toolkit::Control* container = control.Container();
  const auto* view = container ? static_cast<const NativeView*>(container->GetView()) : nullptr;
  return view ? view->ContentFor(control) : nullptr;
}

NativeView::NativeView(ViewContext& context, toolkit::Control& control, const NativeWindow& native)
    : NativeView(context, control,
                 MakeWindow(context, control, native, PlaceOf(control, LookOf(context, control)))) {
  pane_ = native.window_class == kPaneClass;
}

NativeView::NativeView(ViewContext& context, toolkit::Control& control, HWND window)
    : context_(context),
      control_(control),
      look_(&LookOf(context, control)),
      window_(window),
      life_(std::make_shared<int>(0)) {
  if (!window)
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "CreateWindowEx");
  context_.application.Link(window_, *this);
}

NativeView::~NativeView() {
  if (!window_) return;
  if (WindowView* window = Window()) window->Tips().Forget(window_);
  if (GoesWithItsPage(control_)) {
    context_.application.Leave(window_);
  } else if (control_.GetKind() == toolkit::Kind::kUserControl) {
    context_.application.Retire(window_);
  } else {
    context_.application.Doom(window_);
  }
}

// What was made later lies above; Windows has it the other way round.
void NativeView::Stack(UINT more) {
  const toolkit::Rect place = PlaceOf(control_, *look_);
  const UINT stays = control_.GetKind() == toolkit::Kind::kUserControl ? SWP_NOMOVE | SWP_NOSIZE : 0;
  SetWindowPos(window_, control_.GetKind() == toolkit::Kind::kFrame ? HWND_BOTTOM : HWND_TOP, place.left,
               place.top, place.width, place.height, SWP_NOACTIVATE | stays | more);
}

bool NativeView::Arriving() const {
  const toolkit::UserControl* page = control_.Page();
  const auto* view = page && page != &control_ ? static_cast<const PageView*>(page->GetView()) : nullptr;
  return view && !view->Arrived();
}

// Each call that moves or shows a window has Windows forget what it has ready to paint it with: there is one.
void NativeView::ShowAll() {
  waiting_ = Arriving();
  const UINT edge = MeasureEdge() ? SWP_FRAMECHANGED : 0;
  const UINT unseen = waiting_ ? SWP_NOREDRAW | SWP_DEFERERASE : 0;
  const UINT shows = waiting_ && Shown() && !MarkedVisible() ? SWP_SHOWWINDOW : 0;
  if (control_.GetKind() != toolkit::Kind::kForm) Stack(edge | unseen | shows);
  if (!waiting_) ShowAllNow();
  ShowState();
}

void NativeView::ShowAllNow() {
  {
    const environment::During shows_all(shows_all_);
    ShowStyle();
    ShowText();
    ShowContent();
    ShowSelection();
  }
  ShowPlacement();
}

void NativeView::Settle() {
  if (!waiting_ || !window_ || Arriving()) return;
  waiting_ = false;
  ShowAllNow();
}

void NativeView::Show(Aspect aspect) {
  // What a page still does while it is removed is not to be seen.
  const bool goes = aspect != Aspect::kState && aspect != Aspect::kFocus && GoesWithItsPage(control_);
  if (window_ && !goes) ShowNow(aspect);
}

void NativeView::ShowNow(Aspect aspect) {
  if (waiting_ && aspect != Aspect::kPlacement && aspect != Aspect::kState && aspect != Aspect::kFocus)
    return;
  switch (aspect) {
    case Aspect::kPlacement: ShowPlacement(); break;
    case Aspect::kState: ShowState(); break;
    case Aspect::kStyle: ShowStyle(); break;
    case Aspect::kText: ShowText(); break;
    case Aspect::kContent: ShowContent(); break;
    case Aspect::kSelection: ShowSelection(); break;
    case Aspect::kFocus: break;
  }
  if (aspect == Aspect::kFocus || aspect == Aspect::kState) {
    if (toolkit::Form* window = toolkit::FormOf(control_)) context_.application.SyncFocus(*window);
  }
}

void NativeView::Rescale(const Look& look) {
  look_ = &look;
  if (!window_) return;
  ShowStyle();
  ShowPlacement();
  BoxFrame::Refresh(window_);
}

WindowView* NativeView::Window() const { return WindowOf(control_); }

bool NativeView::MarkedVisible() const { return (GetWindowLongPtrW(window_, GWL_STYLE) & WS_VISIBLE) != 0; }

bool NativeView::Shown() const { return control_.Visible() && !toolkit::OnHiddenTab(control_); }

void NativeView::ShowPlacement() {
  if (const HWND parent = ParentOf(control_); parent && GetParent(window_) != parent) {
    SetParent(window_, parent);
    Stack();
    ShowState();
  }
  const toolkit::Rect place = PlaceOf(control_, *look_);
  RECT now;
  GetWindowRect(window_, &now);
  MapWindowPoints(nullptr, GetParent(window_), reinterpret_cast<POINT*>(&now), 2);
  const RECT wanted = {place.left, place.top, place.left + place.width, place.top + place.height};
  if (EqualRect(&now, &wanted)) return;
  SetWindowPos(window_, nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void NativeView::ShowState() {
  if (Shown() != MarkedVisible()) ShowWindow(window_, Shown() ? SW_SHOWNA : SW_HIDE);
  const BOOL enabled = EnabledThroughout(control_);
  if (IsWindowEnabled(window_) == enabled) return;
  EnableWindow(window_, enabled);
  EnumChildWindows(window_, EnableChild, reinterpret_cast<LPARAM>(&context_.application));
}

void NativeView::ShowStyle() {
  SetTip(windows::Wide(control_.ToolTipText()));
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(GetLook().FontOf(control_.GetFont())), FALSE);
  Repaint();
}

// Of a pane that a text stood in.
void NativeView::ShowText() {
  if (pane_ && GetWindowTextLengthW(window_) > 0) SetWindowTextW(window_, L"");
}

void NativeView::SetTip(const std::wstring& text) const {
  if (WindowView* window = Window()) window->Tips().Set(window_, text);
}

// What does not show yet is painted when it does.
void NativeView::Repaint() const {
  if (IsWindowVisible(window_)) InvalidateRect(window_, nullptr, TRUE);
}

LRESULT NativeView::Native(HWND window, const Message& message) {
  return Application::PassOn(window, message);
}

std::optional<LRESULT> NativeView::Receive(HWND window, const Message& message) {
  if (window != window_) return std::nullopt;
  if (message.id == WM_GETOBJECT && static_cast<LONG>(message.low) == OBJID_CLIENT) {
    if (const LRESULT answer = AccessibleOf(window, message, control_.shared_from_this())) return answer;
  }
  if (!pane_) return std::nullopt;
  if (message.id == WM_ERASEBKGND) return 1;
  if ((message.id == WM_NCPAINT || message.id == WM_NCCALCSIZE) && !HasEdge(window)) return 0;
  if (message.id != WM_PAINT) return std::nullopt;
  const Canvas canvas(window, GetLook());
  Paint(canvas.Get(), canvas.Area());
  return 0;
}

void NativeView::Paint(HDC device, const RECT& place) { Fill(device, place, Ground()); }

COLORREF NativeView::Ground() const {
  const toolkit::Control* container = control_.Container();
  const auto* view = container ? static_cast<const NativeView*>(container->GetView()) : nullptr;
  return view ? view->Ground() : GetLook().Colors().surface;
}

}  // namespace dossierkit::win32
