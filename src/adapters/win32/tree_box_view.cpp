#include "adapters/win32/tree_box_view.h"

#include <cmath>

#include "adapters/win32/rows.h"
#include "adapters/windows/texts.h"

namespace dossierkit::win32 {
namespace {

using toolkit::kNoNode;

constexpr int kIndentation = 16;
constexpr int kRowPadding = 5;
// Windows lays out the whole tree for each node that it opens: with more of them it is filled anew.
constexpr int kFoldsOneByOne = 8;

std::size_t PlaceOf(int node) { return static_cast<std::size_t>(node); }

}  // namespace

TreeBoxView::TreeBoxView(ViewContext& context, toolkit::TreeView& tree)
    : ItemView(context, tree,
               {WC_TREEVIEWW, TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_FULLROWSELECT |
                                  TVS_DISABLEDRAGDROP | TVS_NONEVENHEIGHT}),
      tree_(tree) {}

int TreeBoxView::RowsInSight() const { return static_cast<int>(Ask(TVM_GETVISIBLECOUNT, 0, 0)); }

int TreeBoxView::NodeOf(HTREEITEM item) const {
  TVITEMW asked = {};
  asked.mask = TVIF_PARAM | TVIF_HANDLE;
  asked.hItem = item;
  return item && Ask(TVM_GETITEMW, 0, &asked) ? static_cast<int>(asked.lParam) : kNoNode;
}

HTREEITEM TreeBoxView::ItemOf(int node) {
  if (node == kNoNode || PlaceOf(node) >= items_.size()) return nullptr;
  if (!items_[PlaceOf(node)]) {
    const int parent = tree_.Nodes().Parent(node);
    if (parent == kNoNode || !ItemOf(parent)) return nullptr;
    AddChildren(parent);
  }
  return items_[PlaceOf(node)];
}

bool TreeBoxView::IsOpen(int node) const {
  return tree_.Nodes().IsOpen(node) && tree_.Nodes().ChildCount(node) > 0;
}

// Those that are open come open, with what stands below them.
void TreeBoxView::AddChildren(int node) {
  const auto& nodes = tree_.Nodes();
  if (node != kNoNode && std::exchange(filled_[PlaceOf(node)], 1)) return;
  for (int child = nodes.FirstChild(node); child != kNoNode; child = nodes.Next(child)) {
    if (PlaceOf(child) >= items_.size()) break;  // came since
    std::wstring text = windows::Wide(nodes.TextOf(child));
    TVINSERTSTRUCTW wanted = {};
    wanted.hParent = node == kNoNode ? TVI_ROOT : items_[PlaceOf(node)];
    wanted.hInsertAfter = TVI_LAST;
    wanted.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN | TVIF_STATE;
    wanted.item.pszText = text.data();
    wanted.item.cChildren = nodes.ChildCount(child) > 0;
    wanted.item.lParam = child;
    wanted.item.stateMask = TVIS_EXPANDED;
    wanted.item.state = IsOpen(child) ? TVIS_EXPANDED : 0;
    items_[PlaceOf(child)] = reinterpret_cast<HTREEITEM>(Ask(TVM_INSERTITEMW, 0, &wanted));
    open_[PlaceOf(child)] = IsOpen(child);
    if (IsOpen(child)) AddChildren(child);
  }
}

// --- what the user wants -------------------------------------------------------------------------

bool TreeBoxView::Press(POINT at) {
  TVHITTESTINFO hit = {at, 0, nullptr};
  Ask(TVM_HITTEST, 0, &hit);
  const int node = NodeOf(hit.hItem);
  if (node == kNoNode) return false;
  if (hit.flags & TVHT_ONITEMBUTTON) {
    Fold(node, !tree_.Nodes().IsOpen(node));
    return false;
  }
  return ReportAndShow([&] { tree_.UserSelect(node); });
}

void TreeBoxView::DoubleClick() {
  ReportAndShow([this] { tree_.UserDblClick(); });
}

void TreeBoxView::Fold(int node, bool expanded) {
  ReportAndShow([&] {
    --foldings_;  // compares all, also where the model does not follow
    tree_.UserExpand(node, expanded);
  });
}

std::optional<LRESULT> TreeBoxView::Receive(HWND window, const Message& message) {
  if (message.id != TVM_EXPAND || IsShowing()) return ItemView::Receive(window, message);
  // From outside (accessibility): Windows tells it the first time at most.
  const auto item = reinterpret_cast<HTREEITEM>(message.low);
  const int node = NodeOf(item);
  if (node == kNoNode || PlaceOf(node) >= open_.size()) return 0;
  AddChildren(node);
  const LRESULT result = Native(window, message);
  const bool expanded = Ask(TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) & TVIS_EXPANDED;
  open_[PlaceOf(node)] = expanded;
  Fold(node, expanded);
  return result;
}

std::optional<LRESULT> TreeBoxView::Notified(NMHDR& notice) {
  const auto is = [&notice](int code) { return notice.code == static_cast<UINT>(code); };
  if (is(NM_CUSTOMDRAW)) return PaintNode(reinterpret_cast<NMTVCUSTOMDRAW&>(notice));
  if (is(TVN_SELCHANGEDW) && !IsShowing()) {
    const int node = NodeOf(reinterpret_cast<const NMTREEVIEWW&>(notice).itemNew.hItem);
    if (node != kNoNode && node != tree_.SelectedItem()) ReportAndShow([&] { tree_.UserSelect(node); });
    return 0;
  }
  return std::nullopt;
}

LRESULT TreeBoxView::PaintNode(NMTVCUSTOMDRAW& drawing) const {
  const auto node = static_cast<int>(drawing.nmcd.lItemlParam);
  switch (drawing.nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: {
      if (!tree_.Nodes().Has(node)) return CDRF_DODEFAULT;
      const Palette& colors = GetLook().Colors();
      const RowLook look = LookOfRow(
          colors, node == tree_.SelectedItem(), HasKeyboard(),
          {GetLook().ColorOf(tree_.BackColor()),
           IsWindowEnabled(Handle()) ? GetLook().InkOn(GetLook().ColorOf(tree_.BackColor()),
                                                       GetLook().ColorOf(tree_.Nodes().ColorOf(node)))
                                     : colors.faint_ink,
           false});
      drawing.clrText = look.ink;
      drawing.clrTextBk = look.fill;
      // Nothing of Windows' own looks of a chosen row.
      drawing.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED | CDIS_FOCUS | CDIS_HOT);
      return CDRF_NOTIFYPOSTPAINT;
    }
    case CDDS_ITEMPOSTPAINT:
      if (node == tree_.SelectedItem() && !HasKeyboard())
        PaintBar(drawing.nmcd.hdc, GetLook(), drawing.nmcd.rc);
      return CDRF_DODEFAULT;
    default: return CDRF_DODEFAULT;
  }
}

