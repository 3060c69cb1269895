#include "adapters/win32/input.h"

#include <imm.h>
#include <windowsx.h>

#include <array>
#include <utility>
#include <vector>

#include "adapters/win32/application.h"
#include "adapters/win32/native_view.h"
#include "adapters/win32/window_view.h"
#include "adapters/windows/texts.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {
namespace {

bool IsDown(int key) { return GetKeyState(key) < 0; }

bool IsHighHalf(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowHalf(wchar_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

struct Button {
  int button = 0;
  UINT release = 0;
};

// Of a press, a double click or a release.
Button ButtonOf(UINT id) {
  switch (id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP: return {toolkit::kLeftButton, WM_LBUTTONUP};
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP: return {toolkit::kRightButton, WM_RBUTTONUP};
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_MBUTTONUP: return {toolkit::kMiddleButton, WM_MBUTTONUP};
    default: return {};
  }
}

int ButtonsOf(WPARAM keys) {
  int buttons = 0;
  if (keys & MK_LBUTTON) buttons |= toolkit::kLeftButton;
  if (keys & MK_RBUTTON) buttons |= toolkit::kRightButton;
  if (keys & MK_MBUTTON) buttons |= toolkit::kMiddleButton;
  return buttons;
}

// With Shift and Ctrl as they were when the mouse did something.
int ShiftOf(WPARAM keys) {
  return ((keys & MK_SHIFT) ? toolkit::kShift : 0) | ((keys & MK_CONTROL) ? toolkit::kCtrl : 0) |
         (IsDown(VK_MENU) ? toolkit::kAlt : 0);
}

// Where the mouse is, in twips of the view's window.
toolkit::Point PlaceIn(const NativeView& view, HWND window, LPARAM place) {
  POINT at = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  if (window != view.Handle()) MapWindowPoints(window, view.Handle(), &at, 1);
  return {view.GetMetrics().Twips(at.x), view.GetMetrics().Twips(at.y)};
}

// The characters that the system has made of the key that comes now, which wait right behind it: those with
// Alt of a key with Alt.
std::vector<Message> CharactersBehind(HWND window, UINT key) {
  std::vector<Message> characters;
  const bool alt = key == WM_SYSKEYDOWN;
  MSG message;
  while (PeekMessageW(&message, window, alt ? WM_SYSCHAR : WM_CHAR, alt ? WM_SYSDEADCHAR : WM_DEADCHAR,
                      PM_REMOVE | PM_NOYIELD))
    characters.push_back({message.message, message.wParam, message.lParam});
  return characters;
}

std::u32string TextOf(const std::vector<Message>& characters) {
  std::wstring text;
  for (const Message& character : characters) {
    if (character.id == WM_CHAR || character.id == WM_SYSCHAR) text += static_cast<wchar_t>(character.wide);
  }
  std::u32string typed;
  const std::string utf8 = windows::Utf8(text);
  for (std::size_t position = 0; position < utf8.size();) typed += environment::NextCharacter(utf8, position);
  return typed;
}

}  // namespace

// Asked for together: each question for one goes to the system.
int ShiftNow() {
  std::array<BYTE, 256> keys = {};
  GetKeyboardState(keys.data());
  const auto down = [&keys](std::size_t key) { return (keys[key] & 0x80) != 0; };
  return (down(VK_SHIFT) ? toolkit::kShift : 0) | (down(VK_CONTROL) ? toolkit::kCtrl : 0) |
         (down(VK_MENU) ? toolkit::kAlt : 0);
}

NativeView* Input::ViewOf(HWND window) const { return application_.ViewOf(window); }

// What comes first at the window then is this message; a window that is opened meanwhile has messages of its
// own.
LRESULT Input::Send(HWND window, const Message& message) {
  sending_ = true;
  const LRESULT result = SendMessageW(window, message.id, message.wide, message.low);
  sending_ = false;
  return result;
}

std::optional<LRESULT> Input::Receive(HWND window, const Message& message) {
  if (std::exchange(sending_, false)) return std::nullopt;
  switch (message.id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK: return Press(window, message);
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP: return Release(window, message);
    case WM_MOUSEMOVE: Move(window, message); return std::nullopt;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: return Key(window, message);
    case WM_CHAR: return Character(window, message);
    case WM_IME_STARTCOMPOSITION:
    case WM_IME_COMPOSITION:
    case WM_IME_ENDCOMPOSITION: return Compose(window, message);
    case WM_SETFOCUS:
      if (NativeView* view = ViewOf(window)) application_.FollowFocus(*view);
      return std::nullopt;
    default: return std::nullopt;
  }
}

// --- mouse ---------------------------------------------------------------------------------------

std::optional<LRESULT> Input::Press(HWND window, const Message& message) {
  NativeView* view = ViewOf(window);
  if (!view) return std::nullopt;
  const Button button = ButtonOf(message.id);
  swallowed_ = 0;
  const int loops_before = application_.LoopsBegun();
  const toolkit::Point at = PlaceIn(*view, window, message.low);
  held_ = true;
  const bool passed = view->GetControl().UserMouseDown(button.button, ShiftOf(message.wide), at.left, at.top);
  if (!passed || !ViewOf(window)) {
    held_ = false;
    swallowed_ = button.release;
    return 0;
  }
  // A window that the check opened took this press's release: it comes once more, before anybody waits for
  // it.
  if (application_.LoopsBegun() != loops_before) PostMessageW(window, button.release, 0, message.low);
  return std::nullopt;
}

std::optional<LRESULT> Input::Release(HWND window, const Message& message) {
  if (held_) {
    held_ = false;
    NativeView* view = ViewOf(window);
    toolkit::Form* form = view ? toolkit::FormOf(view->GetControl()) : nullptr;
    if (form) {
      // What got the focus scrolls into sight now, behind the release.
      const std::weak_ptr<toolkit::Control> life = form->shared_from_this();
      application_.Later(life, [life] {
        const auto kept = life.lock();
        if (auto* shown = kept ? static_cast<WindowView*>(kept->GetView()) : nullptr)
          shown->BringFocusIntoSight();
      });
    }
  }
  if (message.id != swallowed_) return std::nullopt;
  swallowed_ = 0;
  return 0;
}

void Input::Move(HWND window, const Message& message) {
  const NativeView* view = ViewOf(window);
  if (!view) return;
  const toolkit::Point at = PlaceIn(*view, window, message.low);
  view->GetControl().UserMouseMove(ButtonsOf(message.wide), ShiftOf(message.wide), at.left, at.top);
}

// --- keys ----------------------------------------------------------------------------------------

std::optional<LRESULT> Input::Key(HWND window, const Message& message) {
  NativeView* view = ViewOf(window);
  // An input method takes the key, or a program hands over a text by it.
  if (!view || message.wide == VK_PROCESSKEY || message.wide == VK_PACKET) return std::nullopt;
  toolkit::Form* form = toolkit::FormOf(view->GetControl());
  if (!form) return std::nullopt;
  const auto keep = form->shared_from_this();
  const std::vector<Message> characters = CharactersBehind(window, message.id);
  const bool passed = form->UserKey({static_cast<int>(message.wide), ShiftNow(), TextOf(characters)});
  if (!passed || !ViewOf(window)) return 0;
  // A control on a hidden tab may have the model's focus but not the native one: its keys come to the window.
  HWND target = window;
  if (const auto& focus = form->ActiveControl();
      focus && window == static_cast<WindowView*>(form->GetView())->Handle() &&
      toolkit::OnHiddenTab(*focus)) {
    if (const auto* behind = static_cast<const NativeView*>(focus->GetView())) target = behind->FocusHandle();
  }
  const LRESULT result = Send(target, message);
  for (const Message& character : characters) {
    if (!ViewOf(target)) break;
    Send(target, character);
  }
  return result;
}

std::optional<LRESULT> Input::Character(HWND window, const Message& message) {
  if (!ViewOf(window)) return std::nullopt;
  const auto unit = static_cast<wchar_t>(message.wide);
  if (IsHighHalf(unit)) {
    first_half_ = unit;
    return 0;
  }
  std::wstring text;
  if (IsLowHalf(unit) && first_half_) text += first_half_;
  first_half_ = 0;
  Commit(window, text + unit);
  return 0;
}

void Input::Commit(HWND window, const std::wstring& text) {
  NativeView* view = ViewOf(window);
  toolkit::Form* form = view ? toolkit::FormOf(view->GetControl()) : nullptr;
  if (!form) return;
  const auto keep = form->shared_from_this();
  const std::wstring passed = windows::Wide(form->UserCommit(windows::Utf8(text)));
  if (passed.empty() || !ViewOf(window)) return;
  view->Enter(passed);
}

// What is composed shows in the window of the input method; a native window of its own would enter it into
// its text.
std::optional<LRESULT> Input::Compose(HWND window, const Message& message) {
  NativeView* view = ViewOf(window);
  toolkit::Form* form = view ? toolkit::FormOf(view->GetControl()) : nullptr;
  if (!form) return std::nullopt;
  const auto keep = form->shared_from_this();
  if (message.id == WM_IME_COMPOSITION) return Result(window, message);
  form->UserCompose(message.id == WM_IME_STARTCOMPOSITION);
  if (message.id == WM_IME_STARTCOMPOSITION) {
    if (const HIMC input = ImmGetContext(window)) {
      COMPOSITIONFORM place = {};
      place.dwStyle = CFS_POINT;
      GetCaretPos(&place.ptCurrentPos);
      ImmSetCompositionWindow(input, &place);
      ImmReleaseContext(window, input);
    }
  }
  return DefWindowProcW(window, message.id, message.wide, message.low);
}

std::optional<LRESULT> Input::Result(HWND window, const Message& message) {
  std::wstring text;
  if (message.low & GCS_RESULTSTR) {
    if (const HIMC input = ImmGetContext(window)) {
      const LONG bytes = ImmGetCompositionStringW(input, GCS_RESULTSTR, nullptr, 0);
      if (bytes > 0) {
        text.resize(static_cast<std::size_t>(bytes) / sizeof(wchar_t));
        ImmGetCompositionStringW(input, GCS_RESULTSTR, text.data(), static_cast<DWORD>(bytes));
      }
      ImmReleaseContext(window, input);
    }
  }
  if (text.empty()) return DefWindowProcW(window, message.id, message.wide, message.low);
  const LPARAM rest =
      message.low & ~static_cast<LPARAM>(GCS_RESULTSTR | GCS_RESULTCLAUSE | GCS_RESULTREADSTR);
  if (rest) DefWindowProcW(window, message.id, message.wide, rest);
  Commit(window, text);
  return 0;
}

}  // namespace dossierkit::win32
