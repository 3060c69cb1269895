// Script: what happens in windows that nobody sits at, prepared before, and what came of it.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/environment/export.h"
#include "platform/toolkit/controls/basic_controls.h"
#include "platform/toolkit/loop/message_box.h"

namespace dossierkit::toolkit {
class Form;
}  // namespace dossierkit::toolkit

namespace dossierkit::headless {

struct Message {
  std::string text;
  int flags = 0;
  std::string title;
  bool operator==(const Message&) const = default;
};

class DOSSIERKIT_EXPORT Script {
 public:
  using Scene = std::function<void(toolkit::Form&)>;

  // What happens in the next window that opens, and in the one after. A window in which nothing is
  // prepared, or that is still open at the end of its scene, is left by its close box.
  void WillRun(Scene scene) { scenes_.push_back(std::move(scene)); }

  // The answer to the next Yes/No box. One without a prepared answer throws std::logic_error.
  void WillAnswer(toolkit::MessageAnswer answer) { answers_.push_back(answer); }

  // The path chosen in the next file dialog; a dialog without one is cancelled.
  void WillChoose(std::string path) { choices_.push_back(std::move(path)); }

  // Called while a message box, or a file dialog, is on show, before its answer.
  std::function<void(const Message&)> on_message;
  std::function<void(const toolkit::CommonDialog&)> on_choose;

  // The boxes shown so far, and what is left of the preparations.
  std::vector<Message> messages;
  int beeps = 0;
  bool AllUsed() const { return scenes_.empty() && answers_.empty() && choices_.empty(); }

 protected:
  // Taken out for a platform that plays them: the scene of a window, which may be none; the answer to a box
  // that has been noted in `messages`; the path chosen in a dialog.
  Scene NextScene();
  toolkit::MessageAnswer NextAnswer(const Message& message);
  std::string NextChoice(const toolkit::CommonDialog& request);

 private:
  std::deque<Scene> scenes_;
  std::deque<toolkit::MessageAnswer> answers_;
  std::deque<std::string> choices_;
};

}  // namespace dossierkit::headless
