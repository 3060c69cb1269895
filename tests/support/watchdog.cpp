#include "tests/support/watchdog.h"

#include <gtest/gtest.h>

#include <string>

namespace dossierkit::tests {
namespace {

constexpr unsigned kSecondsOfATest = 60;

class Watch : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest&) override { Expect("the first test begins"); }
  void OnTestStart(const testing::TestInfo& test) override { Expect(Name(test)); }
  void OnTestPartResult(const testing::TestPartResult&) override {
    ExpectProgressWithin(kSecondsOfATest, nullptr);
  }
  void OnTestEnd(const testing::TestInfo& test) override { Expect("after " + Name(test)); }

  static std::string Name(const testing::TestInfo& test) {
    return std::string(test.test_suite_name()) + "." + test.name();
  }
  static void Expect(const std::string& what) { ExpectProgressWithin(kSecondsOfATest, what.c_str()); }
};

}  // namespace

int RunTests(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new Watch);
  return RUN_ALL_TESTS();
}

}  // namespace dossierkit::tests
