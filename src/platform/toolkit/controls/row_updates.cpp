#include "platform/toolkit/controls/row_updates.h"

#include <utility>

namespace dossierkit::toolkit {

void RowUpdates::Content() {
  if (!std::exchange(dropped_, true)) rows_.Drop();
  if (std::exchange(filled_, true)) {
    Later();
  } else {
    Now();
  }
}

void RowUpdates::Selection() {
  if (filled_ && !dropped_) Now();
}

void RowUpdates::Later() {
  if (!std::exchange(waiting_, true)) rows_.CallWhenIdle();
}

void RowUpdates::Settle() {
  if (waiting_) Now();
}

void RowUpdates::Now() {
  waiting_ = false;
  if (std::exchange(dropped_, false)) rows_.Fill();
  rows_.Compare();
}

}  // namespace dossierkit::toolkit
