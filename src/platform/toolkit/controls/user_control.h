// UserControl: a page of controls that is itself a control.
#pragma once

#include <string>

#include "platform/toolkit/controls/controls.h"

namespace dossierkit::toolkit {

class UserControl : public Control {
 public:
  explicit UserControl(std::string name);
  ~UserControl() override;

  toolkit::Controls& Controls() { return controls_; }
  const toolkit::Controls& Controls() const { return controls_; }
  bool KeyPreview() const { return key_preview_; }
  void Move(const Rect& place) override;

  // Called by the window: a key that the control with the focus would see comes here first, where the keys
  // are previewed; the page shows for the first time.
  void PreviewKeyDown(int& key, int shift);
  void PreviewKeyPress(char32_t& key);
  void Appear();

 protected:
  void SetKeyPreview(bool preview) { key_preview_ = preview; }

  // Events of the page itself. Show comes once, when the handler that made the page has ended and
  // the window is visible; Terminate at the removal.
  friend class Controls;
  virtual void UserControl_Initialize() {}
  virtual void UserControl_Show() {}
  virtual void UserControl_Terminate() {}
  virtual void UserControl_Resize() {}
  // With KeyPreview before the control that has the focus sees the key. 0 swallows it.
  virtual void UserControl_KeyDown(int& /*key*/, int /*shift*/) {}
  virtual void UserControl_KeyPress(char32_t& /*key*/) {}

  void OnRemoved() override;
  void CreateViews() override;
  void DestroyViews() override;

 private:
  void ReleaseControls();

  toolkit::Controls controls_;
  bool key_preview_ = false;
};

}  // namespace dossierkit::toolkit
