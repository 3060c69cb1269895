#include "adapters/qt/elided.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextLayout>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

namespace dossierkit::qt {
namespace {

const QChar kEllipsis(0x2026);

// Ends a text that fits in "…", since more of it follows.
QString Ended(QString text, const QFontMetrics& metrics, int width) {
  while (!text.isEmpty() && metrics.horizontalAdvance(text + kEllipsis) > width) {
    text.chop(text.back().isLowSurrogate() ? 2 : 1);
  }
  return text + kEllipsis;
}

// Each break as one character.
QString WithPlainBreaks(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
      .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

// The lines of a text: it breaks where it says so, and where it has no more room.
QStringList Lines(const QString& text, const QFont& font, int width) {
  QStringList lines;
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  for (const QString& paragraph : WithPlainBreaks(text).split(QLatin1Char('\n'))) {
    QTextLayout layout(paragraph, font);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
      line.setLineWidth(width);
      lines << paragraph.mid(line.textStart(), line.textLength());
    }
    layout.endLayout();
  }
  return lines;
}

}  // namespace

QString Elided(const QString& text, const QFontMetrics& metrics, int width) {
  return metrics.horizontalAdvance(text) <= width ? text : Ended(text, metrics, width);
}

QStringList ElidedLines(const QString& text, const QFont& font, int width, int first, int most_lines,
                        int& all) {
  const QStringList lines = Lines(text, font, std::max(width, 1));
  all = static_cast<int>(lines.size());
  QStringList shown = lines.mid(first, std::max(most_lines, 1));
  if (!shown.isEmpty() && first + shown.size() < all)
    shown.back() = Ended(shown.back(), QFontMetrics(font), width);
  return shown;
}

// As rich text, which wraps; a plain one would make one long line, or be taken for rich text by its "<".
QString TipOf(const QString& text) {
  return QStringLiteral("<p style=\"white-space:pre-wrap\">") + WithPlainBreaks(text).toHtmlEscaped() +
         QStringLiteral("</p>");
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent), bar_(new QScrollBar(Qt::Vertical, this)) {
  setTextFormat(Qt::PlainText);
  bar_->hide();
  bar_->setFocusPolicy(Qt::NoFocus);
  connect(bar_, &QScrollBar::valueChanged, this, [this] { Arrange(); });
}

void ElidedLabel::SetScrolls(bool scrolls) { scrolls_ = scrolls; }

void ElidedLabel::SetOwnTip(const QString& tip) { own_tip_ = tip; }

void ElidedLabel::ShowFromTop(const QString& text) {
  setText(text);
  const QSignalBlocker quiet(bar_);
  bar_->setValue(0);
  Arrange();
}

QRect ElidedLabel::TextPlace() const {
  return contentsRect().adjusted(margin(), margin(), -margin() - (bar_->isHidden() ? 0 : bar_->width()),
                                 -margin());
}

void ElidedLabel::Arrange() {
  const QFontMetrics metrics = fontMetrics();
  arranged_for_ = size();
  bar_->hide();
  if (!wordWrap()) {
    const int width = TextPlace().width();
    cut_ = metrics.horizontalAdvance(text()) > width;
    lines_ = {cut_ ? Ended(text(), metrics, width) : text()};
  } else {
    int all = 0;
    const int most = std::max(1, TextPlace().height() / std::max(1, metrics.lineSpacing()));
    lines_ = ElidedLines(text(), font(), TextPlace().width(), 0, most, all);
    cut_ = all > most;
    if (cut_ && scrolls_) {
      bar_->show();
      const int extent = bar_->sizeHint().width();
      bar_->setGeometry(width() - extent, 0, extent, height());
      ElidedLines(text(), font(), TextPlace().width(), 0, most, all);
      const QSignalBlocker quiet(bar_);
      bar_->setRange(0, all - most);
      bar_->setPageStep(most);
      lines_ = ElidedLines(text(), font(), TextPlace().width(), bar_->value(), most, all);
    }
  }
  setToolTip(cut_ ? TipOf(text()) : own_tip_);
  update();
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
  const int spacing = fontMetrics().lineSpacing();
  const QRect place = TextPlace();
  const int height = static_cast<int>(lines_.size()) * spacing;
  // A single line stands in the middle, beside the first line of its box.
  const bool middle = alignment() & Qt::AlignVCenter || place.height() < 2 * spacing;
  int top = middle ? place.top() + (place.height() - height) / 2 : place.top();
  const int across = static_cast<int>(alignment() & Qt::AlignHorizontal_Mask);
  for (const QString& line : lines_) {
    painter.drawText(QRect(place.left(), top, place.width(), spacing),
                     across | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, line);
    top += spacing;
  }
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  // A first showing tells the size that it has already.
  if (size() != arranged_for_) Arrange();
}

void ElidedLabel::wheelEvent(QWheelEvent* event) {
  if (bar_->isHidden()) {
    event->ignore();
  } else {
    QCoreApplication::sendEvent(bar_, event);
  }
}

bool TipDelegate::IsCut(const QAbstractItemView& view, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  return sizeHint(option, index).width() > option.rect.intersected(view.viewport()->rect()).width();
}

bool TipDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index) {
  if (!event || !view || event->type() != QEvent::ToolTip || !index.isValid() ||
      !IsCut(*view, option, index)) {
    QToolTip::hideText();
    return false;
  }
  QToolTip::showText(event->globalPos(), TipOf(index.data().toString()), view->viewport(), option.rect);
  return true;
}

}  // namespace dossierkit::qt
