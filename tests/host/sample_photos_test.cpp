// The photographs that come with the sample database, and the copies on which the program works.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

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
      DossierProgram() + " --tour '" + folder.string() + "' >/dev/null 2>&1 </dev/null";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 0);
  const fs::path copy = folder / "tour-data" / "photos" / (kPerson + ".jpg");
  EXPECT_EQ(PhotoFolder::Read(copy), PhotoFolder::Read(kSource / (kPerson + ".jpg")));
  EXPECT_FALSE(fs::is_symlink(copy));
  EXPECT_EQ(PhotoFolder::Read(present), PhotoFolder::Read(copy)) << "what is there stays";
  EXPECT_NE(fs::status(copy).permissions() & fs::perms::owner_write, fs::perms::none);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace dossierkit::tests
