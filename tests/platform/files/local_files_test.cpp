#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/environment/failure.h"
#include "platform/files/files.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;

// While it lives a file cannot grow beyond that many bytes, as on a full disk.
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

class LocalFilesTest : public testing::Test {
 protected:
  LocalFilesTest() {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    folder_ = fs::path(testing::TempDir()) / ("dossierkit-" + std::to_string(getpid()) + "-" + name) / "照片";
    fs::remove_all(folder_.parent_path());
    fs::create_directories(folder_);
  }
  ~LocalFilesTest() override { fs::remove_all(folder_.parent_path()); }

  // The path of a file in the folder, as the system writes paths.
  std::string Path(const std::string& name) const { return folder_.string() + "\\" + name; }

  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }
  std::string Read(const std::string& name) const {
    std::ostringstream content;
    content << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
    return content.str();
  }
  void Protect(const std::string& name) const {
    fs::permissions(folder_ / name, fs::perms::owner_read, fs::perm_options::replace);
  }
  template <typename Action>
  int NumberOfFailure(Action action) {
    try {
      action();
    } catch (const environment::Failure& failure) {
      return failure.number();
    }
    return 0;
  }

  fs::path folder_;
  LocalFiles files_;
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

TEST_F(LocalFilesTest, CopyLeavesNothingElseBehind) {
  Write("a", "x");
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 2);
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
  fs::permissions(folder_ / "a", fs::perms::owner_read, fs::perm_options::replace);
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(fs::status(folder_ / "b").permissions(), fs::status(folder_ / "new").permissions());
}

TEST_F(LocalFilesTest, AReplacedFileKeepsItsRights) {
  Write("a", "x");
  Write("b", "old");
  const auto rights = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
  fs::permissions(folder_ / "b", rights, fs::perm_options::replace);
  files_.CopyFile(Path("a"), Path("b"), true);
  EXPECT_EQ(fs::status(folder_ / "b").permissions(), rights);
}

TEST_F(LocalFilesTest, ACopyThatFailsHalfWayLeavesTheOldFileAndNothingElse) {
  Write("a", std::string(10000, 'n'));
  Write("b", "old");
  {
    const FilesOfAtMost limit(5000);
    EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("a"), Path("b"), true); }), 75);
  }
  EXPECT_EQ(Read("b"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 2);
}

TEST_F(LocalFilesTest, WhereNoFileFitsBesideItTheTargetItselfIsWritten) {
  Write("a", "new");
  Write("b", "longer than the new one");
  const auto rights = fs::perms::owner_read | fs::perms::owner_write;
  fs::permissions(folder_ / "b", rights, fs::perm_options::replace);
  for (const char* target : {"b", "c"}) {
    fs::create_directory(folder_ / (std::string(target) + ".part"));
    files_.CopyFile(Path("a"), Path(target), true);
    EXPECT_EQ(Read(target), "new");
    EXPECT_TRUE(fs::is_directory(folder_ / (std::string(target) + ".part")));
  }
  EXPECT_EQ(fs::status(folder_ / "b").permissions(), rights);
  EXPECT_EQ(fs::status(folder_ / "c").permissions(), fs::status(folder_ / "a").permissions());
}

TEST_F(LocalFilesTest, CopyToAMissingFolderMakesNone) {
  Write("a", "x");
  EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("a"), Path("无\\b"), true); }), 76);
  EXPECT_FALSE(fs::exists(folder_ / "无"));
}

TEST_F(LocalFilesTest, CopyNeedsTwoDifferentFiles) {
  Write("a", "x");
  fs::create_directory(folder_ / "b");
  EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("c"), Path("d"), true); }), 53);
  EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("b"), Path("d"), true); }), 53);
  EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("a"), Path("b"), true); }), 70);
  EXPECT_EQ(NumberOfFailure([&] { files_.CopyFile(Path("a"), Path("a"), true); }), 70);
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
