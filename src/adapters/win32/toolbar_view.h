// ToolbarView: a row of buttons that take no focus.
#pragma once

#include <vector>

#include "adapters/win32/bitmap.h"
#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/toolbar.h"

namespace dossierkit::win32 {

// Each button is a window of its own, which screen readers find by its name.
class ToolbarView : public NativeView {
 public:
  ToolbarView(ViewContext& context, toolkit::Toolbar& bar);
  ~ToolbarView() override;

  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  void Lost() override;

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowContent() override;
  void Paint(HDC device, const RECT& place) override;

 private:
  struct Button {
    HWND window = nullptr;  // null for a separator
    int left = 0;           // of a separator
    Bitmap icon;
    Bitmap pale_icon;
  };
  void Build();
  void Arrange();
  bool Tall() const;
  int FindButton(HWND window) const;
  void PaintButton(const Button& button, std::size_t index) const;
  void Hover(HWND window);
  void Release(HWND window, POINT at);

  toolkit::Toolbar& bar_;
  std::vector<Button> buttons_;
  HWND pressed_ = nullptr;
  HWND hovered_ = nullptr;
};

}  // namespace dossierkit::win32
