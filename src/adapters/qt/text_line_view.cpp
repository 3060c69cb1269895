#include "adapters/qt/text_line_view.h"

#include <QLineEdit>
#include <limits>

#include "adapters/qt/text_widget.h"

namespace dossierkit::qt {
namespace {

class LineEdit : public TextWidget<QLineEdit> {
 public:
  LineEdit(QtApplication& application, QWidget* parent) : TextWidget(application, parent) {
    setAcceptDrops(false);
    setDragEnabled(false);
    setTextMargins(3, 0, 3, 0);
    setMaxLength(std::numeric_limits<int>::max());  // the model limits
  }
};

}  // namespace

TextLineView::TextLineView(ViewContext& context, toolkit::TextBox& box)
    : TextView(context, box, new LineEdit(context.application, ParentWidgetOf(box))),
      native_(static_cast<QLineEdit*>(Widget())) {
  QObject::connect(native_, &QLineEdit::textChanged, Hub(), [this] { NativeTextChanged(); });
  QObject::connect(native_, &QLineEdit::cursorPositionChanged, Hub(), [this] { NativeSelectionChanged(); });
  QObject::connect(native_, &QLineEdit::selectionChanged, Hub(), [this] { NativeSelectionChanged(); });
}

QString TextLineView::NativeText() const { return native_->text(); }

void TextLineView::SetNativeText(const QString& text) { native_->setText(text); }

qsizetype TextLineView::NativeCaret() const { return native_->cursorPosition(); }

qsizetype TextLineView::NativeSelectionStart() const {
  return native_->hasSelectedText() ? native_->selectionStart() : native_->cursorPosition();
}

qsizetype TextLineView::NativeSelectionLength() const {
  return native_->hasSelectedText() ? native_->selectionLength() : 0;
}

void TextLineView::SetNativeSelection(qsizetype start, qsizetype length) {
  if (length > 0) {
    native_->setSelection(static_cast<int>(start), static_cast<int>(length));
  } else {
    native_->setCursorPosition(static_cast<int>(start));
  }
}

}  // namespace dossierkit::qt
