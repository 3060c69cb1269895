// GridView: the record list. Only rows in sight are ever formatted.
#pragma once

#include <string>
#include <vector>

#include "adapters/win32/box_frame.h"
#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/data_grid.h"

namespace dossierkit::win32 {

class GridView : public NativeView {
 public:
  GridView(ViewContext& context, toolkit::DataGrid& grid);
  ~GridView() override;

  int RowsInSight() const override;
  void Rescale(const Look& look) override;
  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  std::optional<LRESULT> Notified(NMHDR& notice) override;
  void Lost() override;

 protected:
  bool MeasureEdge() override { return true; }
  void ShowStyle() override;
  void ShowText() override { Repaint(); }
  void ShowContent() override;
  void ShowSelection() override;

 private:
  int RowUnder(int y) const;
  void RowWanted(int row);
  void ColumnResized(int column, int pixels);
  void Reset();
  int WidthOfColumn(std::size_t column) const;
  void ShowWidths();
  void Scroll(int steps) const;
  std::wstring CellText(int row, int column);
  LRESULT PaintRows(NMLVCUSTOMDRAW& drawing);
  LRESULT PaintHead(NMCUSTOMDRAW& drawing) const;
  std::optional<LRESULT> ReceiveHead(const Message& message);
  std::optional<LRESULT> HeadNotified(NMHDR& notice) const;
  int HeadHeight() const;
  // What is cut off under the mouse stands whole in the tool tip.
  void ShowTip(POINT at);
  void ShowHeadTip(POINT at) const;
  template <typename T>
  LRESULT Ask(UINT id, WPARAM wide, T low) const {
    return SendMessageW(Handle(), id, wide, (LPARAM)low);
  }

  toolkit::DataGrid& grid_;
  HWND head_ = nullptr;
  HIMAGELIST height_ = nullptr;  // an empty picture, as high as a row
  BoxFrame frame_;
  std::wstring tip_;
  // As they are while it is painted.
  std::vector<LONG> painted_widths_;
  bool painted_with_keyboard_ = false;
  unsigned filled_;  // the filling of the grid that the native list shows
};

}  // namespace dossierkit::win32
