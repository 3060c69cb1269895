// The watch over the tests themselves.
#include "tests/support/watchdog.h"

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace dossierkit::tests {

// A name that the stack can show.
[[gnu::noinline]] void HangForEver() {
  while (true) pause();
}

namespace {

void HangUnderWatch() {
  ExpectProgressWithin(1, "a test that hangs");
  HangForEver();
}

void ComeBackInTime() {
  ExpectProgressWithin(1, "a test in two steps");
  usleep(700'000);
  ExpectProgressWithin(1, "its second step");
  usleep(700'000);
  _exit(0);
}

TEST(WatchdogDeathTest, ATestWithoutProgressEndsWithItsNameAndStack) {
  EXPECT_EXIT(HangUnderWatch(), testing::KilledBySignal(SIGABRT),
              "no progress in time: a test that hangs\n.*HangForEver");
}

TEST(WatchdogDeathTest, ProgressGivesTheWholeTimeAgain) {
  EXPECT_EXIT(ComeBackInTime(), testing::ExitedWithCode(0), "^$");
}

TEST(Watchdog, EachTestIsWatchedForAMinute) {
  const unsigned left = alarm(60);
  EXPECT_GT(left, 50U);
  EXPECT_LE(left, 60U);
}

TEST(Watchdog, UnderADebuggerItWaits) {
  const pid_t child = fork();
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(77);
    ExpectProgressWithin(1, "a test that is stepped through");
    for (int i = 0; i < 25; ++i) usleep(100'000);
    _exit(0);
  }
  int status = 0;
  while (waitpid(child, &status, 0) == child && WIFSTOPPED(status)) {
    ptrace(PTRACE_CONT, child, nullptr, WSTOPSIG(status));
  }
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "a process cannot be traced here";
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
}  // namespace dossierkit::tests
