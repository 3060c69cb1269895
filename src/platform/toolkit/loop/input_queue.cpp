#include "platform/toolkit/loop/input_queue.h"

#include <utility>

namespace dossierkit::toolkit {

std::optional<InputQueue::Item> InputQueue::Next() {
  if (const auto size = std::exchange(size_, std::nullopt)) return *size;
  while (!pages_.empty()) {
    const auto page = pages_.front().lock();
    pages_.pop_front();
    if (page && !page->Removed()) return page;
  }
  while (!keys_.empty()) {
    SentKeys sent = std::move(keys_.front());
    keys_.pop_front();
    if (!sent.Late()) return sent;
  }
  return std::nullopt;
}

void InputQueue::Forget() {
  size_.reset();
  pages_.clear();
  keys_.clear();
}

}  // namespace dossierkit::toolkit
