// Where the program finds what was installed with it.
#pragma once

#include <filesystem>

namespace dossierkit::host {

// The folder of icons, sample and photographs: share/dossierkit beside the program's folder.
std::filesystem::path ShareFolder();
// The sample database as it was built, and the same without people.
std::filesystem::path SampleDatabase();
std::filesystem::path EmptyDatabase();
// Where the program keeps what is entered: dossierkit in $XDG_DATA_HOME, by default in ~/.local/share. Made
// for the user alone where it is missing.
std::filesystem::path DataFolder();
// The working copy in it that the program opens without --database; made from the sample where it is
// missing. Throws a Failure.
std::filesystem::path WorkingDatabase();
// The photographs of the sample persons as they were installed.
std::filesystem::path SamplePhotos();
// The folder of photographs in it that the program uses without --photos; made from the sample where it
// is missing. Throws a Failure.
std::filesystem::path WorkingPhotos();
// Copies the photographs of one folder into another, which is made; those that are there stay. Throws
// a Failure.
void CopyPhotos(const std::filesystem::path& from, const std::filesystem::path& to);

// Writes a fresh copy of the sample database as `target`. Throws a Failure, also where there is anything of
// that name or of a database that was there: nothing is overwritten.
void CreateSample(const std::filesystem::path& target);
// The same of the database without people.
void CreateEmpty(const std::filesystem::path& target);

}  // namespace dossierkit::host
