#include "adapters/qt/text_line_view.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <limits>

#include "adapters/qt/qt_application.h"

namespace dossierkit::qt {
namespace {

class LineEdit : public QLineEdit {
 public:
  LineEdit(QtApplication& application, QWidget* parent) : QLineEdit(parent), application_(application) {
    setAcceptDrops(false);
    setDragEnabled(false);
    setTextMargins(3, 0, 3, 0);
    setMaxLength(std::numeric_limits<int>::max());  // the model limits
  }

 protected:
  void inputMethodEvent(QInputMethodEvent* event) override {
    auto* view = View();
    if (view && view->FilterCommit(*event)) QLineEdit::inputMethodEvent(event);
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (auto* view = View()) view->MenuAsked(*event);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    QLineEdit::mouseDoubleClickEvent(event);
    if (auto* view = View()) view->DoubleClicked();
  }

 private:
  TextView* View() { return static_cast<TextView*>(application_.ViewOf(this)); }
  QtApplication& application_;
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
