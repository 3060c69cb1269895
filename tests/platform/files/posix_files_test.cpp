// Files with rights of users and groups, links and pipes.
#ifndef _WIN32

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "platform/files/files.h"
#include "tests/platform/files/folder.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;

// While it lives a file cannot grow beyond that many bytes.
class FilesOfAtMost {
 public:
  explicit FilesOfAtMost(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &former_);
    const rlimit limit{bytes, former_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FilesOfAtMost() {
    setrlimit(RLIMIT_FSIZE, &former_);
    std::signal(SIGXFSZ, former_handler_);
  }

 private:
  rlimit former_{};
  void (*former_handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

using PosixFilesTest = FolderTest;

TEST_F(PosixFilesTest, TheRightsOfTheSourceStayWithIt) {
  Write("a", "x");
  Write("new", "");
  Allow("a", 0400);
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(RightsOf("b"), RightsOf("new"));
}

TEST_F(PosixFilesTest, AReplacedFileKeepsItsRights) {
  Write("a", "x");
  for (const unsigned rights : {0640U, 0666U, 0600U}) {
    Write("b", "old");
    Allow("b", rights);
    files_.CopyFile(Path("a"), Path("b"), true);
    EXPECT_EQ(RightsOf("b"), rights);
    EXPECT_EQ(Read("b"), "x");
  }
}

TEST_F(PosixFilesTest, ACopyThatFailsHalfWayLeavesTheOldFileAndNothingElse) {
  Write("a", std::string(10000, 'n'));
  Write("b", "old");
  {
    const FilesOfAtMost limit(5000);
    EXPECT_EQ(NumberOfCopy(Path("a"), Path("b")), 75);
  }
  EXPECT_EQ(Read("b"), "old");
  EXPECT_EQ(Names(), (NameSet{"a", "b"}));
}

// Whatever somebody has put there under whatever name is his.
TEST_F(PosixFilesTest, TheFilesBesideAreNobodyElses) {
  Write("a", "new");
  Write("b", "old");
  Write("b.part", "mine");
  Write(Elsewhere("letter"), "mine too");
  fs::create_symlink(Elsewhere("letter"), folder_ / "c.part");
  files_.CopyFile(Path("a"), Path("b"), true);
  files_.CopyFile(Path("a"), Path("c"), true);
  EXPECT_EQ(Read("b"), "new");
  EXPECT_EQ(Read("c"), "new");
  EXPECT_EQ(Read("b.part"), "mine");
  EXPECT_EQ(Read(Elsewhere("letter")), "mine too");
  EXPECT_EQ(Names(), (NameSet{"a", "b", "b.part", "c", "c.part"}));
}

TEST_F(PosixFilesTest, ALinkIsReplacedAndWhatItLeadsToStays) {
  Write("a", "new");
  Write(Elsewhere("letter"), "old");
  Write(Elsewhere("protected"), "old");
  fs::permissions(Elsewhere("protected"), fs::perms::owner_read);
  for (const char* target : {"letter", "protected", "missing", "照片"}) {
    fs::create_symlink(Elsewhere(target), folder_ / "b");
    files_.CopyFile(Path("a"), Path("b"), true);
    EXPECT_EQ(fs::symlink_status(folder_ / "b").type(), fs::file_type::regular) << target;
    EXPECT_EQ(Read("b"), "new");
    fs::remove(folder_ / "b");
  }
  fs::create_symlink("a", folder_ / "b");
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(Read("b"), "new");
  EXPECT_EQ(Read("a"), "new");
  EXPECT_EQ(Read(Elsewhere("letter")), "old");
  EXPECT_EQ(Read(Elsewhere("protected")), "old");
  EXPECT_FALSE(fs::exists(Elsewhere("missing")));
}

TEST_F(PosixFilesTest, ALinkIsDeletedAndWhatItLeadsToStays) {
  Write(Elsewhere("letter"), "old");
  fs::permissions(Elsewhere("letter"), fs::perms::owner_read);
  fs::create_symlink(Elsewhere("letter"), folder_ / "b");
  EXPECT_TRUE(files_.FileExists(Path("b")));
  files_.DeleteFile(Path("b"), true);
  EXPECT_TRUE(Names().empty());
  EXPECT_EQ(Read(Elsewhere("letter")), "old");
  EXPECT_EQ(fs::status(Elsewhere("letter")).permissions(), fs::perms::owner_read);
}

TEST_F(PosixFilesTest, ALinkToAProtectedFileIsNotProtected) {
  Write(Elsewhere("letter"), "old");
  fs::permissions(Elsewhere("letter"), fs::perms::owner_read);
  fs::create_symlink(Elsewhere("letter"), folder_ / "b");
  files_.DeleteFile(Path("b"), false);
  EXPECT_TRUE(Names().empty());
  EXPECT_EQ(Read(Elsewhere("letter")), "old");
}

TEST_F(PosixFilesTest, OnlyARegularFileIsAFile) {
  Write("a", "x");
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  fs::create_symlink("pipe", folder_ / "link");
  for (const char* name : {"pipe", "link"}) {
    EXPECT_FALSE(files_.FileExists(Path(name))) << name;
    EXPECT_EQ(NumberOfFailure([&] { files_.FileLen(Path(name)); }), 53) << name;
    EXPECT_EQ(NumberOfFailure([&] { files_.DeleteFile(Path(name), true); }), 53) << name;
    EXPECT_EQ(NumberOfCopy(Path(name), Path("c")), 53) << name;
  }
  EXPECT_EQ(NumberOfCopy("/dev/zero", Path("c")), 53);
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("pipe")), 70);
  EXPECT_EQ(Names(), (NameSet{"a", "link", "pipe"}));
}

TEST_F(PosixFilesTest, ANameThatIsTooLongIsToldAsSuch) {
  EXPECT_EQ(NumberOfFailure([&] { files_.FileLen(Path(std::string(1000, 'a'))); }), 75);
}

}  // namespace
}  // namespace dossierkit::files

#endif
