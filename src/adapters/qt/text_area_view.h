// TextAreaView: a text box of several lines.
#pragma once

#include "adapters/qt/text_view.h"

class QPlainTextEdit;

namespace dossierkit::qt {

class TextAreaView : public TextView {
 public:
  TextAreaView(ViewContext& context, toolkit::TextBox& box);

 protected:
  void ShowStyle() override;
  QString NativeText() const override;
  void SetNativeText(const QString& text) override;
  qsizetype NativeCaret() const override;
  qsizetype NativeSelectionStart() const override;
  qsizetype NativeSelectionLength() const override;
  void SetNativeSelection(qsizetype start, qsizetype length) override;

 private:
  void FollowCaret();

  QPlainTextEdit* native_;
};

}  // namespace dossierkit::qt
