#include "adapters/win32/focus_sync.h"

#include "adapters/win32/application.h"
#include "adapters/win32/window_view.h"
#include "platform/environment/during.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::win32 {

void FocusSync::Show(toolkit::Form& form) {
  auto* window = static_cast<WindowView*>(form.GetView());
  if (!window || !window->Handle() || !window->TakesInput()) return;
  const auto& focus = form.ActiveControl();
  auto* view = focus ? static_cast<NativeView*>(focus->GetView()) : nullptr;
  HWND target = view ? view->FocusHandle() : nullptr;
  if (target && (!IsWindowEnabled(target) || !IsWindowVisible(target))) target = nullptr;
  const HWND wanted = target ? target : window->Handle();
  if (GetFocus() == wanted) return;
  // Also where a handler of the host's throws in the middle.
  const environment::During showing(showing_);
  SetFocus(wanted);
  if (target && !application_.MouseHeld()) window->BringIntoSight(*view);
}

void FocusSync::Follow(NativeView& view) {
  if (showing_) return;
  toolkit::Control& control = view.GetControl();
  toolkit::Form* form = toolkit::FormOf(control);
  if (!form || control.HasFocus()) return;
  // The window itself gets it natively when it becomes the active one.
  const bool from_window = &control == form;
  const std::weak_ptr<toolkit::Control> wanted =
      from_window ? std::shared_ptr<toolkit::Control>() : control.shared_from_this();
  const std::weak_ptr<toolkit::Control> later = form->shared_from_this();
  application_.Later(later, [this, wanted, later] {
    // Where the window that had it was hidden, Windows has moved it, and it is elsewhere by now.
    const auto asked = wanted.lock();
    const auto* there = asked ? static_cast<const NativeView*>(asked->GetView()) : nullptr;
    const HWND focus = GetFocus();
    if (there && focus && (focus == there->Handle() || focus == there->FocusHandle())) asked->UserFocus();
    // Where the model did not follow, the native focus goes back.
    if (const auto window = later.lock()) Show(static_cast<toolkit::Form&>(*window));
  });
}

}  // namespace dossierkit::win32
