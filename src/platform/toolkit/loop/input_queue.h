// InputQueue: what waits until the present event of the user's, with any window that it opened, has ended.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/placement.h"

namespace dossierkit::toolkit {

// Keys that a handler sent to its window, and the page that had the focus then.
struct SentKeys {
  std::string keys;
  std::weak_ptr<Control> page;
  bool had_page = false;
  // The page has gone since.
  bool Late() const {
    const auto present = page.lock();
    return had_page && (!present || present->Removed());
  }
};

// One for each window. A size that the user gave the window comes first, then pages that are new, then keys;
// of each the oldest.
class InputQueue {
 public:
  using Item = std::variant<Size, std::shared_ptr<UserControl>, SentKeys>;

  // An event of the user's, or one inside another.
  class Event {
   public:
    explicit Event(InputQueue& queue) : queue_(queue) { ++queue_.depth_; }
    ~Event() { --queue_.depth_; }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

   private:
    InputQueue& queue_;
  };
  // The present event stands in no other one.
  bool Outermost() const { return depth_ == 1; }

  void AddPage(const std::shared_ptr<UserControl>& page) { pages_.push_back(page); }
  bool HasPages() const { return !pages_.empty(); }
  void AddKeys(SentKeys keys) { keys_.push_back(std::move(keys)); }
  // Takes the place of one that waits; none drops that.
  void SetSize(std::optional<Size> size) { size_ = size; }

  // Takes out what comes next, without what has gone meanwhile; nothing where nothing waits.
  std::optional<Item> Next();
  void ForgetKeys() { keys_.clear(); }
  void Forget();

 private:
  int depth_ = 0;
  std::optional<Size> size_;
  std::deque<std::weak_ptr<UserControl>> pages_;
  std::deque<SentKeys> keys_;
};

}  // namespace dossierkit::toolkit
