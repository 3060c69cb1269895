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

class LocalFilesTest : public FolderTest {
 protected:
  void Protect(const std::string& name) const { Allow(name, 0400); }
};

TEST_F(LocalFilesTest, BackslashSeparatesFolders) {
  Write("张三.jpg", "x");
  EXPECT_TRUE(files_.FileExists(Path("张三.jpg")));
  EXPECT_EQ(files_.FileLen(Path("张三.jpg")), 1U);
}

TEST_F(LocalFilesTest, FolderAndMissingFileDoNotExistAsFiles) {
  EXPECT_FALSE(files_.FileExists(Path("李四.jpg")));
  EXPECT_FALSE(files_.FileExists(folder_.string()));
  EXPECT_FALSE(files_.FileExists(""));
  EXPECT_FALSE(files_.FileExists("\\.jpg"));
  EXPECT_FALSE(files_.FileExists(std::string(100000, 'a')));
}

TEST_F(LocalFilesTest, CopyTakesEveryByteAndReplacesOnlyIfAsked) {
  const std::string bytes("\0\r\n\x1A\xFF", 5);
  Write("new", bytes);
  Write("old", "old");
  EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("new"), Path("old"), false); }), 58);
  EXPECT_EQ(Read("old"), "old");
  files_.CopyFile(Path("new"), Path("old"), true);
  EXPECT_EQ(Read("old"), bytes);
  EXPECT_EQ(Read("new"), bytes);
  files_.CopyFile(Path("new"), Path("又"), false);
  EXPECT_EQ(files_.FileLen(Path("又")), 5U);
}

// More than one block, and no whole number of blocks.
TEST_F(LocalFilesTest, ALargeFileIsCopiedWhole) {
  std::string bytes;
  for (int i = 0; bytes.size() < 307200; ++i) bytes += std::to_string(i) + " ";
  Write("a", bytes);
  Write("b", std::string(400000, 'o'));
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_TRUE(Read("b") == bytes);
}

TEST_F(LocalFilesTest, CopyLeavesNothingElseBehind) {
  Write("a", "x");
  files_.CopyFile(Path("a"), Path("b"), true);
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(Names(), (NameSet{"a", "b"}));
}

TEST_F(LocalFilesTest, WriteProtectedTargetIsNotReplaced) {
  Write("a", "new");
  Write("b", "old");
  Protect("b");
  try {
    files_.CopyFile(Path("a"), Path("b"), true);
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), 70);
    EXPECT_EQ(failure.description(), "拒绝的权限");
  }
  EXPECT_EQ(Read("b"), "old");
}

TEST_F(LocalFilesTest, CopyOfAProtectedFileCanBeReplacedAgain) {
  Write("a", "x");
  Protect("a");
  files_.CopyFile(Path("a"), Path("b"), true);
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(Read("b"), "x");
}

TEST_F(LocalFilesTest, TheRightsOfTheSourceStayWithIt) {
  Write("a", "x");
  Write("new", "");
  Allow("a", 0400);
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(RightsOf("b"), RightsOf("new"));
}

TEST_F(LocalFilesTest, AReplacedFileKeepsItsRights) {
  Write("a", "x");
  for (const unsigned rights : {0640U, 0666U, 0600U}) {
    Write("b", "old");
    Allow("b", rights);
    files_.CopyFile(Path("a"), Path("b"), true);
    EXPECT_EQ(RightsOf("b"), rights);
    EXPECT_EQ(Read("b"), "x");
  }
}

TEST_F(LocalFilesTest, ACopyThatFailsHalfWayLeavesTheOldFileAndNothingElse) {
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
TEST_F(LocalFilesTest, TheFilesBesideAreNobodyElses) {
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

TEST_F(LocalFilesTest, ALinkIsReplacedAndWhatItLeadsToStays) {
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

TEST_F(LocalFilesTest, ALinkIsDeletedAndWhatItLeadsToStays) {
  Write(Elsewhere("letter"), "old");
  fs::permissions(Elsewhere("letter"), fs::perms::owner_read);
  fs::create_symlink(Elsewhere("letter"), folder_ / "b");
  EXPECT_TRUE(files_.FileExists(Path("b")));
  files_.DeleteFile(Path("b"), true);
  EXPECT_TRUE(Names().empty());
  EXPECT_EQ(Read(Elsewhere("letter")), "old");
  EXPECT_EQ(fs::status(Elsewhere("letter")).permissions(), fs::perms::owner_read);
}

TEST_F(LocalFilesTest, ALinkToAProtectedFileIsNotProtected) {
  Write(Elsewhere("letter"), "old");
  fs::permissions(Elsewhere("letter"), fs::perms::owner_read);
  fs::create_symlink(Elsewhere("letter"), folder_ / "b");
  files_.DeleteFile(Path("b"), false);
  EXPECT_TRUE(Names().empty());
  EXPECT_EQ(Read(Elsewhere("letter")), "old");
}

TEST_F(LocalFilesTest, OnlyARegularFileIsAFile) {
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

TEST_F(LocalFilesTest, CopyToAMissingFolderMakesNone) {
  Write("a", "x");
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("无\\b")), 76);
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("a\\b")), 76);
  EXPECT_FALSE(fs::exists(folder_ / "无"));
}

TEST_F(LocalFilesTest, CopyNeedsTwoDifferentFiles) {
  Write("a", "x");
  fs::create_directory(folder_ / "b");
  fs::create_hard_link(folder_ / "a", folder_ / "same");
  EXPECT_EQ(NumberOfCopy(Path("c"), Path("d")), 53);
  EXPECT_EQ(NumberOfCopy(Path("b"), Path("d")), 53);
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("b")), 70);
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("a")), 70);
  EXPECT_EQ(NumberOfCopy(Path("same"), Path("a")), 70);
  EXPECT_EQ(Read("a"), "x");
}

TEST_F(LocalFilesTest, DeleteTakesAProtectedFileOnlyByForce) {
  Write("a", "x");
  Protect("a");
  EXPECT_EQ(NumberOfFailure([&] { files_.DeleteFile(Path("a"), false); }), 70);
  EXPECT_TRUE(files_.FileExists(Path("a")));
  files_.DeleteFile(Path("a"), true);
  EXPECT_FALSE(files_.FileExists(Path("a")));
}

TEST_F(LocalFilesTest, DeleteAndLengthNeedAFile) {
  fs::create_directory(folder_ / "b");
  for (const char* name : {"missing", "b"}) {
    EXPECT_EQ(NumberOfFailure([&] { files_.DeleteFile(Path(name), true); }), 53);
    EXPECT_EQ(NumberOfFailure([&] { files_.FileLen(Path(name)); }), 53);
  }
  EXPECT_EQ(NumberOfFailure([&] { files_.FileLen(Path("无\\a")); }), 76);
  EXPECT_EQ(NumberOfFailure([&] { files_.FileLen(""); }), 53);
  EXPECT_EQ(NumberOfFailure([&] { files_.FileLen(Path(std::string(1000, 'a'))); }), 75);
  EXPECT_TRUE(fs::exists(folder_ / "b"));
}

}  // namespace
}  // namespace dossierkit::files
