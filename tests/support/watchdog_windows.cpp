#ifdef _WIN32

#include <windows.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

#include "tests/support/watchdog.h"

namespace dossierkit::tests {
namespace {

// A thread that waits for as long as nothing is told.
class Watcher {
 public:
  Watcher() : thread_([this] { Run(); }) {}
  ~Watcher() {
    {
      const std::lock_guard lock(mutex_);
      done_ = true;
    }
    told_.notify_one();
    thread_.join();
  }

  void Expect(unsigned seconds, const char* what) {
    {
      const std::lock_guard lock(mutex_);
      until_ = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
      if (what != nullptr) what_ = what;
    }
    told_.notify_one();
  }

 private:
  void Run() {
    std::unique_lock lock(mutex_);
    while (!done_) {
      if (until_ == kNever) {
        told_.wait(lock);
      } else if (told_.wait_until(lock, until_) == std::cv_status::timeout &&
                 std::chrono::steady_clock::now() >= until_ && !IsDebuggerPresent()) {
        std::fprintf(stderr, "\nno progress in time: %s\n", what_.c_str());
        std::fflush(stderr);
        std::abort();
      }
    }
  }

  static constexpr auto kNever = std::chrono::steady_clock::time_point::max();

  std::mutex mutex_;
  std::condition_variable told_;
  std::chrono::steady_clock::time_point until_ = kNever;
  std::string what_;
  bool done_ = false;
  std::thread thread_;
};

}  // namespace

void ExpectProgressWithin(unsigned seconds, const char* what) {
  static Watcher watcher;
  watcher.Expect(seconds, what);
}

void PrintStack() {
  std::array<void*, 60> frames{};
  const USHORT count = CaptureStackBackTrace(0, static_cast<ULONG>(frames.size()), frames.data(), nullptr);
  for (USHORT i = 0; i < count; ++i) std::fprintf(stderr, "%p\n", frames[i]);
}

}  // namespace dossierkit::tests

#endif
