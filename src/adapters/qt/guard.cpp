#include "adapters/qt/guard.h"

#include <exception>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/window_view.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {
namespace {

// Not at once: this may run in the middle of the painting. A window that went meanwhile hears nothing.
void Report(QtApplication& application, const std::exception_ptr& failure) {
  WindowView* top = application.TopWindow();
  if (!top) return;
  const std::weak_ptr<toolkit::Control> window = top->GetControl().weak_from_this();
  QMetaObject::invokeMethod(
      &application,
      [window, failure] {
        const auto form = window.lock();
        if (form) static_cast<toolkit::Form&>(*form).Deliver([&] { std::rethrow_exception(failure); });
      },
      Qt::QueuedConnection);
}

}  // namespace

void RunGuarded(QtApplication& application, const std::function<void()>& work) {
  try {
    work();
  } catch (...) {
    Report(application, std::current_exception());
  }
}

}  // namespace dossierkit::qt
