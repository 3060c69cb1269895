#include "tests/support/win32_user.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "adapters/win32/window_view.h"
#include "adapters/windows/texts.h"
#include "platform/environment/text.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/tree_view.h"
#include "platform/toolkit/controls/user_control.h"

namespace dossierkit::tests {
namespace {

// The keys that are down, for as long as it lives.
class Held {
 public:
  explicit Held(int shift) {
    GetKeyboardState(before_.data());
    auto keys = before_;
    const auto hold = [&](int key, bool down) { keys[static_cast<std::size_t>(key)] = down ? 0x80 : 0; };
    for (const int key : {VK_SHIFT, VK_LSHIFT}) hold(key, shift & toolkit::kShift);
    for (const int key : {VK_CONTROL, VK_LCONTROL}) hold(key, shift & toolkit::kCtrl);
    for (const int key : {VK_MENU, VK_LMENU}) hold(key, shift & toolkit::kAlt);
    changed_ = keys != before_;
    if (changed_) SetKeyboardState(keys.data());
  }
  ~Held() {
    if (changed_) SetKeyboardState(before_.data());
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  std::array<BYTE, 256> before_ = {};
  bool changed_ = false;
};

struct Presses {
  UINT down;
  UINT twice;
  UINT up;
  WPARAM held;
};

Presses PressesOf(int button) {
  switch (button) {
    case toolkit::kRightButton: return {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK, WM_RBUTTONUP, MK_RBUTTON};
    case toolkit::kMiddleButton: return {WM_MBUTTONDOWN, WM_MBUTTONDBLCLK, WM_MBUTTONUP, MK_MBUTTON};
    default: return {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_LBUTTONUP, MK_LBUTTON};
  }
}

}  // namespace

void RunMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void PressAt(HWND window, int key, int shift) {
  const Held held(shift);
  const bool alt = (shift & toolkit::kAlt) && !(shift & toolkit::kCtrl);
  const auto code = static_cast<WPARAM>(key);
  const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC)) << 16 | 1;
  const LPARAM context = alt ? 1 << 29 : 0;
  PostMessageW(window, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, code, scan | context);
  RunMessages();
  if (!IsWindow(window)) return;
  PostMessageW(window, alt ? WM_SYSKEYUP : WM_KEYUP, code, scan | context | (LPARAM{3} << 30));
  RunMessages();
}

void ClickAt(HWND window, POINT place, int button, bool twice) {
  ClientToScreen(window, &place);
  const HWND target = WindowFromPoint(place);
  ScreenToClient(target, &place);
  const Presses presses = PressesOf(button);
  const LPARAM at = MAKELPARAM(place.x, place.y);
  PostMessageW(target, twice ? presses.twice : presses.down, presses.held, at);
  PostMessageW(target, presses.up, 0, at);
  RunMessages();
}

toolkit::Form& Win32User::Window() {
  toolkit::Form* form = desktop_.TopmostForm();
  if (!form) throw std::logic_error("no window is open");
  return *form;
}

std::shared_ptr<toolkit::Control> Win32User::Find(const std::string& name) {
  for (const auto& control : Window().Controls()) {
    if (control->Name() == name) return control;
    if (const auto* page = dynamic_cast<const toolkit::UserControl*>(control.get())) {
      if (auto found = page->Controls().Find(name)) return found;
    }
  }
  throw std::logic_error("no control " + name);
}

win32::NativeView& Win32User::ViewOf(const std::string& name) {
  toolkit::Form& form = Window();
  auto* view = static_cast<win32::NativeView*>(name == form.Name() ? form.GetView() : Find(name)->GetView());
  if (!view || !view->Handle()) throw std::logic_error("no view of " + name);
  return *view;
}

HWND Win32User::NativeWindow() { return ViewOf(Window().Name()).Handle(); }

HWND Win32User::Target() {
  const HWND window = NativeWindow();
  const HWND focus = GetFocus();
  return focus && IsChild(window, focus) ? focus : window;
}

HWND Win32User::Reveal(const std::string& name, POINT& place) {
  RunMessages();  // what came one by one shows now
  win32::NativeView& view = ViewOf(name);
  static_cast<win32::WindowView&>(ViewOf(Window().Name())).BringIntoSight(view);
  RECT outer;
  GetWindowRect(view.Handle(), &outer);
  place = {outer.left + std::min(10L, (outer.right - outer.left) / 2),
           outer.top + std::min(10L, (outer.bottom - outer.top) / 2)};
  ScreenToClient(view.Handle(), &place);
  return view.Handle();
}

void Win32User::Click(const std::string& name, int button) {
  POINT place;
  const HWND window = Reveal(name, place);
  ClickAt(window, place, button);
}

void Win32User::DoubleClick(const std::string& name) {
  POINT place;
  const HWND window = Reveal(name, place);
  // In a list or a tree the chosen row.
  RECT row = {};
  const auto kind = Find(name)->GetKind();
  const bool chosen = kind == toolkit::Kind::kListBox
                          ? SendMessageW(window, LB_GETITEMRECT,
                                         static_cast<WPARAM>(SendMessageW(window, LB_GETCURSEL, 0, 0)),
                                         reinterpret_cast<LPARAM>(&row)) != LB_ERR
                          : kind == toolkit::Kind::kTreeView &&
                                TreeView_GetItemRect(window, TreeView_GetSelection(window), &row, TRUE);
  if (chosen) place = {row.left + 2, (row.top + row.bottom) / 2};
  ClickAt(window, place);
  ClickAt(window, place, toolkit::kLeftButton, true);
}

