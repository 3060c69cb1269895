// Where the program finds what was installed with it.
#pragma once

#include <filesystem>

namespace dossierkit::host {

std::filesystem::path ProgramFolder();
// The sample database as it was built.
std::filesystem::path SampleDatabase();
// The working copy that the program opens without --database; made from the sample where it is
// missing. Throws a Failure.
std::filesystem::path WorkingDatabase();
std::filesystem::path WorkingPhotos();

// Writes a fresh copy of the sample database over `target`. Throws a Failure.
void CreateSample(const std::filesystem::path& target);

}  // namespace dossierkit::host
