// During: a flag that says that something is going on, for as long as it goes on.
#pragma once

#include <utility>

namespace dossierkit::environment {

// The flag is set while it lives, and then as it was before, however the scope is left.
class During {
 public:
  explicit During(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~During() { flag_ = before_; }
  During(const During&) = delete;
  During& operator=(const During&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace dossierkit::environment
