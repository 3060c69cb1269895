#include "adapters/win32/list_box_view.h"

#include <algorithm>

#include "adapters/win32/rows.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

constexpr double kItemMargin = 4;  // beside the text of a row
constexpr double kItemPadding = 4;

}  // namespace

// Windows tells the lower half of the number alone, and below the last row that one.
int RowOfList(HWND list, POINT at) {
  const LRESULT told = SendMessageW(list, LB_ITEMFROMPOINT, 0, MAKELPARAM(at.x, at.y));
  if (HIWORD(told) != 0) return -1;
  const int top = static_cast<int>(SendMessageW(list, LB_GETTOPINDEX, 0, 0));
  const int row = top + ((static_cast<int>(LOWORD(told)) - top) & 0xFFFF);
  RECT place = {};
  const bool there = SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row),
                                  reinterpret_cast<LPARAM>(&place)) != LB_ERR;
  return there && PtInRect(&place, at) ? row : -1;
}

ListBoxView::ListBoxView(ViewContext& context, toolkit::ListBox& list)
    : ItemView(
          context, list,
          {L"LISTBOX", WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_NODATA | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY}),
      list_(list) {}

int ListBoxView::RowUnder(POINT at) const { return RowOfList(Handle(), at); }

int ListBoxView::RowAt(int x, int y) const {
  return Handle() ? RowUnder({GetMetrics().Pixels(x), GetMetrics().Pixels(y)}) : -1;
}

int ListBoxView::RowsInSight() const {
  RECT place = {};
  GetClientRect(Handle(), &place);
  return HeightOf(place) / std::max(1, static_cast<int>(Ask(LB_GETITEMHEIGHT)));
}

bool ListBoxView::Want(int row) {
  return ReportAndShow([&] { list_.UserSelect(row); });
}

bool ListBoxView::Press(POINT at) {
  const int row = RowUnder(at);
  return row >= 0 && Want(row);
}

void ListBoxView::DoubleClick() {
  ReportAndShow([this] { list_.UserDblClick(); });
}

// A choice from outside, by accessibility.
void ListBoxView::Commanded(WORD code) {
  if (code == LBN_SELCHANGE && !IsShowing()) Want(static_cast<int>(Ask(LB_GETCURSEL)));
}

void ListBoxView::ShowStyle() {
  ItemView::ShowStyle();
  const int line = GetLook().LineHeight(GetLook().FontOf(list_.GetFont()));
  Ask(LB_SETITEMHEIGHT, 0, line + GetMetrics().Scaled(kItemPadding));
}

void ListBoxView::Rescale(const Look& look) {
  const LRESULT top = Ask(LB_GETTOPINDEX);
  ItemView::Rescale(look);
  Ask(LB_SETTOPINDEX, static_cast<WPARAM>(top));
}

bool ListBoxView::Draw(const DRAWITEMSTRUCT& item) {
  const int row = static_cast<int>(item.itemID);
  // What Windows draws around the row that has the keyboard is in none of our looks.
  if (row < 0 || (item.itemAction & ~static_cast<UINT>(ODA_FOCUS)) == 0) return true;
  const bool enabled = IsWindowEnabled(Handle());
  const Palette& colors = GetLook().Colors();
  const RowLook look = LookOfRow(colors, row == list_.ListIndex(), HasKeyboard(),
                                 {GetLook().ColorOf(list_.BackColor()),
                                  enabled ? GetLook().ColorOf(list_.ForeColor()) : colors.faint_ink, false});
  win32::Fill(item.hDC, item.rcItem, look.fill);
  if (look.bar) PaintBar(item.hDC, GetLook(), item.rcItem);
  const int margin = GetMetrics().Scaled(kItemMargin);
  RECT place = item.rcItem;
  place.left += margin;
  place.right -= margin;
  PaintLine(item.hDC, GetLook().FontOf(list_.GetFont()), look.ink, place, windows::Wide(list_.List(row)));
  return true;
}

// Windows keeps their number alone: each text is asked for where its row is painted or spoken.
void ListBoxView::Drop() { Ask(LB_SETCOUNT, 0); }

void ListBoxView::Fill() {
  Ask(LB_SETCOUNT, static_cast<WPARAM>(list_.ListCount()));
  Repaint();
}

void ListBoxView::Compare() {
  const int row = list_.ListIndex();
  if (static_cast<int>(Ask(LB_GETCURSEL)) != row) Ask(LB_SETCURSEL, static_cast<WPARAM>(row));
}

}  // namespace dossierkit::win32
