#include "adapters/win32/message_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <system_error>

#include "adapters/win32/painting.h"
#include "adapters/win32/surroundings.h"
#include "adapters/win32/text_lines.h"
#include "adapters/win32/window_classes.h"
#include "adapters/windows/texts.h"
#include "platform/toolkit/loop/placement.h"

namespace dossierkit::win32 {
namespace {

using windows::Wide;

constexpr wchar_t kClass[] = L"DossierKit.MessageBox";
constexpr int kIconSize = 32;
constexpr int kTextWidth = 440;
constexpr int kLeastTextWidth = 140;
constexpr int kHighestText = 400;
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 28;
constexpr int kButtonGap = 6;
constexpr int kMargin = 18;
constexpr UINT_PTR kSubclass = 1;
constexpr int kTextId = 100;
constexpr UINT kTextFormat = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS;

// The icon of Windows for a message; null without one.
HICON IconOf(int flags) {
  const auto load = [](int number) { return LoadIconW(nullptr, MAKEINTRESOURCEW(number)); };
  switch (toolkit::MessageIconOf(flags)) {
    case toolkit::kQuestionIcon: return load(32514);
    case toolkit::kExclamationIcon: return load(32515);
    case toolkit::kInformationIcon: return load(32516);
    default: return nullptr;
  }
}

RECT WorkAreaAt(HWND window) {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return monitor.rcWork;
}

toolkit::Rect RectOf(const RECT& place) {
  return {static_cast<int>(place.left), static_cast<int>(place.top), WidthOf(place), HeightOf(place)};
}

bool IsDown(int key) { return GetKeyState(key) < 0; }

std::wstring WithNativeBreaks(const std::wstring& text) {
  std::wstring lines;
  for (const wchar_t unit : text) {
    if (unit == L'\n' && (lines.empty() || lines.back() != L'\r')) lines += L'\r';
    lines += unit;
  }
  return lines;
}

}  // namespace

MessageDialog::MessageDialog(Looks& looks, int dpi, const std::string& text, int flags,
                             const std::string& title, HWND owner)
    : looks_(looks),
      look_(&looks.Of(dpi)),
      text_(Wide(text)),
      flags_(flags),
      surface_(CreateSolidBrush(look_->Colors().surface)),
      answer_(toolkit::MessageUnanswered(flags)) {
  MakeWindow(title, owner);
  MakeParts();
  Arrange();
}

MessageDialog::~MessageDialog() {
  if (window_) DestroyWindow(window_);
  UnregisterClassW(kClass, OwnModule());  // it stays while another box is on show
  DeleteObject(surface_);
}

void MessageDialog::MakeWindow(const std::string& title, HWND owner) {
  WNDCLASSEXW wanted = {};
  wanted.cbSize = sizeof wanted;
  wanted.lpfnWndProc = BoxProcedure;
  wanted.hInstance = OwnModule();
  wanted.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  wanted.lpszClassName = kClass;
  RegisterClassExW(&wanted);  // there already while another box is on show
  // A box that has to be answered by one of its buttons has no other way out.
  const DWORD style =
      WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN | (toolkit::MessageClosed(flags_) ? WS_SYSMENU : 0);
  window_ = CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, kClass, Wide(title).c_str(), style, 0,
                            0, 0, 0, owner, nullptr, wanted.hInstance, this);
  if (!window_) {
    const auto error = static_cast<int>(GetLastError());
    DeleteObject(surface_);
    UnregisterClassW(kClass, wanted.hInstance);
    throw std::system_error(error, std::system_category(), "CreateWindowEx");
  }
}

