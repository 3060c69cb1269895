// The photographs that come with the sample database, and the copies on which the program works.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iterator>

#include "host/paths.h"
#include "platform/environment/failure.h"
#include "tests/support/paths.h"
#include "tests/support/photo_folder.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

namespace fs = std::filesystem;

const fs::path kSource = SourceFolder() + "/data/photos";

TEST(SamplePhotos, EachPersonHasOneBelowThirtyKilobytes) {
  const auto persons = Column(*SampleDatabase(), "select A00 from A01");
  EXPECT_EQ(persons.size(), 12U);
  for (const auto& person : persons) {
    const fs::path photo = kSource / (person + ".jpg");
    ASSERT_TRUE(fs::exists(photo)) << person;
    EXPECT_LT(fs::file_size(photo), 30U * 1024) << person;
    EXPECT_TRUE(fs::exists(kSource / "svg" / (person + ".svg"))) << person;
  }
}

TEST(SamplePhotos, TheTourShowsCopiesThatCanBeReplaced) {
  const fs::path folder = fs::temp_directory_path() / ("dossier-photos-" + std::to_string(getpid()));
  const fs::path present = folder / "tour-data" / "photos" /
                           (One(*SampleDatabase(), "select A00 from A01 where A0199=12") + ".jpg");
  fs::create_directories(present.parent_path());
  fs::copy_file(kSource / (kPerson + ".jpg"), present);
  const std::string command =
      "'" + DossierProgram() + "' --tour '" + folder.string() + "' >/dev/null 2>&1 </dev/null";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0);
  const fs::path copy = folder / "tour-data" / "photos" / (kPerson + ".jpg");
  EXPECT_EQ(PhotoFolder::Read(copy), PhotoFolder::Read(kSource / (kPerson + ".jpg")));
  EXPECT_FALSE(fs::is_symlink(copy));
  EXPECT_EQ(PhotoFolder::Read(present), PhotoFolder::Read(copy)) << "what is there stays";
  EXPECT_NE(fs::status(copy).permissions() & fs::perms::owner_write, fs::perms::none);
  fs::remove_all(folder);
}

// As on a full disk.
TEST(SamplePhotos, ACopyThatFailsLeavesNothingAndTheNextOneHasThemAll) {
  const fs::path folder = fs::temp_directory_path() / ("dossier-data-" + std::to_string(getpid()));
  const char* home = getenv("XDG_DATA_HOME");
  const std::string before = home ? home : "";
  setenv("XDG_DATA_HOME", folder.c_str(), 1);
  const auto told = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{5000, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_THROW(host::WorkingPhotos(), environment::Failure);
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, told);
  EXPECT_TRUE(fs::is_empty(folder / "dossierkit"));
  EXPECT_EQ(host::WorkingPhotos(), folder / "dossierkit" / "photos");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder / "dossierkit" / "photos"), {}), 12);
  home ? setenv("XDG_DATA_HOME", before.c_str(), 1) : unsetenv("XDG_DATA_HOME");
  fs::remove_all(folder);
}

}  // namespace
}  // namespace dossierkit::tests
