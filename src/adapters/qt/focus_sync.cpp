#include "adapters/qt/focus_sync.h"

#include "adapters/qt/qt_application.h"
#include "adapters/qt/window_view.h"
#include "platform/environment/during.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {

void FocusSync::Show(toolkit::Form& form) {
  auto* window = static_cast<WindowView*>(form.GetView());
  if (!window || !window->Widget()) return;
  const auto& focus = form.ActiveControl();
  auto* view = focus ? static_cast<WidgetView*>(focus->GetView()) : nullptr;
  QWidget* target = view ? view->FocusWidget() : nullptr;
  if (target && (!target->isEnabled() || !target->isVisibleTo(window->Widget()))) target = nullptr;
  QWidget* present = window->Widget()->focusWidget();
  if (present == target) return;
  // Also where a handler of the host's throws in the middle.
  const environment::During showing(showing_);
  if (target) {
    target->setFocus(Qt::OtherFocusReason);
    if (!application_.MouseHeld()) window->BringIntoSight(*view);
  } else if (present) {
    present->clearFocus();
  }
}

void FocusSync::Follow(QWidget* now) {
  WidgetView* view = now && !showing_ ? application_.NearestView(now) : nullptr;
  if (!view) return;
  toolkit::Control& control = view->GetControl();
  toolkit::Form* form = toolkit::FormOf(control);
  if (!form || control.HasFocus()) return;
  const bool from_window = reason_ == Qt::ActiveWindowFocusReason || reason_ == Qt::PopupFocusReason;
  const std::weak_ptr<toolkit::Control> wanted =
      from_window ? std::shared_ptr<toolkit::Control>() : control.shared_from_this();
  const std::weak_ptr<toolkit::Control> later = form->shared_from_this();
  QMetaObject::invokeMethod(
      &application_,
      [this, wanted, later] {
        application_.Guard([&] {
          if (const auto asked = wanted.lock()) asked->UserFocus();
          // Where the model did not follow, the native focus goes back.
          if (const auto window = later.lock()) Show(static_cast<toolkit::Form&>(*window));
        });
      },
      Qt::QueuedConnection);
}

}  // namespace dossierkit::qt
