#include "platform/toolkit/controls/tree_view.h"

#include "platform/environment/failure.h"

namespace dossierkit::toolkit {

// --- one node ------------------------------------------------------------------------------------

const std::string& Node::Key() const { return tree_->nodes_.Get(index_).key; }

const std::string& Node::Text() const { return tree_->nodes_.Get(index_).text; }

void Node::SetText(std::string text) {
  tree_->nodes_.Get(index_).text = std::move(text);
  tree_->ShowAspect(Aspect::kContent);
}

const std::string& Node::Tag() const { return tree_->nodes_.Get(index_).tag; }

void Node::SetTag(std::string tag) { tree_->nodes_.Get(index_).tag = std::move(tag); }

Color Node::ForeColor() const { return tree_->nodes_.Get(index_).fore_color; }

void Node::SetForeColor(Color color) {
  tree_->nodes_.Get(index_).fore_color = color;
  tree_->ShowAspect(Aspect::kContent);
}

bool Node::Expanded() const { return tree_->nodes_.Get(index_).expanded; }

void Node::SetExpanded(bool expanded) {
  tree_->Fold(index_, expanded);
  tree_->ShowAspect(Aspect::kSelection);
}

// --- the nodes -----------------------------------------------------------------------------------

const Nodes::Data& Nodes::Get(int node) const {
  if (!Has(node)) throw environment::MakeFailure(environment::kIndexOutOfBounds);
  return rows_[static_cast<std::size_t>(node)];
}

Nodes::Data& Nodes::Get(int node) { return const_cast<Data&>(std::as_const(*this).Get(node)); }

Node Nodes::Add(int relative, Relation relation, const std::string& key, std::string text) {
  const int parent = relative == kNoNode || relation == Relation::kChild ? relative : Parent(relative);
  if (parent != kNoNode) Get(parent);
  const int index = Count();
  if (!key.empty() && !keys_.Add(key, index, Bears(key))) {
    throw environment::MakeFailure(environment::kKeyNotUnique);
  }
  Family& family = parent == kNoNode ? top_ : Get(parent).children;
  Data added;
  added.key = key;
  added.text = std::move(text);
  added.parent = parent;
  added.previous = family.last;
  added.row = family.count;
  if (family.last == kNoNode) {
    family.first = index;
  } else {
    Get(family.last).next = index;
  }
  family.last = index;
  ++family.count;
  rows_.push_back(std::move(added));
  tree_.ShowAspect(Aspect::kContent);
  return {tree_, index};
}

void Nodes::Clear() {
  rows_.clear();
  keys_.Clear();
  top_ = {};
  tree_.selected_ = kNoNode;
  tree_.ShowAspect(Aspect::kContent);
}

Node Nodes::At(int index) {
  Get(index);
  return {tree_, index};
}

Node Nodes::Find(const std::string& key) {
  const int found = keys_.Find(key, Bears(key));
  if (found == kNoNode) throw environment::MakeFailure(environment::kElementNotFound);
  return {tree_, found};
}

void Nodes::Reserve(int more) {
  rows_.reserve(rows_.size() + static_cast<std::size_t>(more));
  keys_.Reserve(rows_.size() + static_cast<std::size_t>(more));
}

// --- the tree ------------------------------------------------------------------------------------

void TreeView::SetSelectedItem(int node) {
  if (node != kNoNode) nodes_.Get(node);
  Select(node);
  ShowAspect(Aspect::kSelection);
}

Node TreeView::SelectedNode() {
  if (selected_ == kNoNode) throw environment::MakeFailure(environment::kObjectNotSet);
  return {*this, selected_};
}

void TreeView::Select(int node) {
  selected_ = node;
  if (node == kNoNode) return;
  for (int above = nodes_.Parent(node); above != kNoNode; above = nodes_.Parent(above)) Fold(above, true);
}

void TreeView::Fold(int node, bool expanded) {
  auto& data = nodes_.Get(node);
  if (data.expanded == expanded) return;
  data.expanded = expanded;
  ++foldings_;
  if (expanded || selected_ == kNoNode) return;
  for (int above = nodes_.Parent(selected_); above != kNoNode; above = nodes_.Parent(above)) {
    if (above == node) {
      selected_ = node;
      return;
    }
  }
}

int TreeView::LastUnder(int node) const {
  while (nodes_.Get(node).expanded && nodes_.LastChild(node) != kNoNode) node = nodes_.LastChild(node);
  return node;
}

int TreeView::Above(int node) const {
  const int previous = nodes_.Previous(node);
  return previous == kNoNode ? nodes_.Parent(node) : LastUnder(previous);
}

int TreeView::Below(int node) const {
  if (nodes_.Get(node).expanded && nodes_.FirstChild(node) != kNoNode) return nodes_.FirstChild(node);
  while (node != kNoNode && nodes_.Next(node) == kNoNode) node = nodes_.Parent(node);
  return node == kNoNode ? kNoNode : nodes_.Next(node);
}

int TreeView::LastInSight() const {
  const int last = nodes_.LastChild(kNoNode);
  return last == kNoNode ? kNoNode : LastUnder(last);
}

bool TreeView::InSight(int node) const {
  for (int above = nodes_.Parent(node); above != kNoNode; above = nodes_.Parent(above)) {
    if (!nodes_.Get(above).expanded) return false;
  }
  return true;
}

void TreeView::OnFocus() {
  if (selected_ != kNoNode || nodes_.Count() == 0) return;
  selected_ = nodes_.FirstChild(kNoNode);
  ShowAspect(Aspect::kSelection);
}

void TreeView::UserSelect(int node) {
  Report(Aspect::kSelection, [&] {
    if (!nodes_.Has(node) || !TakeFocus()) return;
    // Getting the focus may have brought other nodes.
    if (!Removed() && nodes_.Has(node)) Select(node);
  });
}

void TreeView::UserExpand(int node, bool expanded) {
  Report(Aspect::kSelection, [&] {
    if (!nodes_.Has(node) || !TakeFocus()) return;
    if (!Removed() && nodes_.Has(node)) Fold(node, expanded);
  });
}

int TreeView::Away(int rows) const {
  int node = selected_ == kNoNode ? nodes_.FirstChild(kNoNode) : selected_;
  while (rows != 0) {
    const int next = rows > 0 ? Below(node) : Above(node);
    if (next == kNoNode) break;
    node = next;
    rows += rows > 0 ? -1 : 1;
  }
  return node;
}

bool TreeView::ActOnKey(const KeyStroke& stroke) {
  const int node = selected_;
  const auto select = [this](int wanted) {
    if (wanted != kNoNode) UserSelect(wanted);
    return true;
  };
  const auto fold = [&](bool expanded) {
    if (node != kNoNode) UserExpand(node, expanded);
    return true;
  };
  const int first = nodes_.FirstChild(kNoNode);
  const bool parent = node != kNoNode && nodes_.ChildCount(node) > 0;
  const bool open = parent && nodes_.Get(node).expanded;
  switch (stroke.code) {
    case kKeyHome: return select(first);
    case kKeyEnd: return select(LastInSight());
    case kKeyUp: return select(node == kNoNode ? first : Above(node));
    case kKeyDown: return select(node == kNoNode ? first : Below(node));
    case kKeyPageUp: return select(first == kNoNode ? kNoNode : Away(-RowsOfAPage()));
    case kKeyPageDown: return select(first == kNoNode ? kNoNode : Away(RowsOfAPage()));
    case kKeyLeft: return open ? fold(false) : select(node == kNoNode ? first : nodes_.Parent(node));
    case kKeyRight:
      return parent && !open ? fold(true) : select(node == kNoNode ? first : nodes_.FirstChild(node));
    default: break;
  }
  const std::u32string typed = CharactersOf(stroke);
  if (typed == U"+") return fold(true);
  if (typed == U"-") return fold(false);
  return false;
}

void TreeView::UserDblClick() {
  Report(Aspect::kSelection, [&] {
    if (!TakeFocus()) return;
    const int node = selected_;
    Raise(DblClick);
    if (!Reachable() || node == kNoNode || selected_ != node || nodes_.ChildCount(node) == 0) return;
    Fold(node, !nodes_.Get(node).expanded);
  });
}

}  // namespace dossierkit::toolkit
