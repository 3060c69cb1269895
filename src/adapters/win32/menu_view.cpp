#include "adapters/win32/menu_view.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "adapters/win32/accessible.h"
#include "adapters/win32/list_box_view.h"
#include "adapters/win32/rows.h"
#include "adapters/win32/text_lines.h"
#include "adapters/win32/window_view.h"
#include "adapters/windows/texts.h"
#include "platform/files/disk.h"

namespace dossierkit::win32 {
namespace {

constexpr int kHeadHeight = 26;
constexpr int kIconSize = 32;
constexpr int kRowHeight = 38;
constexpr int kGap = 5;
constexpr int kRightMargin = 2;

}  // namespace

MenuView::MenuView(ViewContext& context, toolkit::VerticalMenu& menu)
    : NativeView(context, menu, NativeWindow()),
      menu_(menu),
      ground_(CreateSolidBrush(GetLook().Colors().base)),
      icons_([this](const std::string& path) {
        const int side = GetMetrics().Scaled(kIconSize);
        const auto icon = static_cast<HICON>(
            LoadImageW(nullptr, files::PathOf(path).c_str(), IMAGE_ICON, side, side, LR_LOADFROMFILE));
        if (icon) loaded_.push_back(icon);
        return icon;
      }) {
  list_ = CreateWindowExW(0, L"LISTBOX", L"",
                          WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS |
                              LBS_NOINTEGRALHEIGHT | LBS_NOTIFY,
                          0, 0, 0, 0, Handle(), nullptr, OwnModule(), nullptr);
  if (list_) context.application.Link(list_, *this);
}

MenuView::~MenuView() {
  if (WindowView* window = Window()) window->Tips().Forget(list_);
  if (list_) Context().application.Unlink(list_);
  DropIcons();
  DeleteObject(ground_);
}

void MenuView::DropIcons() {
  for (const HICON icon : loaded_) DestroyIcon(icon);
  loaded_.clear();
  icons_.Clear();
}

void MenuView::Lost() {
  NativeView::Lost();
  list_ = nullptr;
}

int MenuView::Head() const { return GetMetrics().Scaled(kHeadHeight); }

int MenuView::RowsInSight() const {
  RECT place = {};
  GetClientRect(list_, &place);
  return HeightOf(place) / GetMetrics().Scaled(kRowHeight);
}

bool MenuView::AnyIcon() {
  const auto& items = menu_.Items();
  return std::any_of(items.begin(), items.end(), [this](const toolkit::MenuItem& item) {
    return !item.icon.empty() && icons_.Of(item.icon);
  });
}

void MenuView::ShowPlacement() {
  NativeView::ShowPlacement();
  RECT place = {};
  GetClientRect(Handle(), &place);
  SetWindowPos(list_, nullptr, 0, Head(), WidthOf(place), std::max(0, HeightOf(place) - Head()),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// Its icons are loaded in the size that they show in.
void MenuView::Rescale(const Look& look) {
  const LRESULT top = Ask(LB_GETTOPINDEX);
  DropIcons();
  NativeView::Rescale(look);
  Ask(LB_SETTOPINDEX, static_cast<WPARAM>(top));
}

void MenuView::ShowStyle() {
  Ask(LB_SETITEMHEIGHT, 0, GetMetrics().Scaled(kRowHeight));
  Ask(WM_SETFONT, reinterpret_cast<WPARAM>(GetLook().FontOf(menu_.GetFont())), FALSE);
  NativeView::ShowStyle();
  InvalidateRect(list_, nullptr, FALSE);
}

void MenuView::ShowContent() {
  std::vector<std::wstring> captions;
  std::vector<std::string> pictures;
  for (const auto& item : menu_.Items()) {
    captions.push_back(windows::Wide(item.caption));
    pictures.push_back(item.icon);
  }
  if (captions != captions_ || pictures != pictures_) InvalidateRect(list_, nullptr, FALSE);
  pictures_ = std::move(pictures);
  if (captions != captions_) {
    const auto showing = Showing();
    captions_ = std::move(captions);
    Ask(WM_SETREDRAW, FALSE);
    Ask(LB_RESETCONTENT);
    for (const std::wstring& caption : captions_)
      Ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(caption.c_str()));
    Ask(WM_SETREDRAW, TRUE);
  }
  const std::wstring head = windows::Wide(menu_.menucaption());
  if (head != head_) {
    head_ = head;
    SetWindowTextW(Handle(), head.c_str());
    Repaint();
  }
  ShowSelection();
}

// A click marks, unmarks and marks again: the native list, which would paint at each, hears of the last.
void MenuView::ShowSelection() {
  const int current = std::exchange(current_, menu_.menuitemcur() - 1);
  const int marked = std::exchange(marked_, menu_.Marked() - 1);
  if (current != current_) {
    RepaintRow(current);
    RepaintRow(current_);
  }
  if (marked != marked_) {
    RepaintRow(marked);
    RepaintRow(marked_);
  }
  if (mark_waits_ || static_cast<int>(Ask(LB_GETCURSEL)) == marked_) return;
  mark_waits_ = true;
  Context().application.Later(Life(), [this] { ShowMark(); });
}

void MenuView::RepaintRow(int row) const {
  RECT place = {};
  if (row >= 0 && Ask(LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)) != LB_ERR)
    InvalidateRect(list_, &place, FALSE);
}

void MenuView::ShowMark() {
  mark_waits_ = false;
  if (!list_) return;
  const auto showing = Showing();
  if (static_cast<int>(Ask(LB_GETCURSEL)) != marked_) Ask(LB_SETCURSEL, static_cast<WPARAM>(marked_));
}

void MenuView::Paint(HDC device, const RECT& place) {
  const Palette& colors = GetLook().Colors();
  const RECT head = {0, 0, place.right, Head()};
  Fill(device, place, colors.base);
  Fill(device, head, colors.workspace);
  toolkit::Font font = menu_.GetFont();
  font.bold = true;
  PaintLine(device, GetLook().FontOf(font), colors.workspace_text, head, windows::Wide(menu_.menucaption()),
            DT_CENTER);
}

HBRUSH MenuView::Colours(HDC) { return ground_; }

bool MenuView::Draw(const DRAWITEMSTRUCT& item) {
  if (IsShowing()) return true;  // soon, with what else changed
  const int row = static_cast<int>(item.itemID);
  if (row < 0 || row >= menu_.menuitemsmax()) return true;
  const auto& model = menu_.Items()[static_cast<std::size_t>(row)];
  const Palette& colors = GetLook().Colors();
  const Metrics& metrics = GetMetrics();
  const RECT& place = item.rcItem;
  const bool enabled = IsWindowEnabled(Handle());
  const bool selected = row == menu_.menuitemcur() - 1;
  const bool marked = row == menu_.Marked() - 1 && GetFocus() == list_;
  win32::Fill(item.hDC, place,
              selected                     ? colors.selection
              : enabled && row == hovered_ ? colors.hover
                                           : colors.base);
  if (selected) PaintBar(item.hDC, GetLook(), place);
  if (marked) PaintEdge(item.hDC, Inset(place, 1), {colors.accent, metrics.Ring(), metrics.Radius()});
  if (const HICON icon = model.icon.empty() ? nullptr : icons_.Of(model.icon)) {
    const int side = metrics.Scaled(kIconSize);
    DrawIconEx(item.hDC, static_cast<int>(place.left) + metrics.Scaled(kBarWidth + kGap),
               static_cast<int>(place.top) + (HeightOf(place) - side) / 2, icon, side, side, 0, nullptr,
               DI_NORMAL);
  }
  const COLORREF ink = selected ? colors.selected_text : enabled ? colors.ink : colors.faint_ink;
  const RECT room = TextPlace(place);
  bool cut = false;
  const std::vector<std::wstring> lines = LinesOfItem(row, WidthOf(room), cut);
  const HFONT font = FontOfItem(row);
  const int spacing = GetLook().LineHeight(font);
  int top = static_cast<int>(room.top) + (HeightOf(room) - static_cast<int>(lines.size()) * spacing) / 2;
  for (const std::wstring& line : lines) {
    PaintLine(item.hDC, font, ink, {room.left, top, room.right, top + spacing}, line);
    top += spacing;
  }
  return true;
}

HFONT MenuView::FontOfItem(int row) const {
  toolkit::Font font = menu_.GetFont();
  font.bold = row == menu_.menuitemcur() - 1;
  return GetLook().FontOf(font);
}

RECT MenuView::TextPlace(const RECT& row) {
  const Metrics& metrics = GetMetrics();
  const int icon = AnyIcon() ? metrics.Scaled(kIconSize) + metrics.Scaled(kGap) : 0;
  return {row.left + metrics.Scaled(kBarWidth + kGap) + icon, row.top,
          row.right - metrics.Scaled(kRightMargin), row.bottom};
}

std::vector<std::wstring> MenuView::LinesOfItem(int row, int width, bool& cut) {
  const HFONT font = FontOfItem(row);
  std::vector<std::wstring> lines =
      LinesOf(GetLook(), windows::Wide(menu_.Items()[static_cast<std::size_t>(row)].caption), font,
              std::max(1, width));
  const int spacing = std::max(1, GetLook().LineHeight(font));
  const auto most = static_cast<std::size_t>(std::max(1, GetMetrics().Scaled(kRowHeight) / spacing));
  cut = lines.size() > most;
  if (cut) {
    lines.resize(most);
    lines.back() = Ended(GetLook(), std::move(lines.back()), font, width);
  }
  return lines;
}

// A choice from outside, by accessibility.
void MenuView::Commanded(WORD code) {
  if (code != LBN_SELCHANGE || IsShowing()) return;
  const int row = static_cast<int>(Ask(LB_GETCURSEL));
  Report([this, row] { menu_.UserMark(row + 1); });
}

void MenuView::Hover(int row) {
  if (hovered_ == row) return;
  hovered_ = row;
  InvalidateRect(list_, nullptr, FALSE);
  bool cut = false;
  RECT place = {};
  GetClientRect(list_, &place);
  if (row >= 0) LinesOfItem(row, WidthOf(TextPlace(place)), cut);
  if (WindowView* window = Window()) {
    window->Tips().Set(list_, {});
    if (cut) window->Tips().Set(list_, windows::Wide(menu_.Items()[static_cast<std::size_t>(row)].caption));
  }
  TRACKMOUSEEVENT leave = {sizeof leave, TME_LEAVE, list_, 0};
  if (row >= 0) TrackMouseEvent(&leave);
}

void MenuView::Release(int row) {
  const int pressed = std::exchange(pressed_, -1);
  if (row >= 0 && row == pressed) Report([this, row] { menu_.UserClick(row + 1); });
}

std::optional<LRESULT> MenuView::Receive(HWND window, const Message& message) {
  if (window != list_) {
    if (message.id == WM_ENABLE) InvalidateRect(list_, nullptr, FALSE);
    return NativeView::Receive(window, message);
  }
  const auto row = [&] { return RowOfList(list_, {GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)}); };
  switch (message.id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: pressed_ = row(); return 0;
    case WM_LBUTTONUP: Release(row()); return 0;
    case WM_MOUSEMOVE: Hover(row()); return 0;
    case WM_MOUSELEAVE: Hover(-1); return 0;
    case WM_GETOBJECT:
      if (static_cast<LONG>(message.low) == OBJID_CLIENT) {
        if (const LRESULT answer = AccessiblePart(
                window, message,
                windows::Wide(menu_.AccessibleName().empty() ? menu_.menucaption() : menu_.AccessibleName()),
                false))
          return answer;
      }
      return std::nullopt;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: RepaintRow(marked_); return std::nullopt;
    // The model moves by keys.
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_CONTEXTMENU:
    case WM_KEYDOWN:
    case WM_CHAR: return 0;
    default: return std::nullopt;
  }
}

}  // namespace dossierkit::win32
