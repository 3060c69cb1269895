// Looks: the looks of the component's own windows, set on them and on nothing else of the program.
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "adapters/qt/program_style.h"

namespace dossierkit::qt {

// Style, palette, font, locale and direction of a top-level window that was adopted, of all that stands in it
// and of each window that opens over it (dialogs, menus, tool tips), whatever the program's are. Its end
// deletes the windows that are left, since they draw by its style.
class Looks {
 public:
  explicit Looks(const Metrics& metrics);
  ~Looks();
  Looks(const Looks&) = delete;
  Looks& operator=(const Looks&) = delete;

  void Adopt(QWidget& window);
  // Whether the widget is such a window, or stands in one or in a window over one.
  bool Cover(const QWidget& widget) const;
  // To be told of each widget that was made, got another parent, or is about to show for the first time.
  void Made(QWidget& widget);
  void Shows(QWidget& widget);

 private:
  void Dress(QWidget& window);

  ProgramStyle style_;
  QPalette palette_;
  QFont font_;
  std::vector<QPointer<QWidget>> windows_;
};

}  // namespace dossierkit::qt
