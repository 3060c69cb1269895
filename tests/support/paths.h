// Where the sources, the built sample database and the demo host lie; absolute paths.
#pragma once

#include <string>

namespace dossierkit::tests {

std::string SourceFolder();
std::string SampleDatabaseFile();
std::string DossierProgram();  // the demo host

}  // namespace dossierkit::tests
