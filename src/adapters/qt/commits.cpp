#include "adapters/qt/commits.h"

#include <QInputMethodEvent>

#include "adapters/qt/texts.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {

bool FilterCommitted(QInputMethodEvent& event, toolkit::Control& control, const std::weak_ptr<void>& life) {
  toolkit::Form* window = toolkit::FormOf(control);
  if (window) window->UserCompose(!event.preeditString().isEmpty());
  if (event.commitString().isEmpty()) return true;
  if (!window) return false;
  const std::string passed = window->UserCommit(ToUtf8(event.commitString()));
  if (life.expired()) return false;
  event.setCommitString(ToQString(passed), event.replacementStart(), event.replacementLength());
  return true;
}

}  // namespace dossierkit::qt
