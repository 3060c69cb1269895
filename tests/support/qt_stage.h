// QtStage: the Qt views, with scenes and answers prepared as for the views without a screen.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "adapters/headless/headless_platform.h"
#include "adapters/qt/qt_platform.h"

namespace dossierkit::tests {

// Scenes run inside the real loop of the window; message boxes are real, and answered by real keys.
class QtStage : public qt::QtPlatform {
 public:
  using QtPlatform::QtPlatform;

  void WillRun(std::function<void(toolkit::Form&)> scene) { scenes_.push_back(std::move(scene)); }
  void WillAnswer(toolkit::MessageAnswer answer) { answers_.push_back(answer); }
  void WillChoose(std::string path) { choices_.push_back(std::move(path)); }

  std::function<void(const headless::Message&)> on_message;
  std::function<void(const toolkit::CommonDialog&)> on_choose;
  std::vector<headless::Message> messages;
  int beeps = 0;
  bool AllUsed() const { return scenes_.empty() && answers_.empty() && choices_.empty(); }

  void RunLoop(toolkit::Form& form) override;
  toolkit::MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) override;
  std::string ChooseFile(const toolkit::CommonDialog& request) override;
  void Beep() override { ++beeps; }

 private:
  std::deque<std::function<void(toolkit::Form&)>> scenes_;
  std::deque<toolkit::MessageAnswer> answers_;
  std::deque<std::string> choices_;
};

}  // namespace dossierkit::tests
