#include "adapters/win32/edit_view.h"

#include <windowsx.h>

#include <algorithm>

#include "adapters/win32/edit_menu.h"
#include "adapters/win32/painting.h"
#include "adapters/win32/text_lines.h"
#include "adapters/win32/window_view.h"

namespace dossierkit::win32 {
namespace {

constexpr double kTextMargin = 3;  // at the left and the right

DWORD StyleOf(bool multi_line) {
  return multi_line ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL : ES_AUTOHSCROLL;
}

// Whether a message may have changed what the native window shows.
bool MayChange(const Message& message) {
  switch (message.id) {
    case WM_CHAR:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_TIMER:  // the text scrolls below a mouse that marks it
    case WM_SETTEXT:
    case WM_CUT:
    case WM_PASTE:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO:
    case EM_REPLACESEL:
    case EM_SETSEL: return true;
    case WM_MOUSEMOVE: return message.wide & MK_LBUTTON;
    default: return false;
  }
}

std::size_t BreaksIn(std::u16string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n'));
}

}  // namespace

EditView::EditView(ViewContext& context, toolkit::EditBox& box, bool multi_line)
    : NativeView(context, box, {L"EDIT", StyleOf(multi_line)}),
      box_(box),
      multi_line_(multi_line),
      frame_(*this) {
  SendMessageW(Handle(), EM_SETLIMITTEXT, 0x7FFFFFFE, 0);  // the model limits
}

EditView::~EditView() {
  if (ground_) DeleteObject(ground_);
}

std::optional<LRESULT> EditView::Receive(HWND window, const Message& message) {
  if (window != Handle()) return std::nullopt;
  if (message.id == WM_ENABLE) ShowGround();
  if (const auto answer = frame_.Receive(window, message)) return answer;
  if (message.id == WM_CONTEXTMENU) {
    AskMenu(message.low);
    return 0;
  }
  if (!MayChange(message)) return NativeView::Receive(window, message);
  const auto life = Life();
  const LRESULT result = Native(window, message);
  if (!life.expired() && !IsShowing()) NativeChanged();
  if (!life.expired() && message.id == WM_LBUTTONDBLCLK) DoubleClicked();
  return result;
}

void EditView::AskMenu(LPARAM place) {
  POINT at = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  if (place == -1) {
    RECT box;
    GetWindowRect(Handle(), &box);
    at = {box.left, box.bottom};
  }
  const WindowView* window = Window();
  if (window) OpenEditMenu(box_, window->Handle(), at);
}

HBRUSH EditView::Colours(HDC device) {
  const bool enabled = IsWindowEnabled(Handle());
  const Palette& colors = GetLook().Colors();
  const COLORREF ground = GetLook().ColorOf(box_.BackColor());
  SetTextColor(device,
               enabled ? GetLook().InkOn(ground, GetLook().ColorOf(box_.ForeColor())) : colors.faint_ink);
  SetBkColor(device, enabled ? ground : colors.faint_base);
  return ground_;
}

void EditView::Enter(const std::wstring& text) {
  SendMessageW(Handle(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

void EditView::ShowStyle() {
  NativeView::ShowStyle();
  ShowGround();
  if (!ShowsAll()) ShowPlacement();
}

void EditView::Rescale(const Look& look) {
  std::optional<FirstLineKept> kept;
  if (multi_line_) kept.emplace(Handle());
  NativeView::Rescale(look);
}

void EditView::ShowGround() {
  const COLORREF ground =
      IsWindowEnabled(Handle()) ? GetLook().ColorOf(box_.BackColor()) : GetLook().Colors().faint_base;
  if (ground_) DeleteObject(ground_);
  ground_ = CreateSolidBrush(ground);
  frame_.SetFill(ground);
  if (IsWindowVisible(Handle())) RedrawWindow(Handle(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

// The line of a box stands in the middle of its height.
bool EditView::MeasureEdge() {
  const int height = GetMetrics().GetScale().Pixels(box_.Place()).height;
  const int line = GetLook().LineHeight(GetLook().FontOf(box_.GetFont()));
  const int inside = height - 2 * GetMetrics().Ring();
  const int above = multi_line_ ? GetMetrics().Scaled(2) : std::max(0, (inside - line) / 2);
  const int beside = GetMetrics().Scaled(kTextMargin);
  return frame_.SetPadding({beside, above, multi_line_ ? 0 : beside, 0});
}

void EditView::ShowPlacement() {
  const bool changed = MeasureEdge();
  NativeView::ShowPlacement();
  if (changed) BoxFrame::Refresh(Handle());
}

// --- the native text -----------------------------------------------------------------------------

std::u16string EditView::NativeText() const {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(Handle())) + 1, u'\0');
  const int length =
      GetWindowTextW(Handle(), reinterpret_cast<wchar_t*>(text.data()), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  if (multi_line_) std::erase(text, u'\r');
  return text;
}

void EditView::SetNativeText(const std::u16string& text) {
  std::wstring native;
  native.reserve(text.size() + 1);
  for (const char16_t unit : text) {
    if (unit == u'\n' && multi_line_) native += L'\r';
    native += static_cast<wchar_t>(unit);
  }
  const auto showing = Showing();
  SetWindowTextW(Handle(), native.c_str());
  SendMessageW(Handle(), EM_EMPTYUNDOBUFFER, 0, 0);  // the model takes back
}

toolkit::Selection EditView::NativeSelection() const {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  if (!multi_line_) return {start, end - start};
  // Each break is two characters there.
  const auto place = [text = NativeText()](std::size_t native) {
    std::size_t shown = 0;
    for (std::size_t passed = 0; shown < text.size() && passed < native; ++shown)
      passed += text[shown] == u'\n' ? 2 : 1;
    return shown;
  };
  const std::size_t from = place(start);
  return {from, place(end) - from};
}

void EditView::SetNativeSelection(const toolkit::Selection& selection) {
  std::size_t start = selection.start;
  std::size_t end = selection.start + selection.length;
  if (multi_line_) {
    const std::u16string text = NativeText();
    const std::u16string_view all = text;
    start += BreaksIn(all.substr(0, std::min(start, all.size())));
    end += BreaksIn(all.substr(0, std::min(end, all.size())));
  }
  const auto showing = Showing();
  SendMessageW(Handle(), EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
  SendMessageW(Handle(), EM_SCROLLCARET, 0, 0);
}

}  // namespace dossierkit::win32
