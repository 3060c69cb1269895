#include "adapters/headless/script.h"

#include <stdexcept>

namespace dossierkit::headless {
namespace {

// The oldest, or none.
template <typename T>
T Next(std::deque<T>& waiting) {
  if (waiting.empty()) return {};
  T next = std::move(waiting.front());
  waiting.pop_front();
  return next;
}

}  // namespace

Script::Scene Script::NextScene() { return Next(scenes_); }

toolkit::MessageAnswer Script::NextAnswer(const Message& message) {
  const auto buttons = toolkit::MessageButtonsOf(message.flags);
  if (buttons.size() == 1) return buttons.front().answer;
  if (answers_.empty()) throw std::logic_error("no answer was prepared for: " + message.text);
  return Next(answers_);
}

std::string Script::NextChoice(const toolkit::CommonDialog& request) {
  if (on_choose) on_choose(request);
  return Next(choices_);
}

}  // namespace dossierkit::headless
