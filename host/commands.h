// The commands of the program that open no window.
#pragma once

#include <exception>
#include <optional>
#include <string>

#include "host/options.h"

namespace dossierkit::host {

// The folder of the photographs: the one that was named, or a working copy of the sample's.
std::string PhotosFolder(const Options& options);

// Runs what was asked for and gives the program's exit code; nothing where that opens a window.
std::optional<int> RunCommand(const Options& options);

// What main() does: reads the arguments, runs, and tells a failure on standard error; `tell` is asked to show
// it as well. Gives the exit code.
int RunProgram(int argc, char** argv, int (*run)(const Options&),
               void (*tell)(const std::exception&, const Options&));

}  // namespace dossierkit::host
