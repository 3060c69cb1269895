// TextWidget: what the native widgets of the boxes of one line and of several have in common.
#pragma once

#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMouseEvent>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/text_view.h"

namespace dossierkit::qt {

// Input methods, the menu and a double click are its view's.
template <typename Native>
class TextWidget : public Native {
 protected:
  TextWidget(QtApplication& application, QWidget* parent) : Native(parent), application_(application) {}

  void inputMethodEvent(QInputMethodEvent* event) override {
    auto* view = View();
    if (view && view->FilterCommit(*event)) Native::inputMethodEvent(event);
  }
  void contextMenuEvent(QContextMenuEvent* event) override {
    if (auto* view = View()) view->MenuAsked(*event);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    Native::mouseDoubleClickEvent(event);
    if (auto* view = View()) view->DoubleClicked();
  }

 private:
  TextView* View() { return static_cast<TextView*>(application_.ViewOf(this)); }
  QtApplication& application_;
};

}  // namespace dossierkit::qt
