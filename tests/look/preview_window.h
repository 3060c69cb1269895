// PreviewWindow: the preview window alone, on a stage of the Qt views.
#pragma once

#include <memory>
#include <string>

#include "photos/frm_picture_preview.h"
#include "tests/support/paths.h"
#include "tests/support/photo_folder.h"
#include "tests/support/qt_user.h"
#include "tests/support/scripted_qt.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {

inline const std::string kPictures = SourceFolder() + "/tests/photos/pictures/";

// The window of the person "P1", whose photograph is turned by its camera's note.
class PreviewWindow {
 public:
  explicit PreviewWindow(ScriptedQt& stage) : stage_(stage) {
    InstallRuntime(runtime_);
    PhotoFolder::Write(folder.Photo("P1"), PhotoFolder::Read(kPictures + "turned-right.jpg"));
    runtime_.window = std::make_shared<frmDossier>(desktop);
    runtime_.window->PhotoPath = folder.Photos().string();
    preview->personID = "P1";
  }
  ~PreviewWindow() {
    runtime_.window.reset();
    UninstallRuntime(runtime_);
  }
  // Shows the window and plays the scene in it.
  void Show(const std::function<void()>& scene) {
    stage_.WillRun([&](toolkit::Form&) { scene(); });
    preview->ShowModal();
  }

 private:
  ScriptedQt& stage_;
  FixedClock clock_;
  files::LocalFiles files_;

 public:
  PhotoFolder folder;
  toolkit::Desktop desktop{stage_};
  QtUser user{desktop};
  std::shared_ptr<frmPicturePreview> preview = std::make_shared<frmPicturePreview>(desktop);

 private:
  Runtime runtime_{desktop, clock_, files_, "/opt/dossier", nullptr, nullptr};
};

}  // namespace dossierkit::tests
