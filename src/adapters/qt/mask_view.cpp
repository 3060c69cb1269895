#include "adapters/qt/mask_view.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <limits>

#include "adapters/qt/commits.h"
#include "adapters/qt/edit_menu.h"
#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

constexpr int kBetweenCharacters = 1;

class MaskEdit : public QLineEdit {
 public:
  MaskEdit(QtApplication& application, QWidget* parent) : QLineEdit(parent), application_(application) {
    setAcceptDrops(false);
    setDragEnabled(false);
    setTextMargins(3, 0, 3, 0);
    setMaxLength(std::numeric_limits<int>::max());
    setInputMethodHints(Qt::ImhPreferNumbers | Qt::ImhNoPredictiveText);
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride) {
      event->accept();
      return true;
    }
    return QLineEdit::event(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Left:
      case Qt::Key_Right:
      case Qt::Key_Home:
      case Qt::Key_End: QLineEdit::keyPressEvent(event); break;
      default: event->ignore();
    }
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (auto* view = View()) view->MenuAsked(*event);
  }
  void inputMethodEvent(QInputMethodEvent* event) override {
    const QPointer<QWidget> alive = this;
    if (auto* view = View()) view->EditByCommit(*event);
    if (alive && View()) QLineEdit::inputMethodEvent(event);
  }
  void focusInEvent(QFocusEvent* event) override {
    QLineEdit::focusInEvent(event);
    gaining_focus_ = true;
    QTimer::singleShot(0, this, [this] { gaining_focus_ = false; });
  }
  void mousePressEvent(QMouseEvent* event) override {
    // The click that gives the focus leaves the caret where the model put it, so that typing starts at
    // the first position of the mask.
    if (!gaining_focus_) QLineEdit::mousePressEvent(event);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton)
      QLineEdit::mouseReleaseEvent(event);  // the middle button would paste
  }

 private:
  MaskView* View() { return static_cast<MaskView*>(application_.ViewOf(this)); }
  QtApplication& application_;
  bool gaining_focus_ = false;
};

}  // namespace

MaskView::MaskView(ViewContext& context, toolkit::MaskEdBox& box)
    : WidgetView(context, box, new MaskEdit(context.application, ParentWidgetOf(box))),
      box_(box),
      native_(static_cast<QLineEdit*>(Widget())) {
  QObject::connect(native_, &QLineEdit::textChanged, Hub(), [this] { NativeTextChanged(); });
  QObject::connect(native_, &QLineEdit::cursorPositionChanged, Hub(), [this] { NativeSelectionChanged(); });
  QObject::connect(native_, &QLineEdit::selectionChanged, Hub(), [this] { NativeSelectionChanged(); });
}

void MaskView::MenuAsked(const QContextMenuEvent& event) {
  OpenEditMenu(Context(), box_, *Widget(), *Hub(), event);
}

void MaskView::EditByCommit(QInputMethodEvent& event) {
  const auto life = Life();
  Context().application.Guard([&] {
    if (!FilterCommitted(event, box_, life)) return;
    const std::string typed = ToUtf8(event.commitString());
    if (!typed.empty()) box_.UserType(typed);
  });
  event.setCommitString({});
}

void MaskView::NativeTextChanged() {
  if (IsShowing() || ViewOf(native_->text()) == shown_.Shown()) return;
  Context().application.Guard([this] { box_.UserReplaceAll(ToUtf8(native_->text())); });
}

void MaskView::NativeSelectionChanged() {
  if (IsShowing() || ViewOf(native_->text()) != shown_.Shown()) return;
  const bool selects = native_->hasSelectedText();
  const auto start = selects ? native_->selectionStart() : native_->cursorPosition();
  const auto selected = shown_.ModelSelection(
      static_cast<std::size_t>(start), static_cast<std::size_t>(selects ? native_->selectionLength() : 0));
  Context().application.Guard([&] { box_.UserSelect(selected.start, selected.length); });
}

void MaskView::ShowStyle() {
  WidgetView::ShowStyle();
  // The prompts of a blank mask can be counted.
  QFont font = native_->font();
  font.setLetterSpacing(QFont::AbsoluteSpacing, GetMetrics().Scaled(kBetweenCharacters));
  native_->setFont(font);
  QPalette palette = native_->palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::Base, ColorOf(box_.BackColor()));
    palette.setColor(group, QPalette::Text, ColorOf(box_.ForeColor()));
  }
  native_->setPalette(palette);
}

void MaskView::ShowText() {
  shown_ = toolkit::ShownText(box_.Text(), false);
  if (ViewOf(native_->text()) != shown_.Shown()) {
    const auto showing = Showing();
    native_->setText(ToQString(shown_.Shown()));
  }
  ShowSelection();
}

void MaskView::ShowSelection() {
  const auto selected = shown_.ShownSelection(box_.GetSelection());
  const auto start = static_cast<int>(selected.start);
  const auto showing = Showing();
  if (selected.length > 0) {
    native_->setSelection(start, static_cast<int>(selected.length));
  } else {
    native_->setCursorPosition(start);
  }
}

}  // namespace dossierkit::qt
