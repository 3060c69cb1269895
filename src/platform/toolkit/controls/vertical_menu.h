// VerticalMenu: groups of items with an icon and a caption each, driven through a current group and
// a current item.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

struct MenuItem {
  std::string caption;
  std::string key;
  std::string icon;  // path of an icon file; one that is missing is not shown
};

// Groups and items are numbered from 1. menucur selects the group and menuitemcur the item that the
// other properties read or write; numbers out of range fail (9).
class VerticalMenu : public Control {
 public:
  // One group with `items` items "Item1", "Item2", ...
  VerticalMenu(std::string name, std::string caption, int items);

  std::int32_t menucur() const { return group_; }
  void set_menucur(std::int32_t group);
  std::int32_t menuitemcur() const { return item_; }
  void set_menuitemcur(std::int32_t item);
  const std::string& menucaption() const { return caption_; }
  void set_menucaption(std::string caption);
  std::int32_t menuitemsmax() const { return static_cast<std::int32_t>(items_.size()); }
  void set_menuitemsmax(std::int32_t count);
  const std::string& menuitemcaption() const { return Current().caption; }
  void set_menuitemcaption(std::string caption);
  const std::string& menuitemkey() const { return Current().key; }
  void set_menuitemkey(std::string key);
  const std::string& menuitemicon() const { return Current().icon; }
  void set_menuitemicon(std::string path);

  const std::vector<MenuItem>& Items() const { return items_; }
  // The item that the arrow keys have marked, from 1; menuitemcur unless the user moves it.
  std::int32_t Marked() const { return marked_; }

  environment::Event<std::int32_t&, std::int32_t&> MenuItemClick;  // group, item

  // The user clicked an item (from 1): the focus moves here first, and may be refused.
  void UserClick(std::int32_t item);
  // A key moved the mark, or a screen reader: the focus moves here first, and may be refused. Enter clicks
  // the marked item.
  void UserMark(std::int32_t item);
  // Arrows up and down, Home, End, Page Up, Page Down, Enter.
  bool ActOnKey(const KeyStroke& stroke) override;

 private:
  const MenuItem& Current() const;
  MenuItem& Current();

  std::string caption_;
  std::vector<MenuItem> items_;
  std::int32_t group_ = 1;
  std::int32_t item_ = 1;
  std::int32_t marked_ = 1;
};

}  // namespace dossierkit::toolkit
