// MaskView: a box that the model edits. The native widget never edits itself.
#pragma once

#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/mask_ed_box.h"
#include "platform/toolkit/controls/shown_text.h"

class QContextMenuEvent;
class QInputMethodEvent;
class QLineEdit;

namespace dossierkit::qt {

class MaskView : public WidgetView {
 public:
  MaskView(ViewContext& context, toolkit::MaskEdBox& box);

  // Edits by what an input method committed, and takes it out of the event.
  void EditByCommit(QInputMethodEvent& event);
  void MenuAsked(const QContextMenuEvent& event);

 protected:
  void ShowStyle() override;
  void ShowText() override;
  void ShowSelection() override;

 private:
  void NativeTextChanged();
  void NativeSelectionChanged();

  toolkit::MaskEdBox& box_;
  QLineEdit* native_;
  toolkit::ShownText shown_;
};

}  // namespace dossierkit::qt
