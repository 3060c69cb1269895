#include "host/tour/player.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollArea>
#include <QWindow>
#include <algorithm>

namespace dossierkit::host {
namespace {

constexpr int kPause = 8;        // milliseconds between two actions
constexpr int kPatience = 5000;  // until an action that finds nothing fails

QWidget* TopWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

QString NameOf(QWidget& widget) {
  const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
  return accessible ? accessible->text(QAccessible::Name) : QString();
}

// Labels bear the same name as what they label, so a widget that can be used comes first.
QWidget* Find(const QString& name) {
  QWidget* window = TopWindow();
  if (!window) return nullptr;
  QWidget* found = nullptr;
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    if (!widget->isVisible() || !widget->isEnabled() || NameOf(*widget) != name) continue;
    if (widget->focusPolicy() != Qt::NoFocus || widget->inherits("QAbstractButton")) return widget;
    if (!found) found = widget;
  }
  return found;
}

// As a mouse does: the window of the screen gets it, and looks for the widget.
void PostClick(QWidget& widget, const QPoint& place, QEvent::Type press = QEvent::MouseButtonPress) {
  for (QWidget* parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&widget);
  }
  const QPointF local = widget.mapTo(widget.window(), place);
  const QPointF global = widget.mapToGlobal(QPointF(place));
  for (const auto type : {press, QEvent::MouseButtonRelease}) {
    const auto held = type == press ? Qt::LeftButton : Qt::NoButton;
    QApplication::postEvent(widget.window()->windowHandle(),
                            new QMouseEvent(type, local, global, Qt::LeftButton, held, Qt::NoModifier));
  }
}

bool PostKey(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
  QWidget* window = TopWindow();
  if (!window) return false;
  // A list of suggestions takes the keys first.
  QWidget* target = QApplication::activePopupWidget();
  if (!target) target = QApplication::focusWidget() ? QApplication::focusWidget() : window;
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QApplication::postEvent(target, new QKeyEvent(type, key, modifiers, text));
  }
  return true;
}

bool PostText(const QString& character) {
  if (character[0].unicode() < 0x80) {
    return PostKey(static_cast<Qt::Key>(character[0].toUpper().unicode()), {}, character);
  }
  QWidget* target = QApplication::focusWidget();
  if (!target) return false;
  auto* commit = new QInputMethodEvent;
  commit->setCommitString(character);
  QApplication::postEvent(target, commit);
  return true;
}

// All windows that are open, the lower first, as they lie over one another.
QPixmap GrabWindows() {
  QWidgetList windows;
  QRect all;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible()) continue;
    windows.append(window);
    all |= window->geometry();
  }
  std::sort(windows.begin(), windows.end(), [](const QWidget* a, const QWidget* b) {
    return a->width() * a->height() > b->width() * b->height();
  });
  if (windows.isEmpty()) return {};
  QPixmap picture(all.size());
  picture.fill(Qt::white);
  QPainter painter(&picture);
  for (QWidget* window : windows) {
    const QPoint place = window->geometry().topLeft() - all.topLeft();
    painter.drawPixmap(place, window->grab());
    if (window == windows.front()) continue;
    painter.setPen(Qt::gray);
    painter.drawRect(QRect(place, window->size()).adjusted(0, 0, -1, -1));
  }
  return picture;
}

}  // namespace

Player::Player() {
  timer_.setInterval(kPause);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Next(); });
}

void Player::Type(const QString& text) {
  for (const QChar character : text) {
    actions_.emplace_back("type " + text, [character] { return PostText(character); });
  }
}

void Player::Press(Qt::Key key, Qt::KeyboardModifiers modifiers, int times) {
  const QString text = key == Qt::Key_Return ? "\r" : key == Qt::Key_Tab ? "\t" : "";
  for (int i = 0; i < times; ++i) {
    actions_.emplace_back("press a key", [=] { return PostKey(key, modifiers, text); });
  }
}