HWND MessageDialog::MakePart(const wchar_t* window_class, const std::wstring& text, DWORD style, int id) {
  const HWND part =
      CreateWindowExW(0, window_class, text.c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, window_,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  SetWindowSubclass(part, PartProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
  return part;
}

void MessageDialog::MakeParts() {
  scrolls_ = HeightOf(NeededByText()) > HighestText();
  shown_text_ =
      scrolls_ ? MakePart(L"EDIT", WithNativeBreaks(text_), WS_VSCROLL | ES_MULTILINE | ES_READONLY, kTextId)
               : MakePart(L"STATIC", text_, SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL, kTextId);
  for (const toolkit::MessageButton& button : toolkit::MessageButtonsOf(flags_)) {
    buttons_.push_back(
        MakePart(L"BUTTON", Wide(button.caption),
                 WS_TABSTOP | static_cast<DWORD>(button.is_default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON),
                 button.answer));
    if (button.is_default) first_ = buttons_.back();
  }
}

RECT MessageDialog::NeededByText() const {
  RECT needed = {0, 0, look_->GetMetrics().Scaled(kTextWidth), 0};
  const HDC screen = GetDC(window_);
  {
    const Selected font(screen, look_->ProgramFont());
    DrawTextW(screen, text_.data(), static_cast<int>(text_.size()), &needed, kTextFormat | DT_CALCRECT);
  }
  ReleaseDC(window_, screen);
  return needed;
}

int MessageDialog::HighestText() const {
  const HWND owner = GetWindow(window_, GW_OWNER);
  return owner ? HeightOf(WorkAreaAt(owner)) / 2 : look_->GetMetrics().Scaled(kHighestText);
}

void MessageDialog::PlacePart(HWND part, const RECT& place) const {
  SendMessageW(part, WM_SETFONT, reinterpret_cast<WPARAM>(look_->ProgramFont()), FALSE);
  SetWindowPos(part, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void MessageDialog::Arrange() {
  const Metrics& metrics = look_->GetMetrics();
  const int margin = metrics.Scaled(kMargin);
  const RECT needed = NeededByText();
  const int icon = IconOf(flags_) ? metrics.Scaled(kIconSize) : 0;
  const int beside = icon ? margin + icon + margin * 2 / 3 : margin;
  int wide = std::clamp(WidthOf(needed) + metrics.Scaled(4), metrics.Scaled(kLeastTextWidth),
                        metrics.Scaled(kTextWidth));
  if (scrolls_) wide += SystemMeasure(SM_CXVSCROLL, metrics.Dpi());
  const int text = scrolls_ ? HighestText() : HeightOf(needed);
  const int high = std::max(text, icon);
  // Beside an icon that is taller a text stands in the middle.
  const int above = margin + (high - text) / 2;
  PlacePart(shown_text_, {beside, above, beside + wide, above + text});
  upper_ = {beside + wide + margin, margin + high + margin};

  const int gap = metrics.Scaled(kButtonGap);
  const int width = metrics.Scaled(kButtonWidth);
  const int height = metrics.Scaled(kButtonHeight);
  const int row = static_cast<int>(buttons_.size()) * (width + gap) - gap;
  client_ = {std::max(upper_.cx, static_cast<LONG>(row + 2 * margin)),
             upper_.cy + height + 2 * (static_cast<LONG>(margin) / 2)};
  int left = static_cast<int>(client_.cx) - margin - row;
  const int top = static_cast<int>(upper_.cy) + margin / 2;
  for (const HWND button : buttons_) {
    PlacePart(button, {left, top, left + width, top + height});
    left += width + gap;
  }
}

// Around a client area whose upper left corner is at 0, 0.
RECT MessageDialog::Outer() const {
  RECT frame = {0, 0, client_.cx, client_.cy};
  AddFrame(frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)),
           static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)), look_->GetMetrics().Dpi());
  return frame;
}

void MessageDialog::ScreenChanged(int dpi, POINT corner) {
  // It came to the screen for which it was made.
  if (dpi == look_->GetMetrics().Dpi()) return;
  look_ = &looks_.Of(dpi);
  {
    std::optional<FirstLineKept> kept;
    if (scrolls_) kept.emplace(shown_text_);
    Arrange();
  }
  const RECT outer = Outer();
  SetWindowPos(window_, nullptr, corner.x, corner.y, WidthOf(outer), HeightOf(outer),
               SWP_NOZORDER | SWP_NOACTIVATE);
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
}

void MessageDialog::Show() {
  if (!window_) return;
  const HWND owner = GetWindow(window_, GW_OWNER);
  const RECT frame = Outer();
  toolkit::WindowRequest request;
  request.client = {static_cast<int>(client_.cx), static_cast<int>(client_.cy)};
  request.content = request.client;
  request.frame = {static_cast<int>(-frame.left), static_cast<int>(-frame.top),
                   static_cast<int>(frame.right - client_.cx), static_cast<int>(frame.bottom - client_.cy)};
  request.screen = RectOf(WorkAreaAt(owner));
  request.over = request.screen;
  if (RECT over; owner && GetWindowRect(owner, &over)) request.over = RectOf(over);
  const toolkit::Rect place = toolkit::PlaceWindow(request);
  SetWindowPos(window_, HWND_TOP, place.left + static_cast<int>(frame.left),
               place.top + static_cast<int>(frame.top), WidthOf(frame), HeightOf(frame), SWP_SHOWWINDOW);
  if (const int icon = toolkit::MessageIconOf(flags_)) MessageBeep(static_cast<UINT>(icon));
  SetForegroundWindow(window_);
  SetFocus(first_);
}

LRESULT CALLBACK MessageDialog::BoxProcedure(HWND window, UINT id, WPARAM wide, LPARAM low) noexcept {
  if (id == WM_NCCREATE) {
    auto* dialog = static_cast<MessageDialog*>(reinterpret_cast<CREATESTRUCTW*>(low)->lpCreateParams);
    dialog->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(dialog));
  }
  auto* dialog = reinterpret_cast<MessageDialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!dialog) return DefWindowProcW(window, id, wide, low);
  if (id == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    // Others destroyed it: whoever waits for the answer goes on.
    const LRESULT result = DefWindowProcW(window, id, wide, low);
    dialog->window_ = nullptr;
    dialog->Take(dialog->answer_);
    return result;
  }
  return dialog->Receive(id, wide, low);
}

