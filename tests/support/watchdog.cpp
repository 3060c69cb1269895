#include "tests/support/watchdog.h"

#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <cstdlib>
#include <cstring>
#include <string>

namespace dossierkit::tests {
namespace {

// Longer than any machine needs, since a test that hangs is all that is looked for. A statement that goes to
// a server takes ten times as long.
unsigned SecondsOfATest() {
  const char* engine = std::getenv("DOSSIERKIT_ENGINE");
  const bool on_a_server = engine != nullptr && *engine != '\0' && std::strcmp(engine, "sqlite") != 0;
  return on_a_server ? 1200 : 300;
}

class Watch : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest&) override { Expect("the first test begins"); }
  void OnTestStart(const testing::TestInfo& test) override { Expect(Name(test)); }
  void OnTestPartResult(const testing::TestPartResult&) override {
    ExpectProgressWithin(SecondsOfATest(), nullptr);
  }
  void OnTestEnd(const testing::TestInfo& test) override { Expect("after " + Name(test)); }

  static std::string Name(const testing::TestInfo& test) {
    return std::string(test.test_suite_name()) + "." + test.name();
  }
  static void Expect(const std::string& what) { ExpectProgressWithin(SecondsOfATest(), what.c_str()); }
};

}  // namespace

int RunTests(int argc, char** argv) {
#ifndef _WIN32
  // Files have the rights that the tests expect, whatever the caller's are given.
  umask(022);
#endif
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new Watch);
  return RUN_ALL_TESTS();
}

}  // namespace dossierkit::tests
