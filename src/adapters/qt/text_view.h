// TextView: what the boxes of one line and of several have in common.
#pragma once

#include "adapters/qt/texts.h"
#include "adapters/qt/widget_view.h"
#include "platform/toolkit/controls/shown_text.h"
#include "platform/toolkit/controls/text_box.h"

class QContextMenuEvent;
class QInputMethodEvent;

namespace dossierkit::qt {

// The native widget edits; each change is found by comparison with what was shown, proposed to the
// model, and what the model makes of it is shown. What the program assigns is never reported back.
class TextView : public WidgetView {
 public:
  // A text that an input method committed passes the model character by character; gives the
  // characters that were not swallowed. False if the widget must not see the event any more.
  bool FilterCommit(QInputMethodEvent& event);
  void DoubleClicked();
  void MenuAsked(const QContextMenuEvent& event);

 protected:
  TextView(ViewContext& context, toolkit::TextBox& box, QWidget* widget)
      : WidgetView(context, box, widget), box_(box) {}

  // The native widget's side, in places of the shown text.
  virtual QString NativeText() const = 0;
  virtual void SetNativeText(const QString& text) = 0;
  virtual qsizetype NativeCaret() const = 0;
  virtual qsizetype NativeSelectionStart() const = 0;  // the caret without a selection
  virtual qsizetype NativeSelectionLength() const = 0;
  virtual void SetNativeSelection(qsizetype start, qsizetype length) = 0;

  // To be called when the native widget changed.
  void NativeTextChanged();
  void NativeSelectionChanged();

  void ShowStyle() override;
  void ShowText() override;
  void ShowSelection() override;

  toolkit::TextBox& Box() const { return box_; }

 private:
  toolkit::TextBox& box_;
  toolkit::ShownText shown_;
  std::size_t caret_ = 0;  // the native one, before the native widget's last change
};

}  // namespace dossierkit::qt
