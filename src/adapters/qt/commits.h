// Commits: text that an input method hands over.
#pragma once

#include <memory>

class QInputMethodEvent;

namespace dossierkit::toolkit {
class Control;
}

namespace dossierkit::qt {

// Tells the control's window whether a text is being composed, passes what the event commits through its
// KeyPress, and leaves in the event what was not swallowed. False if the view ended meanwhile.
bool FilterCommitted(QInputMethodEvent& event, toolkit::Control& control, const std::weak_ptr<void>& life);

}  // namespace dossierkit::qt
