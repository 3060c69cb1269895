// QtPlatform: the toolkit on the screen, in Qt 6 widgets.
#pragma once

#include <memory>
#include <string>

#include "platform/environment/export.h"
#include "platform/toolkit/loop/platform.h"

class QApplication;
class QWidget;

namespace dossierkit::qt {

struct QtOptions {
  double scale = 1.0;  // enlarges everything, besides what the screen asks for
};

// A guest in the program's QApplication, of whatever class, which must outlive it. Where there is none it
// makes a plain one, and ends it: another QtPlatform must end before. Style, palette, font, locale,
// translators and whatever else belongs to the program stay as they are; the component's looks are set on its
// own windows (a style sheet of the application reaches them all the same). What a slot of the host's throws
// during a visit is the business of the host's notify(); without one it waits for the visit's end, and leaves
// the host's loop then. Throws std::logic_error where the program has a QCoreApplication that cannot show
// windows.
class DOSSIERKIT_EXPORT QtPlatform : public toolkit::Platform {
 public:
  explicit QtPlatform(const QtOptions& options = {});
  ~QtPlatform() override;

  // Visits stand over this window of the host's from now on, or, with nullptr, over the one that is active
  // when they begin. It takes no input meanwhile, as all windows of the program.
  void StandOver(QWidget* window);

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

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

// Gives all windows of a program the looks of the component's: style, palette and font, and Qt's own texts in
// Chinese. For hosts that want them.
DOSSIERKIT_EXPORT void DressApplication(QApplication& application, double scale = 1.0);

}  // namespace dossierkit::qt
