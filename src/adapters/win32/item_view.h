// ItemView: what the views of lists and trees share.
#pragma once

#include <functional>

#include "adapters/win32/box_frame.h"
#include "adapters/win32/native_view.h"
#include "platform/toolkit/controls/row_updates.h"

namespace dossierkit::win32 {

// Rows that come one by one are taken over together: see row_updates.h. The native window chooses and folds
// nothing itself: it is asked for, and shown once the model has followed.
class ItemView : public NativeView, protected toolkit::RowUpdates::Rows {
 public:
  void Settle() override;
  std::optional<LRESULT> Receive(HWND window, const Message& message) override;
  HBRUSH Colours(HDC device) override;
  ~ItemView() override;

 protected:
  ItemView(ViewContext& context, toolkit::Control& control, const NativeWindow& native);

  // Reports, and shows what became of it, also where the report was ignored. False if the view ended
  // meanwhile.
  bool ReportAndShow(const std::function<void()>& report);
  // Has a step of RowUpdates shown.
  void Update(void (toolkit::RowUpdates::*step)());

  bool MeasureEdge() override { return true; }
  void ShowStyle() override;
  void ShowText() override { Repaint(); }
  void ShowContent() override { Update(&toolkit::RowUpdates::Content); }
  void ShowSelection() override { Update(&toolkit::RowUpdates::Selection); }
  void CallWhenIdle() override;

  // The left button was pressed at a point of the client area: false where no row was chosen.
  virtual bool Press(POINT at) = 0;
  virtual void DoubleClick() = 0;

  bool HasKeyboard() const { return GetFocus() == Handle(); }

 private:
  BoxFrame frame_;
  HBRUSH ground_ = nullptr;
  toolkit::RowUpdates updates_{*this};
};

}  // namespace dossierkit::win32
