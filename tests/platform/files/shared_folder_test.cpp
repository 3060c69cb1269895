// A folder of photographs that several clerks and programs share, and disks that are full.
#ifndef _WIN32

#include <grp.h>
#include <sys/stat.h>

#include "tests/platform/files/folder.h"
#include "tests/platform/files/other_user.h"

namespace dossierkit::files {
namespace {

namespace fs = std::filesystem;

constexpr gid_t kClerks = 65001;  // the group of the clerks
constexpr gid_t kAuditors = 65009;
const User kClerk = {65011, {65011, kClerks}};
const User kColleague = {65012, {65012, kClerks}};

class SharedFolder : public FolderTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only an administrator can be another user";
    Write(Elsewhere("new"), kNew);
    fs::permissions(Elsewhere("new"), fs::perms{0644});
  }
  // A file in the folder of that user and group with those rights.
  void Put(const std::string& name, const std::string& content, uid_t owner, gid_t group, unsigned rights) {
    Write(name, content);
    ASSERT_EQ(chown((folder_ / name).c_str(), owner, group), 0);
    Allow(name, rights);
  }
  void FolderOf(uid_t owner, gid_t group, unsigned rights) {
    ASSERT_EQ(chown(folder_.c_str(), owner, group), 0);
    fs::permissions(folder_, fs::perms{rights});
  }
  struct stat Status(const std::string& name) const {
    struct stat status {};
    lstat((folder_ / name).c_str(), &status);
    return status;
  }
  int CopyAs(const User& user, const std::string& target) {
    return As(user, [&] { return NumberOfCopy(Elsewhere("new").string(), Path(target)); });
  }

  const std::string kNew = std::string(100000, 'n');
};

// The folder is the administrator's: no clerk can put a second file there.
TEST_F(SharedFolder, AFileOfTheGroupInAFolderOfTheAdministratorIsReplaced) {
  for (const std::size_t size : {std::size_t{3}, std::size_t{200000}}) {
    Put("a.jpg", std::string(size, 'o'), 0, kClerks, 0664);
    const auto number = Status("a.jpg").st_ino;
    EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 0);
    EXPECT_TRUE(Read("a.jpg") == kNew);
    EXPECT_EQ(Status("a.jpg").st_ino, number) << "written in its place";
    EXPECT_EQ(Status("a.jpg").st_uid, 0U);
    EXPECT_EQ(Status("a.jpg").st_gid, kClerks);
    EXPECT_EQ(RightsOf("a.jpg"), 0664U);
    EXPECT_EQ(Names(), NameSet{"a.jpg"});
  }
}

TEST_F(SharedFolder, AFileThatOnlyTheAdministratorMayWriteIsRefused) {
  Put("a.jpg", "old", 0, kClerks, 0644);
  for (const unsigned folder : {0755U, 0777U}) {
    FolderOf(0, 0, folder);
    EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 70);
    EXPECT_EQ(Read("a.jpg"), "old");
    EXPECT_EQ(Names(), NameSet{"a.jpg"});
  }
}

TEST_F(SharedFolder, ANewFileInAFolderOfTheAdministratorIsRefused) {
  EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 70);
  EXPECT_EQ(Names(), NameSet{});
}

TEST_F(SharedFolder, AReplacedFileKeepsItsGroupAndRightsForTheOtherClerks) {
  FolderOf(0, kClerks, 0775);
  for (const unsigned rights : {0660U, 0664U}) {
    Put("a.jpg", "old", kColleague.number, kClerks, rights);
    EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 0);
    EXPECT_TRUE(Read("a.jpg") == kNew);
    EXPECT_EQ(Status("a.jpg").st_uid, kClerk.number) << "renamed over the old one";
    EXPECT_EQ(Status("a.jpg").st_gid, kClerks);
    EXPECT_EQ(RightsOf("a.jpg"), rights);
    EXPECT_EQ(As(kColleague, [&] { return Read("a.jpg") == kNew ? 0 : 1; }), 0);
    EXPECT_EQ(CopyAs(kColleague, "a.jpg"), 0);
  }
}

