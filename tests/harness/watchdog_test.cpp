// The watch over the tests themselves.
#include "tests/support/watchdog.h"

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace dossierkit::tests {

// A name that the stack can show, at whatever moment of it.
[[gnu::noinline]] void HangForEver() {
  ExpectProgressWithin(1, "a test that hangs");
  while (true) pause();
}

namespace {

TEST(WatchdogDeathTest, ATestWithoutProgressEndsWithItsNameAndStack) {
  EXPECT_EXIT(HangForEver(), testing::KilledBySignal(SIGABRT),
              "no progress in time: a test that hangs\n.*HangForEver");
}

// The time that is left of a watch, in seconds, which goes on.
unsigned TimeLeft() {
  const unsigned left = alarm(0);
  alarm(left);
  return left;
}

TEST(Watchdog, ProgressGivesTheWholeTimeAgain) {
  ExpectProgressWithin(10'000, "a test in two steps");
  alarm(1'000);  // most of it has gone by
  ExpectProgressWithin(10'000, "its second step");
  EXPECT_GT(TimeLeft(), 9'000U);
  EXPECT_LE(TimeLeft(), 10'000U);
}

TEST(Watchdog, EachTestIsWatchedForFiveMinutes) {
  EXPECT_GT(TimeLeft(), 200U);
  EXPECT_LE(TimeLeft(), 300U);
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