void Player::Click(const QString& accessible_name) {
  actions_.emplace_back("click " + accessible_name, [accessible_name] {
    QWidget* widget = Find(accessible_name);
    if (!widget) return false;
    PostClick(*widget, widget->rect().center());
    return true;
  });
}

void Player::DoubleClick(const QString& accessible_name) {
  Click(accessible_name);
  actions_.emplace_back("double-click " + accessible_name, [accessible_name] {
    QWidget* widget = Find(accessible_name);
    if (!widget) return false;
    PostClick(*widget, widget->rect().center(), QEvent::MouseButtonDblClick);
    return true;
  });
}

void Player::ClickItem(const QString& list, const QString& text) {
  actions_.emplace_back("click " + text + " in " + list, [=] {
    auto* view = qobject_cast<QAbstractItemView*>(Find(list));
    if (!view) return false;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
      const QModelIndex index = view->model()->index(row, 0);
      if (index.data(Qt::AccessibleTextRole).toString() != text && index.data().toString() != text) continue;
      view->scrollTo(index);
      PostClick(*view->viewport(), view->visualRect(index).center());
      return true;
    }
    return false;
  });
}

void Player::ClickRow(const QString& table, int row) {
  actions_.emplace_back("click a row of " + table, [=] {
    auto* view = qobject_cast<QAbstractItemView*>(Find(table));
    if (!view || row >= view->model()->rowCount()) return false;
    const QModelIndex index = view->model()->index(row, 0);
    view->scrollTo(index);
    PostClick(*view->viewport(), view->visualRect(index).center());
    return true;
  });
}

void Player::ChooseFile(const QString& field, const QString& button, const QString& path) {
  Click(field);
  Type(path);
  actions_.emplace_back("choose " + path, [=] {
    if (!Find(field)) return true;
    if (Find(button)) {
      PostKey(Qt::Key_Return, {}, "\r");
    } else {
      PostKey(Qt::Key_Backspace, {}, "");
      PostText(path.last(1));
    }
    return false;
  });
}

void Player::Resize(int width, int height) {
  actions_.emplace_back("resize the window", [=] {
    QWidget* window = TopWindow();
    if (window) window->resize(width, height);
    return window != nullptr;
  });
}

void Player::Picture(const std::filesystem::path& file) {
  actions_.emplace_back("picture", [this, file] {
    if (!TopWindow()) return false;
    if (!GrabWindows().save(QString::fromStdString(file.string())))
      Fail("无法写入图片 " + QString::fromStdString(file.string()));
    return true;
  });
}

void Player::Check(std::function<void()> check) {
  actions_.emplace_back("check", [this, check = std::move(check)] {
    try {
      check();
    } catch (const std::exception& failure) {
      Fail(failure.what());
    }
    return true;
  });
}

void Player::Start() { timer_.start(); }

void Player::Next() {
  if (actions_.empty()) {
    timer_.stop();
    return;
  }
  // A person acts on a window that has come to rest, not on one that is just becoming active again.
  const QWidget* window = TopWindow();
  const bool active = window && (window->isActiveWindow() || QApplication::activePopupWidget());
  const bool at_rest = active && window == seen_;
  seen_ = window;
  if (!at_rest) {
    if ((waited_ += kPause) > kPatience) Fail(actions_.front().first + ": no window is active");
    return;
  }
  // The action may open a window, in whose loop the next one is played.
  const auto [name, action] = actions_.front();
  if (action()) {
    waited_ = 0;
    if (!actions_.empty()) actions_.pop_front();
  } else if ((waited_ += kPause) > kPatience) {
    Fail("cannot " + name);
  }
}

void Player::Fail(const QString& why) {
  if (failure_.isEmpty()) failure_ = why;
  actions_.clear();
  timer_.stop();
  // Whatever is open goes, so that the program ends.
  for (int i = 0; i < 10 && TopWindow(); ++i) {
    QTimer::singleShot(100 * i, [] {
      if (QWidget* window = TopWindow()) {
        PostKey(Qt::Key_Return, {}, "\r");
        window->close();
      }
    });
  }
}

}  // namespace dossierkit::host
