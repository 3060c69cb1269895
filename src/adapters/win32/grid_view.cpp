#include "adapters/win32/grid_view.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>

#include "adapters/win32/rows.h"
#include "adapters/win32/window_view.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

constexpr int kRowPadding = 8;
constexpr int kHeadPadding = 10;
constexpr double kCellMargin = 5;
constexpr int kStep = 20;  // that an arrow scrolls sideways by

}  // namespace

GridView::GridView(ViewContext& context, toolkit::DataGrid& grid)
    : NativeView(context, grid,
                 {WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS}),
      grid_(grid),
      frame_(*this),
      filled_(grid.Fillings() - 1) {
  Ask(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  head_ = reinterpret_cast<HWND>(Ask(LVM_GETHEADER, 0, 0));
  if (head_) context.application.Link(head_, *this);
  frame_.SetFill(GetLook().Colors().base);
  Ask(LVM_SETBKCOLOR, 0, GetLook().Colors().base);
}

GridView::~GridView() {
  if (WindowView* window = Window()) window->Tips().Forget(head_);
  if (head_) Context().application.Unlink(head_);
  if (height_) {
    if (Handle()) Ask(LVM_SETIMAGELIST, LVSIL_SMALL, 0);
    ImageList_Destroy(height_);
  }
}

void GridView::Lost() {
  NativeView::Lost();
  head_ = nullptr;
}

int GridView::RowsInSight() const { return static_cast<int>(Ask(LVM_GETCOUNTPERPAGE, 0, 0)); }

int GridView::HeadHeight() const {
  return GetLook().LineHeight(GetLook().FontOf(grid_.HeadFont())) + GetMetrics().Scaled(kHeadPadding);
}

// --- what the user wants -------------------------------------------------------------------------

// Also behind the last column.
int GridView::RowUnder(int y) const {
  const int count = static_cast<int>(Ask(LVM_GETITEMCOUNT, 0, 0));
  const int top = static_cast<int>(Ask(LVM_GETTOPINDEX, 0, 0));
  RECT place = {LVIR_BOUNDS, 0, 0, 0};
  if (top >= count || !Ask(LVM_GETITEMRECT, static_cast<WPARAM>(top), &place) || y < place.top) return -1;
  const int row = top + (y - static_cast<int>(place.top)) / std::max(1, HeightOf(place));
  return row < count ? row : -1;
}

// The model shows what became of it.
void GridView::RowWanted(int row) {
  Report([this, row] { grid_.UserSelectRow(row + 1); });
}

void GridView::ColumnResized(int column, int pixels) {
  const auto width = static_cast<float>(GetMetrics().Twips(pixels));
  Report([&] { grid_.UserColumnWidth(static_cast<std::size_t>(column), width); });
}

void GridView::Scroll(int steps) const {
  Ask(LVM_SCROLL, static_cast<WPARAM>(steps * GetMetrics().Scaled(kStep)), 0);
}

std::optional<LRESULT> GridView::Receive(HWND window, const Message& message) {
  if (window == head_) return ReceiveHead(message);
  switch (message.id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (const int row = RowUnder(GET_Y_LPARAM(message.low)); row >= 0) RowWanted(row);
      return 0;
    case WM_MOUSEMOVE: ShowTip({GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)}); return std::nullopt;
    case WM_KEYDOWN:
      if (message.wide == VK_LEFT || message.wide == VK_RIGHT) Scroll(message.wide == VK_LEFT ? -1 : 1);
      return 0;
    // The model moves by keys.
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_CONTEXTMENU:
    case WM_CHAR: return 0;
    case WM_NOTIFY: {
      const auto& notice = *reinterpret_cast<const NMHEADERW*>(message.low);
      if (notice.hdr.hwndFrom != head_ || notice.hdr.code != static_cast<UINT>(HDN_ITEMCHANGEDW)) break;
      const LRESULT result = Native(window, message);
      if (!IsShowing() && notice.pitem && (notice.pitem->mask & HDI_WIDTH))
        ColumnResized(notice.iItem, notice.pitem->cxy);
      return result;
    }
    default: break;
  }
  if (const auto answer = frame_.Receive(window, message)) return answer;
  return NativeView::Receive(window, message);
}