// --- what the model has --------------------------------------------------------------------------

void TreeBoxView::ShowStyle() {
  ItemView::ShowStyle();
  Ask(TVM_SETINDENT, static_cast<WPARAM>(GetMetrics().Scaled(kIndentation)), 0);
  Ask(TVM_SETBKCOLOR, 0, GetLook().ColorOf(tree_.BackColor()));
  Ask(TVM_SETLINECOLOR, 0, GetLook().Colors().edge);
  const int line = GetLook().LineHeight(GetLook().FontOf(tree_.GetFont()));
  Ask(TVM_SETITEMHEIGHT, static_cast<WPARAM>(line + GetMetrics().Scaled(kRowPadding)), 0);
}

void TreeBoxView::Rescale(const Look& look) {
  const double by = look.GetMetrics().GetScale().Factor() / GetMetrics().GetScale().Factor();
  const auto top = reinterpret_cast<HTREEITEM>(Ask(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
  const auto across = std::lround(GetScrollPos(Handle(), SB_HORZ) * by);
  ItemView::Rescale(look);
  if (top) Ask(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, top);
  Ask(WM_HSCROLL, static_cast<WPARAM>(MAKELONG(SB_THUMBPOSITION, across)), 0);
}

void TreeBoxView::ShowSelection() {
  // A program that opens and closes many nodes pays for one comparison.
  if (tree_.Foldings() != foldings_) {
    Update(&toolkit::RowUpdates::Later);
  } else {
    ItemView::ShowSelection();
  }
}

void TreeBoxView::Drop() {
  Ask(TVM_DELETEITEM, 0, TVI_ROOT);
  items_.clear();
  filled_.clear();
  open_.clear();
}

void TreeBoxView::Fill() {
  Ask(WM_SETREDRAW, FALSE, 0);
  Refill();
  Ask(WM_SETREDRAW, TRUE, 0);
  Repaint();
}

void TreeBoxView::Refill() {
  Ask(TVM_DELETEITEM, 0, TVI_ROOT);
  const std::size_t count = PlaceOf(tree_.Nodes().Count());
  items_.assign(count, nullptr);
  filled_.assign(count, 0);
  open_.assign(count, 0);
  AddChildren(kNoNode);
  foldings_ = tree_.Foldings();
}

void TreeBoxView::Compare() {
  ShowFoldings();
  const HTREEITEM item = ItemOf(tree_.SelectedItem());
  if (reinterpret_cast<HTREEITEM>(Ask(TVM_GETNEXTITEM, TVGN_CARET, 0)) != item) {
    Ask(TVM_SELECTITEM, TVGN_CARET, item);
    if (item) Ask(TVM_ENSUREVISIBLE, 0, item);
  }
}

void TreeBoxView::ShowFoldings() {
  if (foldings_ == tree_.Foldings()) return;
  foldings_ = tree_.Foldings();
  std::vector<int> folded;
  for (std::size_t i = 0; i < open_.size(); ++i) {
    const int node = static_cast<int>(i);
    if ((open_[i] != 0) != IsOpen(node)) folded.push_back(node);
  }
  Ask(WM_SETREDRAW, FALSE, 0);
  if (folded.size() > kFoldsOneByOne) {
    const int chosen = NodeOf(reinterpret_cast<HTREEITEM>(Ask(TVM_GETNEXTITEM, TVGN_CARET, 0)));
    const int top = NodeOf(reinterpret_cast<HTREEITEM>(Ask(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0)));
    Refill();
    if (const HTREEITEM item = ItemOf(chosen)) Ask(TVM_SELECTITEM, TVGN_CARET, item);
    if (const HTREEITEM item = ItemOf(top)) Ask(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, item);
  } else {
    for (const int node : folded) Follow(node);
  }
  Ask(WM_SETREDRAW, TRUE, 0);
}

// One node opens or closes as in the model.
void TreeBoxView::Follow(int node) {
  const HTREEITEM item = ItemOf(node);
  const bool open = IsOpen(node);
  if ((open_[PlaceOf(node)] != 0) == open) return;  // it came so just now
  if (open) AddChildren(node);
  Ask(TVM_EXPAND, open ? TVE_EXPAND : TVE_COLLAPSE, item);
  open_[PlaceOf(node)] = open;
}

}  // namespace dossierkit::win32