HWND Win32User::PartOf(const std::string& name, const wchar_t* window_class) {
  const HWND part = FindWindowExW(ViewOf(name).Handle(), nullptr, window_class, nullptr);
  if (!part) throw std::logic_error("no part of " + name);
  return part;
}

HWND Win32User::ToolbarButton(const std::string& key) {
  for (const auto& control : Window().Controls()) {
    const auto* bar = dynamic_cast<const toolkit::Toolbar*>(control.get());
    if (!bar) continue;
    // A window for each button, in their order.
    HWND button = nullptr;
    for (const toolkit::ToolbarButton& model : bar->Buttons()) {
      if (model.IsSeparator()) continue;
      button = FindWindowExW(ViewOf(bar->Name()).Handle(), button, nullptr, nullptr);
      if (model.Key() == key) return button;
    }
  }
  throw std::logic_error("no toolbar button " + key);
}

void Win32User::ClickToolbar(const std::string& key) { ClickAt(ToolbarButton(key), {5, 5}); }

// The middle of the left of a row, whether the list stands where it shows or not.
void Win32User::ClickInList(HWND list, int row) {
  RECT place = {};
  SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
  if (SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)) ==
      LB_ERR)
    throw std::logic_error("no row " + std::to_string(row));
  ClickAt(list, {place.left + 20, (place.top + place.bottom) / 2});
}

void Win32User::ClickMenu(int item) {
  for (const auto& control : Window().Controls()) {
    if (control->GetKind() == toolkit::Kind::kVerticalMenu)
      return ClickInList(PartOf(control->Name(), L"LISTBOX"), item - 1);
  }
  throw std::logic_error("no menu");
}

void Win32User::ClickListRow(const std::string& name, int row) {
  POINT place;
  ClickInList(Reveal(name, place), row);
}

void Win32User::ClickRow(int row) {
  const HWND grid = ViewOf("DGItems").Handle();
  SendMessageW(grid, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row - 1), FALSE);
  RECT place = {LVIR_BOUNDS, 0, 0, 0};
  if (!SendMessageW(grid, LVM_GETITEMRECT, static_cast<WPARAM>(row - 1), reinterpret_cast<LPARAM>(&place)))
    throw std::logic_error("no row " + std::to_string(row));
  ClickAt(grid, {std::max(0L, place.left) + 20, (place.top + place.bottom) / 2});
}

HTREEITEM Win32User::ItemOf(HWND tree, int node, HTREEITEM first) {
  for (HTREEITEM item = first; item; item = TreeView_GetNextSibling(tree, item)) {
    TVITEMW asked = {};
    asked.mask = TVIF_PARAM;
    asked.hItem = item;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
    if (asked.lParam == node) return item;
    if (const HTREEITEM found = ItemOf(tree, node, TreeView_GetChild(tree, item))) return found;
  }
  return nullptr;
}

RECT Win32User::PlaceOfNode(HWND tree, const std::string& name, const std::string& key) {
  const int node = Find<toolkit::TreeView>(name)->Nodes().Find(key).Index();
  const HTREEITEM item = ItemOf(tree, node, TreeView_GetRoot(tree));
  RECT place = {};
  if (item) SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
  if (!item || !TreeView_GetItemRect(tree, item, &place, TRUE)) throw std::logic_error("no node " + key);
  return place;
}

void Win32User::ClickNode(const std::string& name, const std::string& key) {
  POINT at;
  const HWND tree = Reveal(name, at);
  const RECT place = PlaceOfNode(tree, name, key);
  ClickAt(tree, {place.left + 2, (place.top + place.bottom) / 2});
}

void Win32User::FoldNode(const std::string& name, const std::string& key) {
  POINT at;
  const HWND tree = Reveal(name, at);
  const RECT place = PlaceOfNode(tree, name, key);
  for (TVHITTESTINFO hit = {{place.left, (place.top + place.bottom) / 2}, 0, nullptr}; hit.pt.x >= 0;
       --hit.pt.x) {
    SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (hit.flags & TVHT_ONITEMBUTTON) return ClickAt(tree, hit.pt);
  }
  throw std::logic_error("no mark beside the node " + key);
}

void Win32User::SelectTab(const std::string& name, int tab) {
  const HWND tabs = PartOf(name, WC_TABCONTROLW);
  RECT place = {};
  if (!SendMessageW(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&place)))
    throw std::logic_error("no tab " + std::to_string(tab));
  ClickAt(tabs, {(place.left + place.right) / 2, (place.top + place.bottom) / 2});
}

void Win32User::Type(const std::string& text) {
  for (const std::string& character : environment::Characters(text)) {
    const std::wstring wide = windows::Wide(character);
    const SHORT key = VkKeyScanW(wide[0]);
    if (character.size() == 1 && key != -1) {
      Press(key & 0xFF, key >> 8);
    } else {
      for (const wchar_t unit : wide) SendMessageW(Target(), WM_IME_CHAR, static_cast<WPARAM>(unit), 0);
      RunMessages();
    }
  }
}

void Win32User::Press(int key, int shift) { PressAt(Target(), key, shift); }

void Win32User::Paste(const std::string& text) {
  desktop_.GetPlatform().SetClipboardText(text);
  Press('V', toolkit::kCtrl);
}

void Win32User::Close() {
  PostMessageW(NativeWindow(), WM_CLOSE, 0, 0);
  RunMessages();
}

}  // namespace dossierkit::tests
