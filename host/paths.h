// Where the program finds what was installed with it.
#pragma once

#include <filesystem>
#include <string>

namespace dossierkit::host {

// A path from UTF-8 and back; not every system does so by itself.
std::filesystem::path PathOf(const std::string& text);
std::string TextOf(const std::filesystem::path& path);

// The sample database as it was built, and the same without people.
std::filesystem::path SampleDatabase();
std::filesystem::path EmptyDatabase();
// Where the program keeps what is entered: dossierkit below DataHome(). Made for the user alone where it is
// missing.
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

// Throws a Failure where a database `target` (in the words of the user) cannot be made since there is
// anything of its name, or of one that an earlier database left beside it.
void RequireNoFile(const std::string& what, const std::filesystem::path& target);

// Writes a fresh copy of the sample database as `target`. Throws a Failure, also where there is anything of
// that name or of a database that was there: nothing is overwritten.
void CreateSample(const std::filesystem::path& target);
// The same of the database without people.
void CreateEmpty(const std::filesystem::path& target);

}  // namespace dossierkit::host
