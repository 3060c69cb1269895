// The present date and time, as a port so that tests can set it.
#pragma once

#include "platform/environment/value.h"

namespace dossierkit::environment {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;  // local time
};

class SystemClock : public Clock {
 public:
  DateTime Now() const override;
};

}  // namespace dossierkit::environment
