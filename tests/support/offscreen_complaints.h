// What Qt's platform without a screen cannot do, and says whenever a window or a popup shows.
#pragma once

#include <set>
#include <string>

namespace dossierkit::tests {

inline const std::set<std::string> kOffscreenComplaints = {
    "This plugin does not support grabbing the keyboard",
    "This plugin does not support propagateSizeHints()",
    "This plugin does not support raise()",
};

}  // namespace dossierkit::tests
