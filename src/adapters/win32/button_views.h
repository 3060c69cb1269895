// Command button and check box.
#pragma once

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::win32 {

class CommandButtonView : public NativeView {
 public:
  CommandButtonView(ViewContext& context, toolkit::CommandButton& button);

  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  void Commanded(WORD code) override;
  bool Draw(const DRAWITEMSTRUCT& item) override;

 protected:
  void ShowText() override;

 private:
  toolkit::CommandButton& button_;
  bool hovered_ = false;
};

// Never checks itself: the model does.
class CheckBoxView : public NativeView {
 public:
  CheckBoxView(ViewContext& context, toolkit::CheckBox& box);
  ~CheckBoxView() override;

  void Commanded(WORD code) override;
  HBRUSH Colours(HDC device) override;

 protected:
  void ShowText() override;

 private:
  toolkit::CheckBox& box_;
  HBRUSH ground_;
};

}  // namespace dossierkit::win32