std::optional<LRESULT> GridView::ReceiveHead(const Message& message) {
  switch (message.id) {
    case WM_MOUSEMOVE:
      ShowHeadTip({GET_X_LPARAM(message.low), GET_Y_LPARAM(message.low)});
      return std::nullopt;
    case HDM_LAYOUT: {
      const LRESULT result = Native(head_, message);
      const auto& layout = *reinterpret_cast<const HDLAYOUT*>(message.low);
      layout.pwpos->cy = HeadHeight();
      layout.prc->top = HeadHeight();
      return result;
    }
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_CONTEXTMENU: return 0;
    default: return std::nullopt;
  }
}

std::optional<LRESULT> GridView::Notified(NMHDR& notice) {
  if (notice.hwndFrom == head_) return HeadNotified(notice);
  const auto is = [&notice](int code) { return notice.code == static_cast<UINT>(code); };
  if (is(NM_CUSTOMDRAW)) return PaintRows(reinterpret_cast<NMLVCUSTOMDRAW&>(notice));
  if (is(LVN_GETDISPINFOW)) {
    auto& item = reinterpret_cast<NMLVDISPINFOW&>(notice).item;
    if (item.mask & LVIF_TEXT)
      lstrcpynW(item.pszText, CellText(item.iItem, item.iSubItem).c_str(), item.cchTextMax);
    return 0;
  }
  // A choice from outside, by accessibility.
  if (is(LVN_ITEMCHANGED) && !IsShowing()) {
    const auto& changed = reinterpret_cast<const NMLISTVIEW&>(notice);
    if (changed.iItem >= 0 && (changed.uNewState & ~changed.uOldState & LVIS_SELECTED))
      RowWanted(changed.iItem);
    return 0;
  }
  return std::nullopt;
}

// A column that is hidden stays so.
std::optional<LRESULT> GridView::HeadNotified(NMHDR& notice) const {
  if (notice.code == static_cast<UINT>(NM_CUSTOMDRAW))
    return PaintHead(reinterpret_cast<NMCUSTOMDRAW&>(notice));
  if (notice.code == static_cast<UINT>(HDN_BEGINTRACKW) ||
      notice.code == static_cast<UINT>(HDN_DIVIDERDBLCLICKW)) {
    const int column = reinterpret_cast<const NMHEADERW&>(notice).iItem;
    if (Ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0) == 0) return TRUE;
  }
  return std::nullopt;
}

// --- what the model has --------------------------------------------------------------------------

// A recordset that was closed meanwhile shows nothing more.
std::wstring GridView::CellText(int row, int column) {
  std::wstring text;
  Report([&] {
    if (row < grid_.RowCount() && column < static_cast<int>(grid_.ColumnCount()))
      text = windows::Wide(grid_.Cell(row + 1, static_cast<std::size_t>(column)));
  });
  return text;
}

