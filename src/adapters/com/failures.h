// Failures across the border: what the component throws as COM tells it, and what COM tells as a Failure.
#pragma once

#include "adapters/windows/windows_headers.h"
#include "platform/environment/failure.h"

namespace dossierkit::com {

// Of Automation's own numbers, which the system itself never raises.
inline constexpr int kCannotCreateObject = 429;
inline constexpr int kNoSuchMember = 438;
inline constexpr int kNamedArgumentNotFound = 448;

// What an object answered. `info` is what it told besides, which is freed here, or null. Where it told
// nothing what lies in the thread's error object is taken, else the words are the environment's or the
// system's.
environment::Failure FailureOf(HRESULT result, EXCEPINFO* info);

// For an entry that COM calls: to be used in a handler of exceptions. Gives 0x800A0000 + number for a
// Failure, the number itself where it is an HRESULT already; the source and the description go into the
// thread's error object.
HRESULT TellCaller() noexcept;

// Clears the thread's error object, then runs `body`; what it throws is told to the caller.
template <typename Body>
HRESULT Guarded(Body&& body) noexcept {
  SetErrorInfo(0, nullptr);
  try {
    return body();
  } catch (...) {
    return TellCaller();
  }
}

}  // namespace dossierkit::com
