// Events: a source raises, subscribers hear; a subscription ends when its owner lets go of it.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace dossierkit::environment {

// Keeps one subscription alive. May outlive the event.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::shared_ptr<void> slot) : slot_(std::move(slot)) {}
  void End() { slot_.reset(); }

 private:
  std::shared_ptr<void> slot_;
};

// `Arguments` are passed to every subscriber in the order of subscription; a reference argument
// passes through all of them. Subscribing and ending subscriptions while the event is being raised
// is allowed; a subscriber that was ended meanwhile is not called.
template <typename... Arguments>
class Event {
 public:
  using Handler = std::function<void(Arguments...)>;

  [[nodiscard]] Subscription Subscribe(Handler handler) {
    auto slot = std::make_shared<Handler>(std::move(handler));
    slots_.push_back(slot);
    return Subscription(std::move(slot));
  }

  void Raise(Arguments... arguments) {
    RaiseWhile([] { return true; }, arguments...);
  }

  // As Raise, but asks before each subscriber whether to go on.
  template <typename Condition>
  void RaiseWhile(const Condition& condition, Arguments... arguments) {
    const auto present = slots_;
    for (const auto& weak : present) {
      if (!condition()) break;
      if (const auto slot = weak.lock()) (*slot)(arguments...);
    }
    std::erase_if(slots_, [](const auto& weak) { return weak.expired(); });
  }

 private:
  std::vector<std::weak_ptr<Handler>> slots_;
};

}  // namespace dossierkit::environment