void GridView::ShowStyle() {
  const HFONT font = GetLook().FontOf(grid_.GetFont());
  Ask(WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  if (head_)
    SendMessageW(head_, WM_SETFONT, reinterpret_cast<WPARAM>(GetLook().FontOf(grid_.HeadFont())), FALSE);
  const HIMAGELIST before = height_;
  height_ =
      ImageList_Create(1, GetLook().LineHeight(font) + GetMetrics().Scaled(kRowPadding), ILC_COLOR, 1, 0);
  Ask(LVM_SETIMAGELIST, LVSIL_SMALL, height_);
  if (before) ImageList_Destroy(before);
  NativeView::ShowStyle();
}

void GridView::Rescale(const Look& look) {
  const double by = look.GetMetrics().GetScale().Factor() / GetMetrics().GetScale().Factor();
  const LRESULT top = Ask(LVM_GETTOPINDEX, 0, 0);
  const auto across = std::lround(GetScrollPos(Handle(), SB_HORZ) * by);
  NativeView::Rescale(look);
  ShowWidths();
  // What was scrolled to, in the rows and columns of another size.
  RECT row = {LVIR_BOUNDS, 0, 0, 0};
  if (!Ask(LVM_GETITEMRECT, 0, &row)) return;
  const LRESULT down = (top - Ask(LVM_GETTOPINDEX, 0, 0)) * HeightOf(row);
  Ask(LVM_SCROLL, static_cast<WPARAM>(across - GetScrollPos(Handle(), SB_HORZ)), down);
}

int GridView::WidthOfColumn(std::size_t column) const {
  const float width = grid_.ColumnWidth(column);
  return width <= 0 ? 0 : std::max(1, GetMetrics().Pixels(static_cast<double>(width)));
}

void GridView::Reset() {
  const auto showing = Showing();
  Ask(WM_SETREDRAW, FALSE, 0);
  while (Ask(LVM_DELETECOLUMN, 0, 0)) {
  }
  for (std::size_t i = 0; i < grid_.ColumnCount(); ++i) {
    std::wstring heading = windows::Wide(grid_.Heading(i));
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_SUBITEM | LVCF_WIDTH;
    column.pszText = heading.data();
    column.cx = WidthOfColumn(i);
    column.iSubItem = static_cast<int>(i);
    Ask(LVM_INSERTCOLUMNW, i, &column);
  }
  Ask(LVM_SETITEMCOUNT, static_cast<WPARAM>(grid_.RowCount()), 0);
  Ask(WM_SETREDRAW, TRUE, 0);
  Repaint();
}

void GridView::ShowWidths() {
  const auto showing = Showing();
  for (std::size_t column = 0; column < grid_.ColumnCount(); ++column) {
    const int pixels = WidthOfColumn(column);
    if (static_cast<int>(Ask(LVM_GETCOLUMNWIDTH, column, 0)) != pixels)
      Ask(LVM_SETCOLUMNWIDTH, column, MAKELPARAM(pixels, 0));
  }
}

void GridView::ShowContent() {
  if (filled_ != grid_.Fillings()) {
    filled_ = grid_.Fillings();
    Reset();
  }
  ShowWidths();
  ShowSelection();
}

void GridView::ShowSelection() {
  const int row = grid_.Row() - 1;
  const auto showing = Showing();
  if (row < static_cast<int>(Ask(LVM_GETITEMCOUNT, 0, 0))) {
    const UINT wanted = row >= 0 && grid_.ShowsRow() ? LVIS_SELECTED | LVIS_FOCUSED : LVIS_FOCUSED;
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    const bool shown = row >= 0 && (static_cast<UINT>(Ask(LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                                                          LVIS_SELECTED | LVIS_FOCUSED)) == wanted);
    if (!shown) {
      Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), &state);
      state.state = wanted;
      if (row >= 0) Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), &state);
    }
    if (row >= 0) {
      // Down and up alone: what the user scrolled to sideways stays.
      const int before = GetScrollPos(Handle(), SB_HORZ);
      Ask(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
      if (const int by = before - GetScrollPos(Handle(), SB_HORZ))
        Ask(LVM_SCROLL, static_cast<WPARAM>(by), 0);
    }
  }
}

void GridView::ShowTip(POINT at) {
  std::wstring tip = windows::Wide(grid_.ToolTipText());
  RECT place = {LVIR_BOUNDS, 0, 0, 0};
  const int row = RowUnder(static_cast<int>(at.y));
  if (row >= 0 && Ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), &place)) {
    LONG left = place.left;
    for (std::size_t column = 0; column < grid_.ColumnCount(); ++column) {
      const auto width = static_cast<LONG>(Ask(LVM_GETCOLUMNWIDTH, column, 0));
      if (at.x >= left && at.x < left + width) {
        const std::wstring text = CellText(row, static_cast<int>(column));
        const int room = static_cast<int>(width) - 2 * GetMetrics().Scaled(kCellMargin);
        if (GetLook().TextWidth(GetLook().FontOf(grid_.GetFont()), text) > room) tip = text;
      }
      left += width;
    }
  }
  if (tip == tip_) return;
  // Another cell: what shows of the one before goes.
  tip_ = tip;
  SetTip({});
  SetTip(tip);
}

