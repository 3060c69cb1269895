// What the system tells the program about itself: system_posix.cpp and system_windows.cpp.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace dossierkit::host {

// The arguments behind the program's name, as UTF-8. On Windows what the program prints is UTF-8 from now on.
std::vector<std::string> ArgumentsOf(int argc, char** argv);

// The folder of icons, sample and photographs: share/dossierkit beside the program's folder, on Windows the
// program's folder itself.
std::filesystem::path ShareFolder();

// True where somebody reads standard error as it is written.
bool IsErrorATerminal();

// Where programs keep what their user enters: $XDG_DATA_HOME, by default ~/.local/share; on Windows
// %LOCALAPPDATA%.
std::filesystem::path DataHome();

}  // namespace dossierkit::host