TEST_F(SharedFolder, AGroupThatTheClerkMayNotGiveIsNoFailure) {
  FolderOf(0, kClerks, 0775);
  Put("a.jpg", "old", 0, kAuditors, 0666);
  EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 0);
  EXPECT_EQ(Status("a.jpg").st_gid, kClerk.groups.front());
  EXPECT_EQ(RightsOf("a.jpg"), 0666U);
}

// Only its owner may rename over a file there.
TEST_F(SharedFolder, InAStickyFolderTheFileOfAColleagueIsWrittenInItsPlace) {
  FolderOf(0, 0, 01777);
  Put("a.jpg", "old", kColleague.number, kClerks, 0664);
  EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 0);
  EXPECT_TRUE(Read("a.jpg") == kNew);
  EXPECT_EQ(Status("a.jpg").st_uid, kColleague.number);
  EXPECT_EQ(Names(), NameSet{"a.jpg"});
}

TEST_F(SharedFolder, ALinkThatAColleaguePlantedInAStickyFolderIsNotFollowed) {
  FolderOf(0, 0, 01777);
  Write(Elsewhere("letter"), "mine");
  ASSERT_EQ(chown(Elsewhere("letter").c_str(), kClerk.number, kClerks), 0);
  fs::create_symlink(Elsewhere("letter"), folder_ / "a.jpg");
  ASSERT_EQ(lchown((folder_ / "a.jpg").c_str(), kColleague.number, kClerks), 0);
  EXPECT_EQ(CopyAs(kClerk, "a.jpg"), 70);
  EXPECT_EQ(Read(Elsewhere("letter")), "mine");
  EXPECT_EQ(Names(), NameSet{"a.jpg"});
}

TEST_F(SharedFolder, WhatMayNotBeReadIsRefusedAndNotMissing) {
  Put("b.jpg", "old", 0, 0, 0600);
  FolderOf(0, 0, 0777);
  EXPECT_EQ(As(kClerk, [&] { return NumberOfCopy(Path("b.jpg"), Path("a.jpg")); }), 70);
  EXPECT_EQ(As(kClerk, [&] { return files_.FileExists(Path("b.jpg")) ? 1 : 0; }), 1);
  FolderOf(0, 0, 0700);
  EXPECT_EQ(As(kClerk, [&] { return files_.FileExists(Path("b.jpg")) ? 1 : 0; }), 0);
  for (const char* name : {"b.jpg", "none.jpg", "none\\b.jpg"}) {
    EXPECT_EQ(As(kClerk, [&] { return NumberOfFailure([&] { files_.FileLen(Path(name)); }); }), 70) << name;
  }
  EXPECT_EQ(CopyAs(kClerk, "c.jpg"), 70);
}

TEST_F(SharedFolder, ADeletionThatFailsLeavesTheProtection) {
  const auto delete_it = [&] { return NumberOfFailure([&] { files_.DeleteFile(Path("a.jpg"), true); }); };
  Put("a.jpg", "old", kClerk.number, kClerks, 0440);
  EXPECT_EQ(As(kClerk, delete_it), 70);
  EXPECT_EQ(RightsOf("a.jpg"), 0440U);
  EXPECT_EQ(Read("a.jpg"), "old");
  fs::remove(folder_ / "a.jpg");

  Write(Elsewhere("letter"), "mine");
  ASSERT_EQ(chown(Elsewhere("letter").c_str(), kClerk.number, kClerks), 0);
  fs::permissions(Elsewhere("letter"), fs::perms{0440});
  fs::create_symlink(Elsewhere("letter"), folder_ / "a.jpg");
  EXPECT_EQ(As(kClerk, delete_it), 70);
  EXPECT_EQ(fs::status(Elsewhere("letter")).permissions(), fs::perms{0440});
}

// --- disks that are full
// -------------------------------------------------------------------------------------

#define REQUIRE_MOUNTED(disk) \
  if (!(disk).Mounted()) GTEST_SKIP() << "a disk of its own cannot be mounted here"

TEST_F(SharedFolder, WhereNoSecondFileFitsThePhotographIsReplacedInItsPlace) {
  const SmallDisk disk(folder_.string(), "nr_inodes=2");  // the folder and one file
  REQUIRE_MOUNTED(disk);
  Write("a.jpg", std::string(200000, 'o'));
  EXPECT_EQ(NumberOfCopy(Elsewhere("new").string(), Path("a.jpg")), 0);
  EXPECT_TRUE(Read("a.jpg") == kNew);
  EXPECT_EQ(NumberOfCopy(Elsewhere("new").string(), Path("b.jpg")), 61);
  EXPECT_EQ(Names(), NameSet{"a.jpg"});
}

