// The suite of tests for views on the Qt views: what shows is read from the native widgets.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextCursor>
#include <QTreeView>
#include <stdexcept>

#include "tests/adapters/views/driver.h"
#include "tests/support/window_test.h"

namespace dossierkit::views {
namespace {

// Rows that came one by one show once the event that brought them has ended.
void Wait() { QCoreApplication::processEvents(); }

class QtDriver : public Driver {
 public:
  void Play(toolkit::Form& form, const std::function<void()>& scene) override {
    Driver::Play(form, [&] {
      if (!QTest::qWaitFor([name = QString::fromStdString(form.Name())] {
            const QWidget* active = QApplication::activeWindow();
            return active && active->objectName() == name;
          }))
        throw std::logic_error("the window did not become active");
      scene();
    });
  }
  std::string Text(const std::string& name) override {
    QWidget* widget = Widget(name);
    if (auto* line = qobject_cast<QLineEdit*>(widget)) return line->text().toStdString();
    if (auto* area = qobject_cast<QPlainTextEdit*>(widget))
      return area->toPlainText().replace("\n", "\r\n").toStdString();
    if (auto* label = qobject_cast<QLabel*>(widget)) return label->text().toStdString();
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->text().toStdString();
    return widget->windowTitle().toStdString();
  }
  toolkit::Selection Selected(const std::string& name) override {
    QWidget* widget = Widget(name);
    int start = 0;
    int length = 0;
    if (auto* line = qobject_cast<QLineEdit*>(widget)) {
      start = line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
      length = line->hasSelectedText() ? line->selectionLength() : 0;
    } else {
      const QTextCursor cursor = dynamic_cast<QPlainTextEdit&>(*widget).textCursor();
      start = cursor.selectionStart();
      length = cursor.selectionEnd() - start;
    }
    return {static_cast<std::size_t>(start), static_cast<std::size_t>(length)};
  }
  bool Checked(const std::string& name) override {
    return dynamic_cast<QAbstractButton&>(*Widget(name)).isChecked();
  }
  bool InSight(const std::string& name) override { return Widget(name)->isVisible(); }
  bool Enabled(const std::string& name) override { return Widget(name)->isEnabled(); }
  int Row(const std::string& name) override {
    QWidget* widget = Widget(name);
    if (auto* tabs = widget->findChild<QTabBar*>(QString::fromStdString(name + "_Tabs")))
      return tabs->currentIndex();
    auto* view = Items(name);
    Wait();
    return view->selectionModel()->hasSelection() ? view->currentIndex().row() : -1;
  }
  int Rows(const std::string& name) override {
    auto* view = Items(name);
    Wait();
    auto* tree = qobject_cast<QTreeView*>(view);
    if (!tree) return view->model()->rowCount();
    int rows = 0;
    for (QModelIndex index = tree->model()->index(0, 0); index.isValid(); index = tree->indexBelow(index))
      ++rows;
    return rows;
  }
  std::string Node(const std::string& name) override {
    auto* view = Items(name);
    Wait();
    const bool chosen = view->selectionModel()->hasSelection();
    return chosen ? view->currentIndex().data().toString().toStdString() : "";
  }
  std::string Focus() override {
    for (QWidget* widget = QApplication::focusWidget(); widget && !widget->isWindow();
         widget = widget->parentWidget()) {
      const std::string name = widget->objectName().toStdString();
      for (const std::string& control : {name, name.substr(0, name.rfind('_'))}) {
        if (!control.empty() && Known(control)) return control;
      }
    }
    return "";
  }
  std::string Spoken(const std::string& name) override {
    return Widget(name)->accessibleName().toStdString();
  }

 private:
  bool Known(const std::string& name) {
    try {
      return Find<toolkit::Control>(name)->TakesFocus();
    } catch (const std::logic_error&) {
      return false;
    }
  }
  QWidget* Widget(const std::string& name) {
    const QString native = QString::fromStdString(name);
    const QString top = QString::fromStdString(Window().Name());
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible() || window->objectName() != top) continue;
      if (native == top) return window;
      if (auto* widget = window->findChild<QWidget*>(native)) return widget;
    }
    throw std::logic_error("no widget " + name);
  }
  QAbstractItemView* Items(const std::string& name) {
    QWidget* widget = Widget(name);
    auto* items = qobject_cast<QAbstractItemView*>(widget);
    return items ? items : widget->findChild<QAbstractItemView*>();
  }
};

}  // namespace

std::unique_ptr<Driver> MakeDriver() { return std::make_unique<QtDriver>(); }

}  // namespace dossierkit::views
