// Every call of a copy made to fail in turn: what is told then, and that the photograph is whole.
#ifndef _WIN32

#include <cerrno>
#include <map>

#include "tests/platform/files/folder.h"
#include "tests/platform/files/system_calls.h"

namespace dossierkit::files {
namespace {

using Calls = std::vector<std::string>;

// A call that a copy makes, and the number that is told where it fails with EIO; 0: the copy succeeds.
struct Step {
  std::string call;
  int told;
};

class DiskFaults : public FolderTest {
 protected:
  DiskFaults() { Write(Elsewhere("new"), kNew); }

  int Copy() { return NumberOfCopy(Elsewhere("new").string(), Path("a.jpg")); }
  // No other file is left, and the photograph is the old one, if there was one, or the copy.
  void ExpectWhole(bool copied, const std::string& old) {
    const bool there = copied || !old.empty();
    EXPECT_EQ(Names(), there ? NameSet{"a.jpg"} : NameSet{});
    EXPECT_TRUE(Read("a.jpg") == (copied ? kNew : old)) << Read("a.jpg").size();
  }
  // The copy takes these steps, and each, failing, leaves the photograph whole. `always` fails every call of
  // that name, besides.
  void Sweep(const std::string& old, const std::vector<Step>& steps, const std::string& always = {}) {
    for (std::size_t k = 0; k <= steps.size(); ++k) {
      SCOPED_TRACE(k == 0 ? "none fails" : std::to_string(k) + ": " + steps[k - 1].call);
      std::filesystem::remove(folder_ / "a.jpg");
      if (!old.empty()) Write("a.jpg", old);
      int told = 0;
      Calls calls;
      {
        const SystemCalls watch([&](const std::string& name, std::size_t place) {
          return place == k ? EIO : name == always ? EACCES : 0;
        });
        told = Copy();
        calls = watch.Calls();
      }
      if (k == 0) {
        Calls expected;
        for (const Step& step : steps) expected.push_back(step.call);
        EXPECT_EQ(calls, expected);
      }
      EXPECT_EQ(told, k == 0 ? 0 : steps[k - 1].told);
      ExpectWhole(told == 0, old);
    }
  }

