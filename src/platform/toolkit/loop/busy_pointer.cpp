#include "platform/toolkit/loop/busy_pointer.h"

#include <utility>

#include "platform/toolkit/loop/platform.h"

namespace dossierkit::toolkit {
namespace {

constexpr auto kBusyAfter = std::chrono::milliseconds(300);

}  // namespace

void BusyPointer::Tick() {
  if (state_.events == 0 || state_.shown) return;
  if (platform_.Moment() - state_.since < kBusyAfter) return;
  state_.shown = true;
  platform_.ShowBusy(true);
}

void BusyPointer::Hide() {
  if (std::exchange(state_.shown, false)) platform_.ShowBusy(false);
}

BusyPointer::Event::Event(BusyPointer& pointer) : pointer_(pointer) {
  if (pointer_.state_.events++ == 0) pointer_.state_.since = pointer_.platform_.Moment();
}

BusyPointer::Event::~Event() {
  if (--pointer_.state_.events == 0) pointer_.Hide();
}

BusyPointer::Pause::Pause(BusyPointer& pointer) : pointer_(pointer) {
  pointer_.Hide();
  outer_ = std::exchange(pointer_.state_, {});
}

BusyPointer::Pause::~Pause() {
  pointer_.Hide();
  pointer_.state_ = outer_;
  pointer_.state_.since = pointer_.platform_.Moment();
}

}  // namespace dossierkit::toolkit
