#include "host/keys_window.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextTable>
#include <QTextTableCell>
#include <QVBoxLayout>

#include "host/keys_page.h"

namespace dossierkit::host {
namespace {

constexpr QSize kWanted(760, 640);
constexpr int kKeyColumn = 34;    // of a hundred
constexpr int kLineHeight = 125;  // of a hundred
constexpr qreal kGap = 8;
constexpr QColor kHeadTint(0xDD, 0xE6, 0xF1);
constexpr QColor kLineTint(0xF3, 0xF6, 0xFA);

bool IsHelp(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

// The tables as wide as the page, their first line and every second one behind it tinted.
void LayOutTables(QTextDocument& page) {
  for (QTextFrame* frame : page.rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (!table) continue;
    QTextTableFormat format = table->format();
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    format.setColumnWidthConstraints({QTextLength(QTextLength::PercentageLength, kKeyColumn),
                                      QTextLength(QTextLength::PercentageLength, 100 - kKeyColumn)});
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(5);
    format.setTopMargin(kGap);
    format.setBottomMargin(kGap);
    table->setFormat(format);
    for (int row = 0; row < table->rows(); row += 2) {
      for (int column = 0; column < table->columns(); ++column) {
        QTextTableCell cell = table->cellAt(row, column);
        QTextCharFormat look = cell.format();
        look.setBackground(row == 0 ? kHeadTint : kLineTint);
        cell.setFormat(look);
      }
    }
  }
}

// Air above the headings and between the paragraphs.
void SpaceBlocks(QTextDocument& page) {
  for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
    QTextCursor cursor(block);
    if (cursor.currentTable()) continue;
    QTextBlockFormat format = block.blockFormat();
    format.setTopMargin(format.headingLevel() == 2 ? 2 * kGap : kGap / 2);
    format.setBottomMargin(kGap / 2);
    format.setLineHeight(kLineHeight, QTextBlockFormat::ProportionalHeight);
    cursor.setBlockFormat(format);
  }
}

}  // namespace

void ShowKeys() {
  const QPointer<QWidget> below = QApplication::activeWindow();
  QDialog window(below);
  window.setWindowTitle("按键说明");
  auto* page = new QTextBrowser(&window);
  page->setAccessibleName("按键说明");
  page->setFrameShape(QFrame::NoFrame);
  page->document()->setDocumentMargin(18);
  page->setMarkdown(kKeysPage);
  LayOutTables(*page->document());
  SpaceBlocks(*page->document());
  auto* layout = new QVBoxLayout(&window);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page);
  const QScreen* screen = below ? below->screen() : QApplication::primaryScreen();
  window.resize(kWanted.boundedTo(screen->availableSize() * 9 / 10));
  page->setFocus();
  window.exec();
  // Without a window manager nobody else gives the keyboard back.
  if (below) below->activateWindow();
}

KeysHelp::KeysHelp() { QApplication::instance()->installEventFilter(this); }

bool KeysHelp::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (!IsHelp(*event)) return false;
  // Pressed on the page itself it does nothing.
  if (!shown_) {
    shown_ = true;
    ShowKeys();
    shown_ = false;
  }
  return true;
}

}  // namespace dossierkit::host
