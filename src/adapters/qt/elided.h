// Elided: texts that may have less room than they need. What is cut off ends in "…" and stands whole in the
// tool tip.
#pragma once

#include <QFontMetrics>
#include <QLabel>
#include <QString>
#include <QStringList>
#include <QStyledItemDelegate>

class QScrollBar;

namespace dossierkit::qt {

// The text in one line of at most that width.
QString Elided(const QString& text, const QFontMetrics& metrics, int width);
// The text in lines of at most that width, `most_lines` of them, from the line `first` on; `all` receives how
// many lines there are.
QStringList ElidedLines(const QString& text, const QFont& font, int width, int first, int most_lines,
                        int& all);
// A tool tip that shows the text as it is, in lines that fit on the screen.
QString TipOf(const QString& text);

// A label of one line, or of as many as fit into its height. Its text stays whole, also for screen readers.
class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(QWidget* parent);
  // Of a long text the rest can be scrolled to, by wheel and scroll bar.
  void SetScrolls(bool scrolls);
  // The tool tip of a text that is not cut off.
  void SetOwnTip(const QString& tip);
  // Another text, from its first line on.
  void ShowFromTop(const QString& text);
  // To be called after font, wrapping or margin changed.
  void Arrange();

  // The lines as they are painted now.
  const QStringList& ShownLines() const { return lines_; }
  bool IsCut() const { return cut_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  QRect TextPlace() const;

  QStringList lines_;
  QString own_tip_;
  QSize arranged_for_;
  QScrollBar* bar_;
  bool scrolls_ = false;
  bool cut_ = false;
};

// Items of lists, tables and trees: the tool tip of an item that is cut off shows the whole of it.
class TipDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  // The width that the item's text has, and the width that it needs.
  virtual bool IsCut(const QAbstractItemView& view, const QStyleOptionViewItem& option,
                     const QModelIndex& index) const;
};

}  // namespace dossierkit::qt
