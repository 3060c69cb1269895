// HeadlessPlatform: windows without a screen, for tests and benchmarks. What the user does in each
// window, and what he answers, is prepared before.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/environment/export.h"
#include "platform/toolkit/loop/platform.h"

namespace dossierkit::headless {

// The height of a list's rows, in twips.
inline constexpr int kRowHeight = 225;

// The screen that is not there: 1024 by 768 pixels, in twips.
inline constexpr toolkit::Rect kScreen = {0, 0, 15360, 11520};

struct Message {
  std::string text;
  int flags = 0;
  std::string title;
  bool operator==(const Message&) const = default;
};

class DOSSIERKIT_EXPORT HeadlessPlatform : public toolkit::Platform {
 public:
  // What happens in the next window that opens, and in the one after. A window in which nothing is
  // prepared, or that is still open at the end of its scene, is left by its close box.
  void WillRun(std::function<void(toolkit::Form&)> scene) { scenes_.push_back(std::move(scene)); }

  // The answer to the next Yes/No box. One without a prepared answer throws std::logic_error.
  void WillAnswer(toolkit::MessageAnswer answer) { answers_.push_back(answer); }

  // The path chosen in the next file dialog; a dialog without one is cancelled.
  void WillChoose(std::string path) { choices_.push_back(std::move(path)); }

  // Called before a picture is read, with its path.
  std::function<void(const std::string&)> on_load_picture;

  // Called while a message box, or a file dialog, is on show, before its answer.
  std::function<void(const Message&)> on_message;
  std::function<void(const toolkit::CommonDialog&)> on_choose;

  // The boxes shown so far, and what is left of the preparations.
  std::vector<Message> messages;
  int beeps = 0;
  int busy_pointers = 0;  // that were shown so far
  bool busy = false;      // one shows
  std::string clipboard;
  bool AllUsed() const { return scenes_.empty() && answers_.empty() && choices_.empty(); }

  std::unique_ptr<toolkit::View> CreateView(toolkit::Control& control) override;
  void RunLoop(toolkit::Form& form) override;
  void WakeLoop() override {}
  toolkit::MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) override;
  std::string ChooseFile(const toolkit::CommonDialog& request) override;
  toolkit::Picture LoadPicture(const std::string& path, const toolkit::Rect& place) override;
  toolkit::Rect Screen() const override { return kScreen; }
  void Beep() override { ++beeps; }
  void ShowBusy(bool shows) override {
    busy = shows;
    if (shows) ++busy_pointers;
  }
  std::string ClipboardText() override { return clipboard; }
  void SetClipboardText(const std::string& text) override { clipboard = text; }

 private:
  std::deque<std::function<void(toolkit::Form&)>> scenes_;
  std::deque<toolkit::MessageAnswer> answers_;
  std::deque<std::string> choices_;
};

}  // namespace dossierkit::headless
