// ListBoxView: a list of texts.
#pragma once

#include "adapters/win32/item_view.h"
#include "platform/toolkit/controls/list_box.h"

namespace dossierkit::win32 {

class ListBoxView : public ItemView {
 public:
  ListBoxView(ViewContext& context, toolkit::ListBox& list);

  int RowAt(int x, int y) const override;
  int RowsInSight() const override;
  void Rescale(const Look& look) override;
  void Commanded(WORD code) override;
  bool Draw(const DRAWITEMSTRUCT& item) override;

 protected:
  bool Press(POINT at) override;
  void DoubleClick() override;
  void ShowStyle() override;
  void Drop() override;
  void Fill() override;
  void Compare() override;

 private:
  int RowUnder(POINT at) const;
  bool Want(int row);
  LRESULT Ask(UINT id, WPARAM wide = 0, LPARAM low = 0) const {
    return SendMessageW(Handle(), id, wide, low);
  }

  toolkit::ListBox& list_;
};

// The row of a native list under a point of its client area, or -1.
int RowOfList(HWND list, POINT at);

}  // namespace dossierkit::win32
