// HeadlessPlatform: windows without a screen, for tests and benchmarks.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "adapters/headless/script.h"
#include "platform/environment/export.h"
#include "platform/toolkit/loop/platform.h"

namespace dossierkit::headless {

// The height of a list's rows, in twips.
inline constexpr int kRowHeight = 225;

// The screen that is not there: 1024 by 768 pixels, in twips.
inline constexpr toolkit::Rect kScreen = {0, 0, 15360, 11520};

class DOSSIERKIT_EXPORT HeadlessPlatform : public toolkit::Platform, public Script {
 public:
  // Called before a picture is read, with its path.
  std::function<void(const std::string&)> on_load_picture;

  int busy_pointers = 0;  // that were shown so far
  bool busy = false;      // one shows
  std::string clipboard;
  std::chrono::steady_clock::time_point moment;  // its clock stands still: nobody waits in front of it

  std::unique_ptr<toolkit::View> CreateView(toolkit::Control& control) override;
  void RunLoop(toolkit::Form& form) override;
  void WakeLoop() override {}
  toolkit::MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) override;
  std::string ChooseFile(const toolkit::CommonDialog& request) override;
  toolkit::Picture LoadPicture(const std::string& path, const toolkit::Rect& place) override;
  toolkit::Rect Screen() const override { return kScreen; }
  void Beep() override { ++beeps; }
  std::chrono::steady_clock::time_point Moment() const override { return moment; }
  void ShowBusy(bool shows) override {
    busy = shows;
    if (shows) ++busy_pointers;
  }
  std::string ClipboardText() override { return clipboard; }
  void SetClipboardText(const std::string& text) override { clipboard = text; }
};

}  // namespace dossierkit::headless
