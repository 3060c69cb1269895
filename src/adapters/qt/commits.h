// Commits: text that an input method hands over.
#pragma once

#include <memory>

class QInputMethodEvent;

namespace dossierkit::toolkit {
class Control;
}

namespace dossierkit::qt {

// Passes the committed text of the event through the KeyPress of the control's window, character by
// character, and leaves in the event what was not swallowed. False if the view ended meanwhile.
bool FilterCommitted(QInputMethodEvent& event, toolkit::Control& control, const std::weak_ptr<void>& life);

}  // namespace dossierkit::qt