  // Two blocks, so that a failure between them leaves half a copy.
  const std::string kNew = std::string(65536, 'n') + std::string(4464, 'N');
  const std::string kOld = std::string(70000, 'o') + std::string(3000, 'O');
};

TEST_F(DiskFaults, ANewPhotographIsFlushedBeforeItGetsItsName) {
  Sweep("", {{"open", 75},
             {"create", 75},
             {"read", 75},
             {"write", 75},
             {"read", 75},
             {"write", 75},
             {"flush", 75},
             {"rename", 75},
             {"open folder", 0},
             {"flush folder", 0}});
}

TEST_F(DiskFaults, AReplacementHasItsRightsBeforeItsBytesAndIsFlushedBeforeItsName) {
  Sweep(kOld, {{"open", 75},
               {"open", 75},
               {"create", 75},
               {"group", 0},
               {"rights", 75},
               {"read", 75},
               {"write", 75},
               {"read", 75},
               {"write", 75},
               {"flush", 75},
               {"rename", 75},
               {"open folder", 0},
               {"flush folder", 0}});
}

// The folder takes no second file. What fails behind the cut is no longer the copy.
TEST_F(DiskFaults, APhotographThatIsWrittenInItsPlaceIsPutBack) {
  const std::vector<Step> steps = {{"open", 75},  {"open", 75}, {"create", 75},  {"open", 75},
                                   {"lock", 0},   {"read", 75}, {"reserve", 75}, {"read", 75},
                                   {"write", 75}, {"read", 75}, {"write", 75},   {"flush", 75},
                                   {"cut", 75},   {"flush", 0}};
  for (const std::string& old : {std::string("short"), kOld}) Sweep(old, steps, "create");
}

TEST_F(DiskFaults, APhotographOfNoBytesIsWrittenInItsPlaceToo) {
  Write("a.jpg", "");
  const SystemCalls watch([](const std::string& name, std::size_t) { return name == "create" ? EACCES : 0; });
  EXPECT_EQ(Copy(), 0);
  EXPECT_TRUE(Read("a.jpg") == kNew);
}

// What the disk answers, as the user reads it; where no file fits beside it the photograph is written itself.
TEST_F(DiskFaults, WhatIsToldIsTrue) {
  const std::map<int, int> told = {{ENOSPC, 61}, {EDQUOT, 61}, {EACCES, 70}, {EPERM, 70}, {EROFS, 70},
                                   {EBUSY, 70},  {ENOENT, 53}, {EIO, 75},    {EFBIG, 75}, {EMFILE, 75}};
  for (const auto& [number, expected] : told) {
    SCOPED_TRACE(number);
    const int failure = number;
    const auto fail = [&](const std::string& call) {
      return [failure, call](const std::string& name, std::size_t) { return name == call ? failure : 0; };
    };
    {
      const SystemCalls watch(fail("create"));
      EXPECT_EQ(Copy(), expected) << "no photograph before";
    }
    ExpectWhole(false, "");
    const bool in_place = expected == 61 || expected == 70;
    for (const char* call : {"create", "rename"}) {
      Write("a.jpg", "old");
      {
        const SystemCalls watch(fail(call));
        EXPECT_EQ(Copy(), in_place ? 0 : expected) << call;
      }
      ExpectWhole(in_place, "old");
    }
    Write("a.jpg", "old");
    {
      const SystemCalls watch(fail("write"));
      EXPECT_EQ(Copy(), expected);
    }
    EXPECT_EQ(Names(), (NameSet{"a.jpg"}));
    EXPECT_TRUE(Read("a.jpg") == "old");
    {
      const SystemCalls watch(fail("delete"));
      EXPECT_EQ(NumberOfFailure([&] { files_.DeleteFile(Path("a.jpg"), true); }), expected);
    }
    EXPECT_TRUE(Read("a.jpg") == "old");
    std::filesystem::remove(folder_ / "a.jpg");
  }
}

// Some disks cannot keep room free; writing tells then.
TEST_F(DiskFaults, ADiskThatReservesNothingIsWrittenToAllTheSame) {
  for (const int number : {EOPNOTSUPP, EINVAL, ENOSYS}) {
    Write("a.jpg", kOld);
    const SystemCalls watch([&](const std::string& name, std::size_t) {
      return name == "create" ? EACCES : name == "reserve" ? number : 0;
    });
    EXPECT_EQ(Copy(), 0);
    EXPECT_TRUE(Read("a.jpg") == kNew);
  }
  for (const int number : {ENOSPC, EDQUOT}) {
    Write("a.jpg", "old");
    const SystemCalls watch([&](const std::string& name, std::size_t) {
      return name == "create" ? EACCES : name == "reserve" ? number : 0;
    });
    EXPECT_EQ(Copy(), 61);
    EXPECT_TRUE(Read("a.jpg") == "old");
  }
}

TEST_F(DiskFaults, APhotographThatAnotherProgramIsWritingIsRefused) {
  Write("a.jpg", kOld);
  const SystemCalls watch([](const std::string& name, std::size_t) {
    return name == "create" ? EACCES : name == "lock" ? EWOULDBLOCK : 0;
  });
  EXPECT_EQ(Copy(), 70);
  EXPECT_TRUE(Read("a.jpg") == kOld);
}

// A file with a second name elsewhere is not written through its name here.
TEST_F(DiskFaults, AFileOfTwoNamesIsReplacedButNotWrittenInItsPlace) {
  Write("a.jpg", kOld);
  std::filesystem::create_hard_link(folder_ / "a.jpg", Elsewhere("letter"));
  {
    const SystemCalls watch(
        [](const std::string& name, std::size_t) { return name == "create" ? EACCES : 0; });
    EXPECT_EQ(Copy(), 70);
  }
  EXPECT_TRUE(Read("a.jpg") == kOld);
  EXPECT_EQ(Copy(), 0);
  EXPECT_TRUE(Read("a.jpg") == kNew);
  EXPECT_TRUE(Read(Elsewhere("letter")) == kOld);
}

// Whoever may change the folder may do so between two calls.
TEST_F(DiskFaults, ALinkThatIsPlantedMeanwhileIsNotFollowed) {
  Write("a.jpg", kOld);
  Write(Elsewhere("letter"), "mine");
  {
    const SystemCalls watch([&](const std::string& name, std::size_t) {
      if (name != "create") return 0;
      std::filesystem::remove(folder_ / "a.jpg");
      std::filesystem::create_symlink(Elsewhere("letter"), folder_ / "a.jpg");
      return EACCES;
    });
    EXPECT_EQ(Copy(), 75);
  }
  EXPECT_EQ(Read(Elsewhere("letter")), "mine");
}

// Nobody can guess the name, so the link is planted when it is known.
TEST_F(DiskFaults, ANameThatSomebodyElseHasIsPassedOver) {
  Write(Elsewhere("letter"), "mine");
  std::string planted;
  SystemCalls* calls = nullptr;
  SystemCalls watch([&](const std::string& name, std::size_t) {
    if (name == "create" && planted.empty()) {
      planted = calls->Path();
      std::filesystem::create_symlink(Elsewhere("letter"), planted);
    }
    return 0;
  });
  calls = &watch;
  EXPECT_EQ(Copy(), 0);
  EXPECT_TRUE(Read("a.jpg") == kNew);
  EXPECT_EQ(Read(Elsewhere("letter")), "mine");
  EXPECT_TRUE(std::filesystem::is_symlink(planted)) << "it is somebody's";
}

TEST_F(DiskFaults, AChoiceThatIsCutWhileItIsCopiedIsNoCopy) {
  Write("a.jpg", kOld);
  int told = 0;
  {
    const SystemCalls watch([&](const std::string& name, std::size_t) {
      if (name == "write") std::filesystem::resize_file(Elsewhere("new"), 66000);
      return 0;
    });
    told = Copy();
  }
  EXPECT_EQ(told, 75);
  ExpectWhole(false, kOld);
}

}  // namespace
}  // namespace dossierkit::files

#endif
