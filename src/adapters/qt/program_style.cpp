#include "adapters/qt/program_style.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>

namespace dossierkit::qt {
namespace {

constexpr double kCellMargin = 5;  // beside the text of a cell, and of its head
constexpr double kItemMargin = 4;  // beside that of a list or tree

bool HasKeyboard(const QWidget* widget) { return widget && widget->hasFocus(); }

// An unfocused list does not shout.
void Soften(QStyleOptionViewItem& option) {
  option.palette.setColor(QPalette::Highlight, SelectionColor());
  option.palette.setColor(QPalette::HighlightedText, SelectedTextColor());
}

// Whether an item is the leftmost one of its row in sight.
bool LeadsRow(const QStyleOptionViewItem& option, const QWidget* widget) {
  if (const auto* table = qobject_cast<const QTableView*>(widget))
    return option.index.column() == table->columnAt(0);
  return !qobject_cast<const QTreeView*>(widget);  // a tree draws its rows itself
}

}  // namespace

ProgramStyle::ProgramStyle(const Metrics& metrics)
    : QProxyStyle(QStringLiteral("Fusion")), metrics_(metrics) {}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_DefaultFrameWidth: return metrics_.Ring();
    case PM_FocusFrameHMargin:
      return metrics_.Scaled(qobject_cast<const QTableView*>(widget) ? kCellMargin : kItemMargin);
    case PM_HeaderMargin: return metrics_.Scaled(kCellMargin) + 1;  // as Qt adds one in the cells
    default: return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
  switch (hint) {
    case SH_ItemView_ShowDecorationSelected: return 1;
    case SH_ScrollBar_ContextMenu: return 0;  // in Qt's words, and a loop of its own
    case SH_Table_GridLineColor: return static_cast<int>(LineColor().lighter(108).rgb());
    default: return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

void ProgramStyle::DrawBox(QPainter& painter, const QStyleOption& option) const {
  const bool enabled = option.state & State_Enabled;
  const bool ring = enabled && (option.state & State_HasFocus);
  PaintBox(painter, option.rect, option.palette.brush(QPalette::Base),
           {ring      ? AccentColor()
            : enabled ? EdgeColor()
                      : LineColor(),
            ring ? metrics_.Ring() : metrics_.Edge(), metrics_.Radius()});
}

void ProgramStyle::DrawButton(QPainter& painter, const QStyleOption& option) const {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  const bool enabled = option.state & State_Enabled;
  const bool ring = enabled && (option.state & State_HasFocus);
  const bool leads = enabled && button && (button->features & QStyleOptionButton::DefaultButton);
  QBrush fill = option.palette.brush(enabled ? QPalette::Button : QPalette::Window);
  if (option.state & (State_Sunken | State_On)) {
    fill = SelectionColor();
  } else if (enabled && (option.state & State_MouseOver)) {
    fill = HoverColor();
  }
  PaintBox(painter, option.rect, fill,
           {ring || leads ? AccentColor()
            : enabled     ? EdgeColor()
                          : LineColor(),
            ring ? metrics_.Ring() : metrics_.Edge(), metrics_.Radius()});
}

void ProgramStyle::DrawBar(QPainter& painter, const QRect& row) const {
  painter.fillRect(QRect(row.left(), row.top(), metrics_.Scaled(kBarWidth), row.height()), AccentColor());
}

void ProgramStyle::DrawItem(QPainter& painter, const QStyleOptionViewItem& option,
                            const QWidget* widget) const {
  const bool pale = (option.state & State_Selected) && !HasKeyboard(widget);
  QStyleOptionViewItem drawn = option;
  if (pale) Soften(drawn);
  QProxyStyle::drawControl(CE_ItemViewItem, &drawn, &painter, widget);
  if (pale && LeadsRow(option, widget)) DrawBar(painter, option.rect);
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
  switch (element) {
    case PE_PanelLineEdit: {
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      if (frame && frame->lineWidth > 0) {
        DrawBox(*painter, *option);
      } else {
        painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
      }
      break;
    }
    case PE_Frame: DrawBox(*painter, *option); break;
    case PE_PanelButtonCommand: DrawButton(*painter, *option); break;
    case PE_FrameFocusRect:
      // These show it in their own way.
      if (qobject_cast<const QAbstractItemView*>(widget) || qobject_cast<const QPushButton*>(widget) ||
          qobject_cast<const QTabBar*>(widget))
        break;
      PaintBox(*painter, option->rect, Qt::NoBrush, {AccentColor(), metrics_.Ring(), metrics_.Radius()});
      break;
    case PE_PanelItemViewRow: {
      const auto* row = qstyleoption_cast<const QStyleOptionViewItem*>(option);
      const bool pale = row && (row->state & State_Selected) && !HasKeyboard(widget);
      if (!pale) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        break;
      }
      QStyleOptionViewItem drawn = *row;
      Soften(drawn);
      QProxyStyle::drawPrimitive(element, &drawn, painter, widget);
      if (qobject_cast<const QTreeView*>(widget)) DrawBar(*painter, row->rect);
      break;
    }
    default: QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  switch (element) {
    case CE_ItemViewItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
        DrawItem(*painter, *item, widget);
        return;
      }
      break;
    case CE_HeaderSection:
    case CE_HeaderEmptyArea: {
      const QRect& place = option->rect;
      painter->fillRect(place, BarColor());
      painter->fillRect(QRect(place.left(), place.bottom(), place.width(), 1), LineColor());
      if (element == CE_HeaderSection)
        painter->fillRect(QRect(place.right(), place.top(), 1, place.height()), LineColor());
      return;
    }
    case CE_HeaderLabel:
      // The margin is meant for its sides.
      if (const auto* head = qstyleoption_cast<const QStyleOptionHeaderV2*>(option)) {
        QStyleOptionHeaderV2 tall = *head;
        const int margin = pixelMetric(PM_HeaderMargin, option, widget);
        tall.rect.adjust(0, -margin, 0, margin);
        QProxyStyle::drawControl(element, &tall, painter, widget);
        return;
      }
      break;
    case CE_TabBarTab:
      QProxyStyle::drawControl(element, option, painter, widget);
      if ((option->state & State_Selected) && HasKeyboard(widget)) {
        const int inset = metrics_.Ring() + metrics_.Edge();
        PaintBox(*painter, option->rect.adjusted(inset, inset, -inset, -metrics_.Edge()), Qt::NoBrush,
                 {AccentColor(), metrics_.Ring(), metrics_.Radius()});
      }
      return;
    default: break;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

}  // namespace dossierkit::qt
