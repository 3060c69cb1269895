// TextView: a text box, of one line or of several.
#pragma once

#include "adapters/win32/edit_view.h"
#include "platform/toolkit/controls/text_box.h"

namespace dossierkit::win32 {

// The native window edits; each change is found by comparison with what was shown, proposed to the
// model, and what the model makes of it is shown. What the program assigns is never reported back.
class TextView : public EditView {
 public:
  TextView(ViewContext& context, toolkit::TextBox& box);

 protected:
  void NativeChanged() override;
  void DoubleClicked() override;
  void ShowText() override;
  void ShowSelection() override;

 private:
  void FollowCaret();

  toolkit::TextBox& box_;
  toolkit::ShownText shown_;
  std::u16string native_;  // the same as the native window has it
  std::size_t caret_ = 0;  // the native one, before the native window's last change
};

}  // namespace dossierkit::win32
