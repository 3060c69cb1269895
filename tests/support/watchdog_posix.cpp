#ifndef _WIN32

#include <execinfo.h>
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "tests/support/watchdog.h"

namespace dossierkit::tests {
namespace {

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
  if (what != nullptr) {
    watched.fill('\0');
    std::strncpy(watched.data(), what, watched.size() - 1);
  }
  if (ready) alarm(seconds);
}

void PrintStack() {
  std::array<void*, kMostFrames> frames{};
  backtrace_symbols_fd(frames.data(), backtrace(frames.data(), kMostFrames), STDERR_FILENO);
}

}  // namespace dossierkit::tests

#endif
