#include "adapters/qt/commits.h"

#include <QInputMethodEvent>

#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {

bool FilterCommitted(QInputMethodEvent& event, toolkit::Control& control, const std::weak_ptr<void>& life) {
  if (event.commitString().isEmpty()) return true;
  toolkit::Form* window = control.Window();
  if (!window) return false;
  const auto keep = window->shared_from_this();
  QString passed;
  for (const uint character : event.commitString().toUcs4()) {
    const bool passes = window->UserKeyPress(character);
    if (life.expired()) return false;
    const char32_t unit = character;
    if (passes) passed += QString::fromUcs4(&unit, 1);
  }
  event.setCommitString(passed, event.replacementStart(), event.replacementLength());
  return true;
}

}  // namespace dossierkit::qt
