// ListBox: a list of texts of which the user picks one.
#pragma once

#include <string>
#include <vector>

#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// Rows are numbered from 0 and stand in the order in which they were added.
class ListBox : public Control {
 public:
  explicit ListBox(std::string name) : Control(Kind::kListBox, std::move(name)) {}

  void AddItem(std::string text);
  void Clear();
  int ListCount() const { return static_cast<int>(items_.size()); }
  // The text of a row; empty for a row that is not there.
  const std::string& List(int row) const;
  // The selected row, or -1. Setting throws 380 for a row that is not there.
  int ListIndex() const { return selected_; }
  void SetListIndex(int row);
  // The row under a point in twips of the control, or -1.
  int RowAt(int x, int y) const;

  environment::Event<> DblClick;

  // The user selected a row: the focus moves here first, and may be refused.
  void UserSelect(int row);
  bool ActOnKey(const KeyStroke& stroke) override;  // arrow keys, Home, End, Page Up, Page Down
  // The user double-clicked a row, which UserSelect has selected already.
  void UserDblClick();

 private:
  bool Has(int row) const { return row >= 0 && row < ListCount(); }

  std::vector<std::string> items_;
  int selected_ = -1;
};

}  // namespace dossierkit::toolkit
