// LabelView: a text that the user cannot edit.
#pragma once

#include <string>
#include <vector>

#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/basic_controls.h"

namespace dossierkit::win32 {

// Of one line, or of as many as fit into its height. What is cut off ends in "…" and stands whole in the tool
// tip; a coloured one scrolls instead. A coloured text of several lines is a slab as tall as its text.
class LabelView : public NativeView {
 public:
  LabelView(ViewContext& context, toolkit::Label& label);

  std::optional<LRESULT> Receive(HWND window, const Message& message) override;

 protected:
  void ShowPlacement() override;
  void ShowStyle() override;
  void ShowText() override;
  void Paint(HDC device, const RECT& place) override;

 private:
  void Arrange();
  void ScrollTo(int line);
  void Scroll(int code);
  bool IsSlab() const { return label_.Opaque() && label_.WordWrap(); }
  int Margin() const;

  toolkit::Label& label_;
  std::vector<std::wstring> lines_;
  int first_ = 0;   // line that shows
  int turned_ = 0;  // of the wheel, in parts of a line
  int most_ = 1;    // lines that show at a time
  bool scrolls_ = false;
};

}  // namespace dossierkit::win32
