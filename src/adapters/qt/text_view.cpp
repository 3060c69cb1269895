#include "adapters/qt/text_view.h"

#include <QInputMethodEvent>
#include <string>

#include "adapters/qt/commits.h"
#include "adapters/qt/edit_menu.h"
#include "adapters/qt/qt_application.h"

namespace dossierkit::qt {
namespace {

// Every break of a text of several lines becomes CR LF.
std::string WithModelBreaks(const QString& text) {
  QString breaks = text;
  breaks.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return ToUtf8(breaks.replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
}

}  // namespace

bool TextView::FilterCommit(QInputMethodEvent& event) { return FilterCommitted(event, box_, Life()); }

void TextView::DoubleClicked() {
  Context().application.Guard([this] { box_.UserDblClick(); });
}

void TextView::MenuAsked(const QContextMenuEvent& event) {
  OpenEditMenu(Context(), box_, *Widget(), *Hub(), event);
}

void TextView::NativeTextChanged() {
  if (showing_) return;
  const QString after = NativeText();
  TextChange change = FindChange(shown_.Shown(), after, NativeCaret());
  std::size_t start = shown_.ModelPosition(change.start);
  std::size_t end = shown_.ModelPosition(change.start + change.removed);
  if (const std::size_t selected = box_.SelStart() + box_.SelLength(); selected > shown_.Count()) {
    // The selection goes on where the widget shows nothing more: all of it is replaced.
    const qsizetype from = shown_.ShownPosition(box_.SelStart());
    const qsizetype entered = NativeCaret() - from;
    change.inserted = entered > 0 ? after.mid(from, entered) : QString();
    start = box_.SelStart();
    end = selected;
    // Backspace where the caret itself is out of sight.
    if (entered < 0 && box_.SelLength() == 0) start -= static_cast<std::size_t>(-entered);
  } else if (change.removed > 0 && start == end && change.inserted.isEmpty()) {
    // Only a break that the widget shows inside a long line: what stands beside it was meant.
    if (caret_ > change.start) {
      --start;
    } else {
      ++end;
    }
  }
  const auto life = Life();
  Context().application.Guard([&] {
    box_.UserReplace(start, end - start,
                     box_.MultiLine() ? WithModelBreaks(change.inserted) : ToUtf8(change.inserted));
  });
  // Also where the report was ignored, the model's text is what stands there.
  if (!life.expired()) ShowText();
}

void TextView::NativeSelectionChanged() {
  if (showing_ || NativeText() != shown_.Shown()) return;
  caret_ = NativeCaret();
  const qsizetype start = NativeSelectionStart();
  const std::size_t from = shown_.ModelPosition(start);
  const std::size_t to = shown_.ModelPosition(start + NativeSelectionLength());
  box_.UserSelect(from, to - from);
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
  shown_ = ShownText(box_.Text(), box_.MultiLine());
  // An equal text is left alone, and with it where the widget has scrolled to.
  if (NativeText() != shown_.Shown()) {
    showing_ = true;
    SetNativeText(shown_.Shown());
    showing_ = false;
  }
  ShowSelection();
}

void TextView::ShowSelection() {
  const qsizetype start = shown_.ShownPosition(box_.SelStart());
  const qsizetype length = shown_.ShownPosition(box_.SelStart() + box_.SelLength()) - start;
  if (NativeSelectionStart() != start || NativeSelectionLength() != length) {
    showing_ = true;
    SetNativeSelection(start, length);
    showing_ = false;
  }
  caret_ = NativeCaret();
}

}  // namespace dossierkit::qt
