#include "adapters/qt/text_view.h"

#include <QInputMethodEvent>

#include "adapters/qt/commits.h"
#include "adapters/qt/edit_menu.h"
#include "adapters/qt/qt_application.h"

namespace dossierkit::qt {
bool TextView::FilterCommit(QInputMethodEvent& event) { return FilterCommitted(event, box_, Life()); }

void TextView::DoubleClicked() {
  Context().application.Guard([this] { box_.UserDblClick(); });
}

void TextView::MenuAsked(const QContextMenuEvent& event) {
  OpenEditMenu(Context(), box_, *Widget(), *Hub(), event);
}

void TextView::NativeTextChanged() {
  if (IsShowing()) return;
  const QString after = NativeText();
  const auto change = toolkit::ChangeOf(shown_, box_.GetSelection(),
                                        {ViewOf(after), static_cast<std::size_t>(NativeCaret()), caret_});
  // Also where it ignores the report, the model has its own text shown.
  Context().application.Guard(
      [&] { box_.UserReplace(change.replaced.start, change.replaced.length, change.inserted); });
}

void TextView::NativeSelectionChanged() {
  if (IsShowing() || ViewOf(NativeText()) != shown_.Shown()) return;
  caret_ = static_cast<std::size_t>(NativeCaret());
  const auto selected = shown_.ModelSelection(static_cast<std::size_t>(NativeSelectionStart()),
                                              static_cast<std::size_t>(NativeSelectionLength()));
  Context().application.Guard([&] { box_.UserSelect(selected.start, selected.length); });
}

void TextView::ShowStyle() {
  WidgetView::ShowStyle();
  QPalette palette = Widget()->palette();
  palette.setColor(QPalette::Active, QPalette::Base, ColorOf(box_.BackColor()));
  palette.setColor(QPalette::Inactive, QPalette::Base, ColorOf(box_.BackColor()));
  palette.setColor(QPalette::Active, QPalette::Text, ColorOf(box_.ForeColor()));
  palette.setColor(QPalette::Inactive, QPalette::Text, ColorOf(box_.ForeColor()));
  Widget()->setPalette(palette);
}

void TextView::ShowText() {
  shown_ = toolkit::ShownText(box_.Text(), box_.MultiLine());
  // An equal text is left alone, and with it where the widget has scrolled to.
  if (ViewOf(NativeText()) != shown_.Shown()) {
    const auto showing = Showing();
    SetNativeText(ToQString(shown_.Shown()));
  }
  ShowSelection();
}

void TextView::ShowSelection() {
  const auto selected = shown_.ShownSelection(box_.GetSelection());
  const auto start = static_cast<qsizetype>(selected.start);
  const auto length = static_cast<qsizetype>(selected.length);
  if (NativeSelectionStart() != start || NativeSelectionLength() != length) {
    const auto showing = Showing();
    SetNativeSelection(start, length);
  }
  caret_ = static_cast<std::size_t>(NativeCaret());
}

}  // namespace dossierkit::qt
