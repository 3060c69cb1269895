// Win32Platform: the toolkit on the screen, in native windows.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/environment/export.h"
#include "platform/toolkit/loop/platform.h"

namespace dossierkit::win32 {

// A guest in the thread that makes it. The looks of common controls and the resolution that its windows are
// drawn in hold for its own windows; the program's are as before. While one of its windows is on show the
// thread's other windows take no input. Where the program is to end during a visit (WM_QUIT), windows and
// message boxes end first, and the message comes again. At its end nothing of it is left, and no class of
// windows either.
class DOSSIERKIT_EXPORT Win32Platform : public toolkit::Platform {
 public:
  Win32Platform();
  ~Win32Platform() override;

  std::unique_ptr<toolkit::View> CreateView(toolkit::Control& control) override;
  void RunLoop(toolkit::Form& form) override;
  void WakeLoop() override;
  toolkit::MessageAnswer ShowMessage(const std::string& text, int flags, const std::string& title) override;
  std::string ChooseFile(const toolkit::CommonDialog& request) override;
  toolkit::Picture LoadPicture(const std::string& path, const toolkit::Rect& place) override;
  toolkit::Rect Screen() const override;
  void Beep() override;
  void ShowBusy(bool busy) override;
  std::string ClipboardText() override;
  void SetClipboardText(const std::string& text) override;

 protected:
  // Runs work in the next loop, once, for as long as that loop runs.
  void InLoop(std::function<void()> work);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace dossierkit::win32
