// WindowView: a window, in which everything scrolls that has no room.
#pragma once

#include <vector>

#include "adapters/win32/modality.h"
#include "adapters/win32/native_view.h"
#include "adapters/win32/tool_tips.h"
#include "platform/toolkit/loop/window_layout.h"
#include "platform/toolkit/loop/window_place.h"

namespace dossierkit::toolkit {
class Form;
}

namespace dossierkit::win32 {

class WindowView : public NativeView {
 public:
  WindowView(ViewContext& context, toolkit::Form& form);
  ~WindowView() override;

  // The scrolling part, or the window itself for what always stays in sight.
  HWND ContentFor(const toolkit::Control& child) const override;
  COLORREF Ground() const override { return GetLook().Colors().surface; }
  void ShowState() override {}
  // Where a control of this window shows: bar and side reach the window's edges.
  toolkit::Rect ShownPlace(const toolkit::Control& control) const;

  ToolTips& Tips() { return tips_; }
  void Rescale(const Look& look) override;

  // Shows the window, at first where its form wants it, and makes it the active one; all other windows of the
  // thread take no input from then on.
  void Present();
  void Withdraw();
  // On show, with no message box or window above.
  bool TakesInput() const;
  // Scrolls to a control and its label; to `part` of its window where that is given.
  void BringIntoSight(const NativeView& view, const RECT* part = nullptr);
  void BringFocusIntoSight();
  // Another page came: it shows from its upper left corner.
  void ScrollToOrigin();

  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  void Lost() override;

 protected:
  void ShowPlacement() override;
  void ShowStyle() override {}
  void ShowText() override;

 private:
  toolkit::Form& GetForm() const;
  toolkit::Size ClientSize() const;
  toolkit::Surroundings Around() const;
  void Place(const toolkit::Rect& client);
  void Resized();
  void TellSize();
  // The window came to a screen of another resolution, or its own got one: it follows, at the place that
  // Windows wants for it.
  void ScreenChanged(int dpi, const RECT& place);
  // How large it will be there: so that its client area grows as what stands in it.
  SIZE SizeAt(int dpi) const;
  void Arrange();
  void ShowScrollBars();
  void ScrollTo(const toolkit::Point& offset);
  void Scroll(int bar, int code);
  void Turn(int bar, int delta);
  void Activated();

  HWND area_ = nullptr;     // the viewport, with its scroll bars
  HWND content_ = nullptr;  // what scrolls in it
  ToolTips tips_;
  toolkit::WindowLayout layout_;
  toolkit::WindowPlace place_;
  toolkit::Point offset_;
  std::unique_ptr<OthersDisabled> others_;
  bool presented_ = false;
  bool arranging_ = false;
  bool rescaling_ = false;
};

}  // namespace dossierkit::win32
