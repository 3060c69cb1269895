// The start of a program with a window, as somebody in front of the screen sees it.
#pragma once

#include <string>
#include <vector>

namespace dossierkit::bench {

struct Start {
  double milliseconds;      // to the first painted page
  double cpu_milliseconds;  // that the program computed until then
  double mebibytes;         // resident 300 ms later
};

// Starts a program, waits until a field in the blue of coded ones is on the screen, and ends it. Needs a
// QGuiApplication on an X display that shows nothing else.
Start StartProgram(const std::vector<std::string>& command);

}  // namespace dossierkit::bench
