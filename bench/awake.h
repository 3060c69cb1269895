// Awake: no processor falls asleep while something is measured.
#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace dossierkit::bench {

// Keeps each processor busy with a thread that gives way to whatever else wants to run. On a virtual machine
// a processor that slept takes some 50 µs to wake up. Who computes between two statements lets the server's
// processor fall asleep at each of them, who sends them without a pause does not, and a ratio of the two
// would measure that.
class Awake {
 public:
  Awake();
  ~Awake();
  Awake(const Awake&) = delete;
  Awake& operator=(const Awake&) = delete;

 private:
  std::atomic<bool> is_over_ = false;
  std::vector<std::thread> spinning_;
};

}  // namespace dossierkit::bench
