#include "adapters/win32/menu_view.h"

#include <windowsx.h>

#include <algorithm>

#include "adapters/win32/list_box_view.h"
#include "adapters/win32/rows.h"
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
  Ask(LB_SETITEMHEIGHT, 0, GetMetrics().Scaled(kRowHeight));
}

MenuView::~MenuView() {
  if (list_) Context().application.Unlink(list_);
  for (const HICON icon : loaded_) DestroyIcon(icon);
  DeleteObject(ground_);
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

void MenuView::ShowStyle() {
  Ask(WM_SETFONT, reinterpret_cast<WPARAM>(GetLook().FontOf(menu_.GetFont())), FALSE);
  SetWindowTextW(Handle(), windows::Wide(menu_.menucaption()).c_str());
  NativeView::ShowStyle();
}

void MenuView::ShowContent() {
  std::vector<std::wstring> captions;
  for (const auto& item : menu_.Items()) captions.push_back(windows::Wide(item.caption));
  if (captions != captions_) {
    const auto showing = Showing();
    captions_ = std::move(captions);
    Ask(WM_SETREDRAW, FALSE);
    Ask(LB_RESETCONTENT);
    for (const std::wstring& caption : captions_)
      Ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(caption.c_str()));
    Ask(WM_SETREDRAW, TRUE);
  }
  SetWindowTextW(Handle(), windows::Wide(menu_.menucaption()).c_str());
  Repaint();
  ShowSelection();
}

void MenuView::ShowSelection() {
  const int row = menu_.Marked() - 1;
  const auto showing = Showing();
  if (static_cast<int>(Ask(LB_GETCURSEL)) != row) Ask(LB_SETCURSEL, static_cast<WPARAM>(row));
  InvalidateRect(list_, nullptr, FALSE);
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
  SetTextColor(item.hDC, selected ? colors.selected_text : enabled ? colors.ink : colors.faint_ink);
  PaintText(item.hDC, place, windows::Wide(model.caption), selected);
  return true;
}

// In as many lines as a row has room for.
void MenuView::PaintText(HDC device, const RECT& row, const std::wstring& caption, bool selected) {
  toolkit::Font model = menu_.GetFont();
  model.bold = selected;
  const HFONT font = GetLook().FontOf(model);
  const Selected drawn(device, font);
  SetBkMode(device, TRANSPARENT);
  const Metrics& metrics = GetMetrics();
  const int icon = AnyIcon() ? metrics.Scaled(kIconSize) + metrics.Scaled(kGap) : 0;
  RECT room = row;
  room.left += metrics.Scaled(kBarWidth + kGap) + icon;
  room.right -= metrics.Scaled(kRightMargin);
  constexpr UINT kFormat = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX;
  RECT needed = room;
  const int size = static_cast<int>(caption.size());
  DrawTextW(device, caption.c_str(), size, &needed, kFormat | DT_CALCRECT);
  const int line = std::max(1, GetLook().LineHeight(font));
  const int height = std::min(HeightOf(needed), HeightOf(row) / line * line);
  room.top += (HeightOf(row) - height) / 2;
  room.bottom = room.top + height;
  DrawTextW(device, caption.c_str(), size, &room, kFormat | DT_END_ELLIPSIS);
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
  TRACKMOUSEEVENT leave = {sizeof leave, TME_LEAVE, list_, 0};
  if (row >= 0) TrackMouseEvent(&leave);
}

void MenuView::Release(int row) {
  const int pressed = std::exchange(pressed_, -1);
  if (row >= 0 && row == pressed) Report([this, row] { menu_.UserClick(row + 1); });
}

std::optional<LRESULT> MenuView::Receive(HWND window, const Message& message) {
  if (window != list_) return NativeView::Receive(window, message);
  const auto row = [&] { return RowOfList(list_, {GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)}); };
  switch (message.id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: pressed_ = row(); return 0;
    case WM_LBUTTONUP: Release(row()); return 0;
    case WM_MOUSEMOVE: Hover(row()); return 0;
    case WM_MOUSELEAVE: Hover(-1); return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: InvalidateRect(list_, nullptr, FALSE); return std::nullopt;
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
