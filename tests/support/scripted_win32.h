// ScriptedWin32: the native views, with scenes and answers prepared as for the views without a screen.
#pragma once

#include <string>

#include "adapters/headless/script.h"
#include "adapters/win32/win32_platform.h"

namespace dossierkit::tests {

// Scenes run inside the real loop of the window; message boxes are real, and answered by real keys.
class ScriptedWin32 : public win32::Win32Platform, public headless::Script {
 public:
  void RunLoop(toolkit::Form& form) override;
  toolkit::MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) override;
  std::string ChooseFile(const toolkit::CommonDialog& request) override;
  void Beep() override { ++beeps; }
};

}  // namespace dossierkit::tests
