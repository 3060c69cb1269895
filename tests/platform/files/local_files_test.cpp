#include "platform/files/files.h"
#include "tests/platform/files/folder.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;

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

TEST_F(LocalFilesTest, CopyToAMissingFolderMakesNone) {
  Write("a", "x");
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("无\\b")), 76);
  EXPECT_EQ(NumberOfCopy(Path("a"), Path("a\\b")), 76);
  EXPECT_FALSE(fs::exists(folder_ / u8"无"));
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
  EXPECT_TRUE(fs::exists(folder_ / "b"));
}

}  // namespace
}  // namespace dossierkit::files
