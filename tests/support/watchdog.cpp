#include "tests/support/watchdog.h"

#include <execinfo.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>

namespace dossierkit::tests {
namespace {

constexpr unsigned kSecondsOfATest = 60;
constexpr int kMostFrames = 100;

// What the signal handler reads.
unsigned patience = 0;
std::array<char, 256> watched{};

void Tell(const char* text) {
  if (write(STDERR_FILENO, text, std::strlen(text)) < 0) _exit(EXIT_FAILURE);
}

// Whoever steps through a test takes his time.
bool IsDebugged() {
  std::array<char, 4096> status{};
  const int file = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool is_read = read(file, status.data(), status.size() - 1) > 0;
  close(file);
  const char* tracer = is_read ? std::strstr(status.data(), "\nTracerPid:\t") : nullptr;
  return tracer && tracer[12] != '0';
}

// Runs on the main thread, which the kernel prefers for the signal of an alarm.
void EndWithStack(int) {
  if (IsDebugged()) {
    alarm(patience);
    return;
  }
  Tell("\nno progress in time: ");
  Tell(watched.data());
  Tell("\n");
  PrintStack();
  std::abort();
}

class Watch : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest&) override { Expect("the first test begins"); }
  void OnTestStart(const testing::TestInfo& test) override { Expect(Name(test)); }
  void OnTestPartResult(const testing::TestPartResult&) override {
    ExpectProgressWithin(kSecondsOfATest, watched.data());
  }
  void OnTestEnd(const testing::TestInfo& test) override { Expect("after " + Name(test)); }

  static std::string Name(const testing::TestInfo& test) {
    return std::string(test.test_suite_name()) + "." + test.name();
  }
  static void Expect(const std::string& what) { ExpectProgressWithin(kSecondsOfATest, what.c_str()); }
};

}  // namespace

void ExpectProgressWithin(unsigned seconds, const char* what) {
  // The first backtrace of a process loads a library, which a signal handler must not.
  static const bool ready = [] {
    std::array<void*, 1> frame{};
    backtrace(frame.data(), 1);
    return signal(SIGALRM, EndWithStack) != SIG_ERR;
  }();
  alarm(0);
  patience = seconds;
  if (what != watched.data()) {
    watched.fill('\0');
    std::strncpy(watched.data(), what, watched.size() - 1);
  }
  if (ready) alarm(seconds);
}

void PrintStack() {
  std::array<void*, kMostFrames> frames{};
  backtrace_symbols_fd(frames.data(), backtrace(frames.data(), kMostFrames), STDERR_FILENO);
}

int RunTests(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new Watch);
  return RUN_ALL_TESTS();
}

}  // namespace dossierkit::tests