void GridView::ShowHeadTip(POINT at) const {
  HDHITTESTINFO hit = {at, 0, -1};
  SendMessageW(head_, HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  std::wstring tip;
  if (hit.iItem >= 0 && hit.iItem < static_cast<int>(grid_.ColumnCount())) {
    const auto column = static_cast<std::size_t>(hit.iItem);
    const std::wstring text = windows::Wide(grid_.Heading(column));
    const int room =
        static_cast<int>(Ask(LVM_GETCOLUMNWIDTH, column, 0)) - 2 * GetMetrics().Scaled(kCellMargin);
    if (GetLook().TextWidth(GetLook().FontOf(grid_.HeadFont()), text) > room) tip = text;
  }
  if (WindowView* window = Window()) window->Tips().Set(head_, tip);
}

// --- painting ------------------------------------------------------------------------------------

LRESULT GridView::PaintRows(NMLVCUSTOMDRAW& drawing) {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
    painted_widths_.clear();
    for (std::size_t column = 0; column < grid_.ColumnCount(); ++column)
      painted_widths_.push_back(static_cast<LONG>(Ask(LVM_GETCOLUMNWIDTH, column, 0)));
    painted_with_keyboard_ = GetFocus() == Handle();
    return CDRF_NOTIFYITEMDRAW;
  }
  if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const auto row = static_cast<int>(drawing.nmcd.dwItemSpec);
  RECT place = {LVIR_BOUNDS, 0, 0, 0};
  if (!Ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), &place)) return CDRF_SKIPDEFAULT;
  const HDC device = drawing.nmcd.hdc;
  const Palette& colors = GetLook().Colors();
  const bool chosen = row == grid_.Row() - 1 && grid_.ShowsRow();
  const RowLook look =
      LookOfRow(colors, chosen, painted_with_keyboard_,
                {row % 2 ? colors.other_base : colors.base,
                 IsWindowEnabled(Handle()) ? GetLook().ColorOf(grid_.ForeColor()) : colors.faint_ink, false});
  RECT client = {};
  GetClientRect(Handle(), &client);
  // The chosen row runs on to the edge behind the last column.
  const RECT filled = {place.left, place.top, chosen ? client.right : place.right, place.bottom};
  Fill(device, filled, look.fill);
  const HFONT font = GetLook().FontOf(grid_.GetFont());
  const int margin = GetMetrics().Scaled(kCellMargin);
  RECT cell = place;
  for (std::size_t column = 0; column < std::min(grid_.ColumnCount(), painted_widths_.size()); ++column) {
    const LONG width = painted_widths_[column];
    cell.right = cell.left + width;
    if (width > 0 && cell.right > 0 && cell.left < client.right) {
      const RECT text = {cell.left + margin, cell.top, cell.right - margin, cell.bottom - 1};
      PaintLine(device, font, look.ink, text, CellText(row, static_cast<int>(column)));
      Fill(device, {cell.right - 1, cell.top, cell.right, cell.bottom}, colors.cell_line);
      Fill(device, {cell.left, cell.bottom - 1, cell.right, cell.bottom}, colors.cell_line);
    }
    cell.left = cell.right;
  }
  if (look.bar) PaintBar(device, GetLook(), {std::max(0L, place.left), place.top, place.right, place.bottom});
  return CDRF_SKIPDEFAULT;
}

LRESULT GridView::PaintHead(NMCUSTOMDRAW& drawing) const {
  const Palette& colors = GetLook().Colors();
  const HDC device = drawing.hdc;
  RECT place = drawing.rc;
  if (drawing.dwDrawStage == CDDS_PREPAINT) {
    GetClientRect(head_, &place);
    Fill(device, place, colors.bar);
    Fill(device, {place.left, place.bottom - 1, place.right, place.bottom}, colors.line);
    return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
  }
  if (drawing.dwDrawStage == CDDS_POSTPAINT) {
    // Behind the last column.
    RECT last = {};
    const int count = static_cast<int>(SendMessageW(head_, HDM_GETITEMCOUNT, 0, 0));
    if (count > 0)
      SendMessageW(head_, HDM_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    GetClientRect(head_, &place);
    place.left = last.right;
    Fill(device, place, colors.bar);
    Fill(device, {place.left, place.bottom - 1, place.right, place.bottom}, colors.line);
    return CDRF_DODEFAULT;
  }
  if (drawing.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  Fill(device, place, colors.bar);
  Fill(device, {place.left, place.bottom - 1, place.right, place.bottom}, colors.line);
  Fill(device, {place.right - 1, place.top, place.right, place.bottom}, colors.line);
  const int margin = GetMetrics().Scaled(kCellMargin);
  const RECT text = {place.left + margin, place.top, place.right - margin, place.bottom};
  const auto column = static_cast<std::size_t>(drawing.dwItemSpec);
  if (column < grid_.ColumnCount())
    PaintLine(device, GetLook().FontOf(grid_.HeadFont()), colors.ink, text,
              windows::Wide(grid_.Heading(column)));
  return CDRF_SKIPDEFAULT;
}

}  // namespace dossierkit::win32
