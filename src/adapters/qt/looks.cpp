#include "adapters/qt/looks.h"

#include <QApplication>
#include <QLocale>
#include <algorithm>

namespace dossierkit::qt {
namespace {

// No widget hands it on to its children.
void GiveStyle(QWidget& widget, QStyle& style) {
  if (!widget.testAttribute(Qt::WA_SetStyle)) widget.setStyle(&style);
  for (QObject* child : widget.children()) {
    if (child->isWidgetType()) GiveStyle(static_cast<QWidget&>(*child), style);
  }
}

}  // namespace

Looks::Looks(const Metrics& metrics)
    : style_(metrics), palette_(ProgramPalette()), font_(metrics.ProgramFont()) {}

Looks::~Looks() {
  for (const QPointer<QWidget>& window : windows_) delete window.data();
}

void Looks::Adopt(QWidget& window) {
  std::erase_if(windows_, [](const QPointer<QWidget>& adopted) { return !adopted; });
  windows_.emplace_back(&window);
  GiveStyle(window, style_);
  Dress(window);
}

bool Looks::Cover(const QWidget& widget) const {
  const QWidget* top = &widget;
  while (top->parentWidget()) top = top->parentWidget();
  return std::find(windows_.begin(), windows_.end(), top) != windows_.end();
}

void Looks::Made(QWidget& widget) {
  if (!Cover(widget)) return;
  GiveStyle(widget, style_);
  // All else is handed on from parent to child, but not into another window, nor below a style sheet.
  if (widget.isWindow() || !qApp->styleSheet().isEmpty()) Dress(widget);
}

// A tool tip has taken the program's colours meanwhile.
void Looks::Shows(QWidget& widget) {
  if (widget.windowType() == Qt::ToolTip && Cover(widget)) widget.setPalette(palette_);
}

void Looks::Dress(QWidget& window) {
  window.setPalette(palette_);
  window.setFont(font_);
  window.setLocale(QLocale(QLocale::Chinese, QLocale::China));
  window.setLayoutDirection(Qt::LeftToRight);
}

}  // namespace dossierkit::qt
