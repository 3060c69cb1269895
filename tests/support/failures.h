// What a call ends with.
#pragma once

#include "platform/environment/failure.h"

namespace dossierkit::tests {

// The number of the Failure that leaves the call; 0 where none does.
template <typename Call>
int NumberOfFailure(Call call) {
  try {
    call();
  } catch (const environment::Failure& failure) {
    return failure.number();
  }
  return 0;
}

}  // namespace dossierkit::tests
