#include "bench/awake.h"

#include <sched.h>

namespace dossierkit::bench {

Awake::Awake() {
  for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
    spinning_.emplace_back([this] {
      const sched_param none{};
      // Where it is not granted, nobody spins in another's way.
      if (sched_setscheduler(0, SCHED_IDLE, &none) != 0) return;
      while (!is_over_) {
      }
    });
  }
}

Awake::~Awake() {
  is_over_ = true;
  for (std::thread& one : spinning_) one.join();
}

}  // namespace dossierkit::bench
