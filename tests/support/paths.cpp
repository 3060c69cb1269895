#include "tests/support/paths.h"

// The build defines these for this file alone, so that no other depends on where the project lies.
namespace dossierkit::tests {

std::string SourceFolder() { return SOURCE_FOLDER; }
std::string SampleDatabaseFile() { return SAMPLE_DATABASE; }
std::string DossierProgram() { return DOSSIER_PROGRAM; }

}  // namespace dossierkit::tests
