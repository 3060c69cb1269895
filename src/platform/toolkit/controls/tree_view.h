// TreeView: nodes in a tree, of which the user picks one.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"
#include "platform/toolkit/controls/key_table.h"

namespace dossierkit::toolkit {

class TreeView;

inline constexpr int kNoNode = -1;

// Where a node is added: behind the siblings of its relative, or behind the children of it.
enum class Relation { kLast = 1, kChild = 4 };

// A node by its place in the tree. Stays good until the tree is cleared; what touches it after that
// throws 35600.
class Node {
 public:
  Node(TreeView& tree, int index) : tree_(&tree), index_(index) {}

  int Index() const { return index_; }  // from 0, in the order in which nodes were added
  const std::string& Key() const;
  const std::string& Text() const;
  void SetText(std::string text);
  const std::string& Tag() const;
  void SetTag(std::string tag);
  Color ForeColor() const;
  void SetForeColor(Color color);
  bool Expanded() const;
  // Closing a node that the selected one stands under selects the closed node.
  void SetExpanded(bool expanded);

 private:
  TreeView* tree_;
  int index_;
};

// The nodes of a tree, and which stands where. All of them lie in two arrays rather than in an object for
// each, and only Clear takes longer the more there are.
class Nodes {
 public:
  explicit Nodes(TreeView& tree) : tree_(tree) {}
  Nodes(const Nodes&) = delete;
  Nodes& operator=(const Nodes&) = delete;

  // Adds a closed node, at the top level where `relative` is kNoNode. An empty key is none. Throws 35602
  // where there is a node of that key (case counts), 35600 where there is no such relative.
  Node Add(int relative, Relation relation, const std::string& key, std::string text);
  Node Add(const std::string& key, std::string text) {
    return Add(kNoNode, Relation::kLast, key, std::move(text));
  }
  void Clear();
  // Makes room for that many nodes more; it adds none.
  void Reserve(int more);
  int Count() const { return static_cast<int>(rows_.size()); }
  // The node of an index (throws 35600) or of a key (throws 35601).
  Node At(int index);
  Node Find(const std::string& key);

  // Neighbours, or kNoNode. The children of kNoNode are the top level.
  int Parent(int node) const { return Get(node).parent; }
  int Next(int node) const { return Get(node).next; }
  int Previous(int node) const { return Get(node).previous; }
  int FirstChild(int node) const { return FamilyOf(node).first; }
  int LastChild(int node) const { return FamilyOf(node).last; }
  int ChildCount(int node) const { return FamilyOf(node).count; }
  int Row(int node) const { return Get(node).row; }  // among its siblings, from 0
  // What views show of a node; all throw 35600.
  const std::string& TextOf(int node) const { return Get(node).text; }
  Color ColorOf(int node) const { return Get(node).fore_color; }
  bool IsOpen(int node) const { return Get(node).expanded; }
  bool Has(int node) const { return node >= 0 && node < Count(); }

 private:
  friend class Node;
  friend class TreeView;
  struct Family {
    int first = kNoNode;
    int last = kNoNode;
    int count = 0;
  };
  struct Data {
    std::string key;
    std::string text;
    std::string tag;
    Color fore_color = kWindowText;
    bool expanded = false;
    int parent = kNoNode;
    int previous = kNoNode;
    int next = kNoNode;
    int row = 0;
    Family children;
  };
  const Data& Get(int node) const;  // throws 35600
  Data& Get(int node);
  const Family& FamilyOf(int node) const { return node == kNoNode ? top_ : Get(node).children; }
  // Whether the node of an index bears a key.
  auto Bears(const std::string& key) const {
    return [this, &key](int node) { return rows_[static_cast<std::size_t>(node)].key == key; };
  }

  TreeView& tree_;
  std::vector<Data> rows_;
  KeyTable keys_;
  Family top_;
};

class TreeView : public Control {
 public:
  explicit TreeView(std::string name) : Control(Kind::kTreeView, std::move(name)), nodes_(*this) {}

  toolkit::Nodes& Nodes() { return nodes_; }
  const toolkit::Nodes& Nodes() const { return nodes_; }

  // The index of the selected node, or kNoNode. Setting opens all nodes above; throws 35600 where there
  // is no such node.
  int SelectedItem() const { return selected_; }
  void SetSelectedItem(int node);
  // The selected node; throws 91 where there is none.
  Node SelectedNode();

  // The node above or below in what is in sight, without regard to scrolling, or kNoNode.
  int Above(int node) const;
  int Below(int node) const;
  int LastInSight() const;
  // Whether all nodes above it are open.
  bool InSight(int node) const;
  // Counts what opened or closed.
  unsigned Foldings() const { return foldings_; }

  environment::Event<> DblClick;

  // The user selected a node, or opened or closed one: the focus moves here first, and may be refused.
  void UserSelect(int node);
  void UserExpand(int node, bool expanded);
  // Arrow keys, Home, End, Page Up, Page Down; plus and minus open and close the selected node.
  bool ActOnKey(const KeyStroke& stroke) override;
  // The user double-clicked the selected node: DblClick, then the node opens or closes.
  void UserDblClick();

 protected:
  // A tree that gets the focus selects its first node if none is selected.
  void OnFocus() override;

 private:
  friend class toolkit::Nodes;
  friend class Node;
  void Select(int node);
  void Fold(int node, bool expanded);
  int LastUnder(int node) const;
  int Away(int rows) const;  // so many rows below (above) the selected node, as far as there are some

  toolkit::Nodes nodes_;
  int selected_ = kNoNode;
  unsigned foldings_ = 0;
};

}  // namespace dossierkit::toolkit