LRESULT MessageDialog::Receive(UINT id, WPARAM wide, LPARAM low) {
  switch (id) {
    case WM_COMMAND:
      for (const HWND button : buttons_) {
        if (reinterpret_cast<HWND>(low) == button && HIWORD(wide) == BN_CLICKED)
          Take(static_cast<toolkit::MessageAnswer>(LOWORD(wide)));
      }
      return 0;
    case WM_CLOSE:
      if (const auto answer = toolkit::MessageClosed(flags_)) Take(*answer);
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wide) != WA_INACTIVE) SetFocus(first_);
      return 0;
    case WM_CTLCOLORSTATIC:
      SetTextColor(reinterpret_cast<HDC>(wide), look_->Colors().ink);
      SetBkColor(reinterpret_cast<HDC>(wide), look_->Colors().surface);
      return reinterpret_cast<LRESULT>(surface_);
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: Paint(); return 0;
    case WM_DPICHANGED: {
      const auto& place = *reinterpret_cast<const RECT*>(low);
      ScreenChanged(LOWORD(wide), {place.left, place.top});
      return 0;
    }
    default: return DefWindowProcW(window_, id, wide, low);
  }
}

void MessageDialog::Paint() const {
  const Metrics& metrics = look_->GetMetrics();
  const Canvas canvas(window_, *look_);
  RECT place = canvas.Area();
  place.bottom = upper_.cy;
  Fill(canvas.Get(), place, look_->Colors().surface);
  place = canvas.Area();
  place.top = upper_.cy;
  Fill(canvas.Get(), place, look_->Colors().bar);
  if (const HICON icon = IconOf(flags_)) {
    const int margin = metrics.Scaled(kMargin);
    const int side = metrics.Scaled(kIconSize);
    DrawIconEx(canvas.Get(), margin, margin, icon, side, side, 0, nullptr, DI_NORMAL);
  }
}

LRESULT CALLBACK MessageDialog::PartProcedure(HWND window, UINT id, WPARAM wide, LPARAM low, UINT_PTR,
                                              DWORD_PTR dialog) noexcept {
  auto& box = *reinterpret_cast<MessageDialog*>(dialog);
  switch (id) {
    case WM_GETDLGCODE: return DefSubclassProc(window, id, wide, low) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (box.TakesKey(window, id, wide)) return 0;
      break;
    // What a key types was looked at with the key; Alt and the blank opens the window's menu.
    case WM_CHAR: return 0;
    case WM_SYSCHAR:
      if (wide != L' ') return 0;
      break;
    case WM_SETFOCUS:
      for (const HWND button : box.buttons_) {
        if (button == window) box.first_ = window;
      }
      break;
    default: break;
  }
  return DefSubclassProc(window, id, wide, low);
}

bool MessageDialog::TakesKey(HWND window, UINT id, WPARAM wide) {
  const int shift = (IsDown(VK_SHIFT) ? toolkit::kShift : 0) | (IsDown(VK_CONTROL) ? toolkit::kCtrl : 0) |
                    (id == WM_SYSKEYDOWN || IsDown(VK_MENU) ? toolkit::kAlt : 0);
  const toolkit::KeyStroke stroke{static_cast<int>(wide), shift, {}};
  if (const auto answer = toolkit::MessageAnswerOf(flags_, stroke)) {
    Take(*answer);
    return true;
  }
  if (shift & toolkit::kAlt) return false;
  switch (stroke.code) {
    case toolkit::kKeyTab: MoveFocus(window, shift & toolkit::kShift ? -1 : 1); return true;
    case toolkit::kKeyLeft:
    case toolkit::kKeyUp: MoveFocus(window, -1); return true;
    case toolkit::kKeyRight:
    case toolkit::kKeyDown: MoveFocus(window, 1); return true;
    case toolkit::kKeyReturn: Take(static_cast<toolkit::MessageAnswer>(GetDlgCtrlID(first_))); return true;
    case toolkit::kKeyEscape: return true;  // a question has to be answered
    default: return false;
  }
}

void MessageDialog::MoveFocus(HWND from, int step) const {
  const auto count = static_cast<int>(buttons_.size());
  const auto found = std::find(buttons_.begin(), buttons_.end(), from);
  const int place = found == buttons_.end() ? 0 : static_cast<int>(found - buttons_.begin()) + step;
  SetFocus(buttons_[static_cast<std::size_t>((place + count) % count)]);
}

void MessageDialog::Take(toolkit::MessageAnswer answer) {
  if (answered_) return;
  answered_ = true;
  answer_ = answer;
  if (wake_) wake_();
}

}  // namespace dossierkit::win32