TEST_F(SharedFolder, WhereTheBytesFitOnceThePhotographIsReplacedInItsPlace) {
  const SmallDisk disk(folder_.string(), "size=160k");
  REQUIRE_MOUNTED(disk);
  const std::string old(120000, 'o');
  Write("a.jpg", old);
  ASSERT_TRUE(Read("a.jpg") == old);
  EXPECT_EQ(NumberOfCopy(Elsewhere("new").string(), Path("a.jpg")), 0);
  EXPECT_TRUE(Read("a.jpg") == kNew);
  EXPECT_EQ(Names(), NameSet{"a.jpg"});
}

TEST_F(SharedFolder, WhereTheBytesDoNotFitTheOldPhotographStays) {
  const SmallDisk disk(folder_.string(), "size=80k");
  REQUIRE_MOUNTED(disk);
  const std::string old(60000, 'o');
  Write("a.jpg", old);
  EXPECT_EQ(NumberOfCopy(Elsewhere("new").string(), Path("a.jpg")), 61);
  EXPECT_TRUE(Read("a.jpg") == old);
  EXPECT_EQ(NumberOfCopy(Elsewhere("new").string(), Path("b.jpg")), 61);
  EXPECT_EQ(Names(), NameSet{"a.jpg"});
}

// --- two programs
// --------------------------------------------------------------------------------------------

// Both put their own picture in the place of the same photograph, over and over, while it is looked at.
TEST_F(SharedFolder, OfTwoProgramsThePhotographIsTheOneOrTheOther) {
  const SmallDisk disk(folder_.string(), "size=2m");  // in memory: a thousand flushes take no time
  REQUIRE_MOUNTED(disk);
  FolderOf(0, kClerks, 0775);
  Write(Elsewhere("other"), std::string(150000, 'x'));
  Put("a.jpg", kNew, kClerk.number, kClerks, 0664);
  const auto replace = [&](const char* source) {
    for (int i = 0; i < 100; ++i) {
      if (const int failure = NumberOfCopy(Elsewhere(source).string(), Path("a.jpg"))) return failure;
    }
    return 0;
  };
  const Program one = StartAs(kClerk, [&] { return replace("new"); });
  const Program two = StartAs(kColleague, [&] { return replace("other"); });
  const Program looks([&] {
    for (int i = 0; i < 1000; ++i) {
      const std::string seen = Read("a.jpg");
      if (seen != kNew && seen != std::string(150000, 'x')) return 1;
    }
    return 0;
  });
  EXPECT_EQ(looks.Result(), 0);
  EXPECT_EQ(one.Result(), 0);
  EXPECT_EQ(two.Result(), 0);
  EXPECT_EQ(Names(), NameSet{"a.jpg"});
}

// Where both have to write the file itself the second is refused, and the end is no mixture.
TEST_F(SharedFolder, OfTwoProgramsOnlyOneWritesAPhotographInItsPlace) {
  const SmallDisk disk(folder_.string(), "size=2m,mode=755");
  REQUIRE_MOUNTED(disk);
  Write(Elsewhere("other"), std::string(100000, 'x'));
  Put("a.jpg", kNew, 0, kClerks, 0664);
  const auto replace = [&](const char* source) {
    for (int i = 0; i < 100; ++i) {
      const int failure = NumberOfCopy(Elsewhere(source).string(), Path("a.jpg"));
      if (failure != 0 && failure != 70) return failure;
    }
    return 0;
  };
  for (int i = 0; i < 3; ++i) {
    const Program one = StartAs(kClerk, [&] { return replace("new"); });
    const Program two = StartAs(kColleague, [&] { return replace("other"); });
    EXPECT_EQ(one.Result(), 0);
    EXPECT_EQ(two.Result(), 0);
    const std::string left = Read("a.jpg");
    EXPECT_TRUE(left == kNew || left == std::string(100000, 'x'));
  }
}

}  // namespace
}  // namespace dossierkit::files

#endif
