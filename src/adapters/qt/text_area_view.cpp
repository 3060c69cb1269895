#include "adapters/qt/text_area_view.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextOption>
#include <algorithm>

#include "adapters/qt/text_widget.h"
#include "adapters/qt/window_view.h"

namespace dossierkit::qt {
namespace {

class TextEdit : public TextWidget<QPlainTextEdit> {
 public:
  TextEdit(QtApplication& application, QWidget* parent) : TextWidget(application, parent) {
    setUndoRedoEnabled(false);  // the model takes back
    setAcceptDrops(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(2);
    setViewportMargins(3, 0, 0, 0);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
      // Also with Ctrl, which the native widget knows nothing of.
      textCursor().insertBlock();
      ensureCursorVisible();
    } else {
      QPlainTextEdit::keyPressEvent(event);
    }
  }
  QMimeData* createMimeDataFromSelection() const override {
    auto* copied = new QMimeData;
    copied->setText(textCursor().selection().toPlainText());
    return copied;
  }
};

}  // namespace

TextAreaView::TextAreaView(ViewContext& context, toolkit::TextBox& box)
    : TextView(context, box, new TextEdit(context.application, ParentWidgetOf(box))),
      native_(static_cast<QPlainTextEdit*>(Widget())) {
  QObject::connect(native_, &QPlainTextEdit::textChanged, Hub(), [this] { NativeTextChanged(); });
  QObject::connect(native_, &QPlainTextEdit::cursorPositionChanged, Hub(), [this] {
    NativeSelectionChanged();
    FollowCaret();
  });
  QObject::connect(native_, &QPlainTextEdit::selectionChanged, Hub(), [this] { NativeSelectionChanged(); });
}

void TextAreaView::ShowStyle() {
  TextView::ShowStyle();
  // What is selected shows while the box has the keyboard.
  QPalette palette = native_->palette();
  palette.setColor(QPalette::Inactive, QPalette::Highlight,
                   palette.color(QPalette::Inactive, QPalette::Base));
  palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                   palette.color(QPalette::Inactive, QPalette::Text));
  native_->setPalette(palette);
}

// A box may be taller than what a small screen shows of its page.
void TextAreaView::FollowCaret() {
  WindowView* window = native_->hasFocus() ? Window() : nullptr;
  if (!window) return;
  const QRect caret = native_->cursorRect();
  window->BringIntoSight(*this, {native_->viewport()->mapTo(native_, caret.topLeft()), caret.size()});
}

// Unlike the widget's own plain text this leaves blanks of every kind as they are.
QString TextAreaView::NativeText() const {
  QString text = native_->document()->toRawText();
  for (QChar& character : text) {
    if (character == QChar::ParagraphSeparator || character == QChar::LineSeparator)
      character = QLatin1Char('\n');
  }
  return text;
}

void TextAreaView::SetNativeText(const QString& text) { native_->setPlainText(text); }

qsizetype TextAreaView::NativeCaret() const { return native_->textCursor().position(); }

qsizetype TextAreaView::NativeSelectionStart() const { return native_->textCursor().selectionStart(); }

qsizetype TextAreaView::NativeSelectionLength() const {
  return native_->textCursor().selectionEnd() - native_->textCursor().selectionStart();
}

void TextAreaView::SetNativeSelection(qsizetype start, qsizetype length) {
  const qsizetype end = native_->document()->characterCount() - 1;
  QTextCursor cursor = native_->textCursor();
  cursor.setPosition(static_cast<int>(std::min(start, end)));
  if (length > 0)
    cursor.setPosition(static_cast<int>(std::min(start + length, end)), QTextCursor::KeepAnchor);
  native_->setTextCursor(cursor);
}

}  // namespace dossierkit::qt
