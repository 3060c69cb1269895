// MaskView: a masked box. The model edits; the native window shows.
#pragma once

#include "adapters/win32/edit_view.h"
#include "platform/toolkit/controls/mask_ed_box.h"

namespace dossierkit::win32 {

class MaskView : public EditView {
 public:
  MaskView(ViewContext& context, toolkit::MaskEdBox& box);

  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  void Enter(const std::wstring& text) override;

 protected:
  void NativeChanged() override;
  void ShowText() override;
  void ShowSelection() override;

 private:
  toolkit::MaskEdBox& box_;
  toolkit::ShownText shown_;
  bool gaining_focus_ = false;
};

}  // namespace dossierkit::win32
