#include "tests/support/failing_files.h"

#include <gtest/gtest.h>

namespace dossierkit::files {
namespace {

// Files that are not there, and take everything.
class NoFiles : public Files {
 public:
  bool FileExists(const std::string&) const override { return false; }
  void DeleteFile(const std::string&, bool) override { ++changes; }
  void CopyFile(const std::string&, const std::string&, bool) override { ++changes; }
  std::uint64_t FileLen(const std::string&) const override { return 7; }
  int changes = 0;
};

TEST(FailingFiles, PassesEverythingOnAndNotesIt) {
  NoFiles inner;
  tests::FailingFiles files(inner);
  EXPECT_FALSE(files.FileExists("a"));
  EXPECT_EQ(files.FileLen("b"), 7U);
  files.CopyFile("a", "b", true);
  files.DeleteFile("c", true);
  EXPECT_EQ(inner.changes, 2);
  EXPECT_EQ(files.Calls(), (std::vector<std::string>{"FileExists a", "FileLen b", "CopyFile a over b",
                                                     "DeleteFile c by force"}));
  EXPECT_FALSE(files.HasFailed());
}

TEST(FailingFiles, FailsInsteadOfTheChosenOperationOnce) {
  NoFiles inner;
  tests::FailingFiles files(inner);
  files.FileExists("before");
  files.FailAt(2, environment::kDiskFull);
  files.CopyFile("a", "b", true);
  EXPECT_FALSE(files.HasFailed());
  try {
    files.CopyFile("a", "b", true);
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), 61);
  }
  EXPECT_TRUE(files.HasFailed());
  files.CopyFile("a", "b", true);
  EXPECT_EQ(inner.changes, 2);
}

}  // namespace
}  // namespace dossierkit::files
