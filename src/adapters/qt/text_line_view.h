// TextLineView: a text box of one line.
#pragma once

#include "adapters/qt/text_view.h"

class QLineEdit;

namespace dossierkit::qt {

class TextLineView : public TextView {
 public:
  TextLineView(ViewContext& context, toolkit::TextBox& box);

 protected:
  QString NativeText() const override;
  void SetNativeText(const QString& text) override;
  qsizetype NativeCaret() const override;
  qsizetype NativeSelectionStart() const override;
  qsizetype NativeSelectionLength() const override;
  void SetNativeSelection(qsizetype start, qsizetype length) override;

 private:
  QLineEdit* native_;
};

}  // namespace dossierkit::qt
