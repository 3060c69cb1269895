#include "adapters/qt/button_views.h"

#include <QCheckBox>
#include <QPushButton>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

// Never checks itself: the model does.
class Box : public QCheckBox {
 public:
  Box(QtApplication& application, QWidget* parent) : QCheckBox(parent), application_(application) {}

 protected:
  void nextCheckState() override {
    if (auto* view = application_.ViewOf(this)) {
      auto& box = static_cast<toolkit::CheckBox&>(view->GetControl());
      application_.Guard([&] { box.UserToggle(); });
    }
  }

 private:
  QtApplication& application_;
};

}  // namespace

CommandButtonView::CommandButtonView(ViewContext& context, toolkit::CommandButton& button)
    : WidgetView(context, button, new QPushButton(ParentWidgetOf(button))),
      button_(button),
      native_(static_cast<QPushButton*>(Widget())) {
  QObject::connect(native_, &QPushButton::clicked, Hub(),
                   [this] { Context().application.Guard([this] { button_.UserClick(); }); });
}

void CommandButtonView::ShowStyle() {
  WidgetView::ShowStyle();
  native_->setDefault(button_.Default());
}

void CommandButtonView::ShowText() {
  native_->setText(ToQString(button_.Caption()));
  native_->setShortcut({});  // mnemonics are the model's
}

CheckBoxView::CheckBoxView(ViewContext& context, toolkit::CheckBox& box)
    : WidgetView(context, box, new Box(context.application, ParentWidgetOf(box))),
      box_(box),
      native_(static_cast<QCheckBox*>(Widget())) {
  // A mark from outside, by accessibility.
  QObject::connect(native_, &QCheckBox::toggled, Hub(), [this] {
    if (!IsShowing()) Context().application.Guard([this] { box_.UserToggle(); });
  });
}

void CheckBoxView::ShowText() {
  native_->setText(ToQString(box_.Caption()));
  native_->setShortcut({});
  const auto showing = Showing();
  native_->setChecked(box_.Value() != 0);
}

}  // namespace dossierkit::qt
