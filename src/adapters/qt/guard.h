// Guard: no failure of the system's passes through a frame of Qt's.
#pragma once

#include <functional>

namespace dossierkit::qt {

class QtApplication;

// Runs what a handler of a view does on its own, a report into the model for one. A failure waits until Qt's
// frames have ended, and ends the loop of the window on top; without a window nobody hears it.
void RunGuarded(QtApplication& application, const std::function<void()>& work);

}  // namespace dossierkit::qt
