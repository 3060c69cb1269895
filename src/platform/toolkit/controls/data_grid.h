// DataGrid: a read-only list bound to a recordset, whose cursor it moves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/ado/recordset.h"
#include "platform/toolkit/controls/control.h"

namespace dossierkit::toolkit {

// Headings come from the recordset's fields; widths in twips, 0 hides a column. Cells are text, read
// when asked for.
class DataGrid : public Control {
 public:
  explicit DataGrid(std::string name) : Control(Kind::kDataGrid, std::move(name)) {}

  void SetDataSource(std::shared_ptr<ado::Recordset> recordset);
  // Counts the calls of SetDataSource, so that a view need not take changed widths for other rows.
  unsigned Fillings() const { return fillings_; }
  std::size_t ColumnCount() const;
  std::int32_t RowCount() const;
  std::string Heading(std::size_t column) const;
  // The text of a cell; rows from 1.
  std::string Cell(std::int32_t row, std::size_t column) const;
  float ColumnWidth(std::size_t column) const;
  // Throws 9 for a column that is not there.
  void SetColumnWidth(std::size_t column, float width);
  // The row of the cursor, from 1; 0 without one.
  std::int32_t Row() const;
  // Whether the row of the cursor looks chosen: not while the form holds a record that is not in the list.
  bool ShowsRow() const { return shows_row_; }
  void SetShowsRow(bool shows);
  const Font& HeadFont() const { return head_font_; }
  void SetHeadFont(const Font& font);

  environment::Event<> ColResize;

  // The user gave a column a width, which 0 hides: it is kept, then ColResize comes. Nothing for a column
  // that is not there.
  void UserColumnWidth(std::size_t column, float width);

  // The user selected a row, by click or arrow key, also the current one: the focus moves here
  // first and may be refused; then the recordset's cursor moves, which may be cancelled.
  void UserSelectRow(std::int32_t row);
  // Arrows up and down, Home, End, Page Up, Page Down; those to the sides scroll, which is the view's.
  bool ActOnKey(const KeyStroke& stroke) override;

 private:
  std::shared_ptr<ado::Recordset> recordset_;
  environment::Subscription move_complete_;
  std::vector<float> widths_;
  bool shows_row_ = true;
  Font head_font_;
  unsigned fillings_ = 0;
};

}  // namespace dossierkit::toolkit
