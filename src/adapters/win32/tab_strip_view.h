// TabStripView: a row of tabs over a panel with the controls of the one in front.
#pragma once

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/tab_strip.h"

namespace dossierkit::win32 {

class TabStripView : public NativeView {
 public:
  TabStripView(ViewContext& context, toolkit::TabStrip& strip);
  ~TabStripView() override;

  HWND FocusHandle() const override { return tabs_; }
  void Rescale(const Look& look) override;
  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  std::optional<LRESULT> Notified(NMHDR& notice) override;
  void Lost() override;

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowContent() override;
  void ShowSelection() override;
  void Paint(HDC device, const RECT& place) override;

 private:
  void Arrange();
  int Height() const;
  void PaintTabs() const;
  LRESULT Ask(UINT id, WPARAM wide = 0, LPARAM low = 0) const { return SendMessageW(tabs_, id, wide, low); }

  toolkit::TabStrip& strip_;
  HWND tabs_ = nullptr;
};

}  // namespace dossierkit::win32
