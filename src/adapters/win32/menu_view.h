// MenuView: the vertical menu: a head with the group's caption over a list of items.
#pragma once

#include <string>
#include <vector>

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/picture_cache.h"
#include "platform/toolkit/controls/vertical_menu.h"

namespace dossierkit::win32 {

class MenuView : public NativeView {
 public:
  MenuView(ViewContext& context, toolkit::VerticalMenu& menu);
  ~MenuView() override;

  HWND FocusHandle() const override { return list_; }
  int RowsInSight() const override;
  void Rescale(const Look& look) override;
  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  void Commanded(WORD code) override;
  HBRUSH Colours(HDC device) override;
  bool Draw(const DRAWITEMSTRUCT& item) override;
  void Lost() override;

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowContent() override;
  void ShowSelection() override;
  void Paint(HDC device, const RECT& place) override;

 private:
  int Head() const;
  void DropIcons();
  bool AnyIcon();
  // Rows, from 0, that are to be painted anew; -1 for none.
  void RepaintRow(int row) const;
  // The native list has the marked row chosen: for who asks it, since it paints nothing of that.
  void ShowMark();
  void Hover(int row);
  void Release(int row);
  // The caption of an item as its row shows it, and whether that is not all of it.
  std::vector<std::wstring> LinesOfItem(int row, int width, bool& cut);
  HFONT FontOfItem(int row) const;
  RECT TextPlace(const RECT& row);
  LRESULT Ask(UINT id, WPARAM wide = 0, LPARAM low = 0) const { return SendMessageW(list_, id, wide, low); }

  toolkit::VerticalMenu& menu_;
  HWND list_ = nullptr;
  HBRUSH ground_;
  std::wstring head_;
  std::vector<std::wstring> captions_;  // as the list has them
  std::vector<std::string> pictures_;   // files of the icons that show
  int current_ = -1;                    // rows that show so
  int marked_ = -1;
  bool mark_waits_ = false;
  std::vector<HICON> loaded_;
  toolkit::PictureCache<HICON> icons_;  // null for a file that is missing
  int pressed_ = -1;
  int hovered_ = -1;
};

}  // namespace dossierkit::win32
