// QtPlatform: the toolkit on the screen, in Qt 6 widgets.
#pragma once

#include <memory>
#include <string>

#include "platform/environment/export.h"
#include "platform/toolkit/loop/platform.h"

namespace dossierkit::qt {

struct QtOptions {
  double scale = 1.0;  // enlarges everything, besides what the screen asks for
};

// The first one makes the program's one application object, a QApplication of its own kind, and ends it:
// a program that uses Qt itself makes its QtPlatform first and no QApplication. Throws std::logic_error
// where there is another. A later one, with a scale of its own, must end before the first.
class DOSSIERKIT_EXPORT QtPlatform : public toolkit::Platform {
 public:
  explicit QtPlatform(const QtOptions& options = {});
  ~QtPlatform() override;

  std::unique_ptr<toolkit::View> CreateView(toolkit::Control& control) override;
  void RunLoop(toolkit::Form& form) override;
  void WakeLoop() override;
  toolkit::MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) override;
  std::string ChooseFile(const toolkit::CommonDialog& request) override;
  toolkit::Picture LoadPicture(const std::string& path, const toolkit::Rect& place) override;
  toolkit::Rect Screen() const override;
  void Beep() override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;

  // To be called now and then in long work: a busy pointer shows after 300 ms of one event.
  void Tick();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace dossierkit::qt
