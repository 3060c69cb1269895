// EditView: what text boxes and masked boxes have in common: a native edit control that edits nothing on its
// own.
#pragma once

#include <string>

#include "adapters/win32/box_frame.h"
#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/edit_box.h"
#include "platform/toolkit/controls/shown_text.h"

namespace dossierkit::win32 {

class EditView : public NativeView {
 public:
  ~EditView() override;

  void Rescale(const Look& look) override;
  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  HBRUSH Colours(HDC device) override;
  void Enter(const std::wstring& text) override;

 protected:
  EditView(ViewContext& context, toolkit::EditBox& box, bool multi_line);

  // After a message that may have changed text, caret or selection of the native window. It tells nobody of
  // most such changes.
  virtual void NativeChanged() = 0;
  virtual void DoubleClicked() {}

  // The native window's side, in places of the shown text: each break is one character.
  std::u16string NativeText() const;
  void SetNativeText(const std::u16string& text);
  toolkit::Selection NativeSelection() const;
  void SetNativeSelection(const toolkit::Selection& selection);

  bool MeasureEdge() override;
  void ShowStyle() override;
  void ShowPlacement() override;

  toolkit::EditBox& Edit() const { return box_; }

 private:
  void ShowGround();
  void AskMenu(LPARAM place);

  toolkit::EditBox& box_;
  bool multi_line_;
  BoxFrame frame_;
  HBRUSH ground_ = nullptr;
};

}  // namespace dossierkit::win32
