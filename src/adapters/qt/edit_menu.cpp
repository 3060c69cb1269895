#include "adapters/qt/edit_menu.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <vector>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/edit_box.h"

namespace dossierkit::qt {

void OpenEditMenu(ViewContext& context, toolkit::EditBox& box, QWidget& widget, QObject& life,
                  const QContextMenuEvent& asked) {
  std::vector<toolkit::EditMenuItem> items;
  context.application.Guard([&] { items = box.ContextMenu(); });
  if (items.empty()) return;
  auto* menu = new QMenu(&widget);
  menu->setObjectName(QStringLiteral("EditMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const auto& item : items) {
    if (item.line_above) menu->addSeparator();
    QAction* action = menu->addAction(ToQString(item.caption));
    action->setEnabled(item.enabled);
    QObject::connect(action, &QAction::triggered, &life, [&context, &box, command = item.command] {
      context.application.Guard([&] { box.UserCommand(command); });
    });
  }
  QObject::connect(&life, &QObject::destroyed, menu, &QWidget::close);
  const bool by_mouse = asked.reason() == QContextMenuEvent::Mouse;
  menu->popup(by_mouse ? asked.globalPos() : widget.mapToGlobal(QPoint(0, widget.height())));
}

}  // namespace dossierkit::qt
